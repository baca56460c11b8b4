#include "controls/picture/ImageList.h"

#include <QPainter>

#include <utility>

int TImageList::AddIcon(const QIcon& icon) {
  FIcons.push_back(icon);
  Changed();
  return Count() - 1;
}

void TImageList::Delete(int index) {
  if (!IsIndex(index)) return;
  FIcons.erase(FIcons.begin() + index);
  Changed();
}

void TImageList::Clear() {
  if (FIcons.empty()) return;
  FIcons.clear();
  Changed();
}

void TImageList::Draw(QPainter& painter, const QRect& rect, int index, bool enabled) const {
  if (!IsIndex(index)) return;
  QRect area(QPoint(), FSize.boundedTo(rect.size()));
  area.moveCenter(rect.center());
  FIcons[static_cast<std::size_t>(index)].paint(&painter, area, Qt::AlignCenter,
                                                enabled ? QIcon::Normal : QIcon::Disabled);
}

int TImageList::AddChangeLink(std::function<void()> onChange, std::function<void()> onGone) {
  FLinks.emplace(FNextLink, TLink{std::move(onChange), std::move(onGone)});
  return FNextLink++;
}

TImageList::~TImageList() {
  // One by one, as what hears of the end may remove links of its own.
  while (!FLinks.empty()) {
    const TLink link = std::move(FLinks.extract(FLinks.begin()).mapped());
    if (link.OnGone) link.OnGone();
  }
}

void TImageList::Changed() const {
  // A callback may add or remove links.
  const auto links = FLinks;
  for (const auto& [number, link] : links)
    if (FLinks.contains(number)) link.OnChange();
}

void TImageListLink::SetImages(TImageList* images) {
  Drop();
  FImages = images;
  if (images == nullptr) return;
  FLink = images->AddChangeLink(FOnChange, [this] {
    FImages = nullptr;
    FOnChange();
  });
}

void TImageListLink::Drop() {
  if (TImageList* const images = std::exchange(FImages, nullptr)) images->RemoveChangeLink(FLink);
}
