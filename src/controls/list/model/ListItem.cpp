#include "controls/list/model/ListItem.h"

#include "controls/list/model/ListItems.h"
#include "controls/list/model/RowStates.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <new>

namespace {
// Texts that a first block has room for; a block that is full doubles.
constexpr int kFirstRoom = 3;  // a report of four columns needs no more
}  // namespace

TListItem::TListItem(TListItems& owner) : FOwner(owner), FSubItems(*this) {}

TListItem::~TListItem() = default;

int TListItem::Index() const {
  return FOwner.IndexOf(this);
}

void TListItem::SetCaption(const QString& caption) {
  if (caption == FCaption) return;
  FCaption = caption;
  Notify(TItemChange::Text);
}

void TListItem::SetImage(int& field, int index) {
  if (index == field) return;
  field = index;
  Notify(TItemChange::Image);
}

void TListItem::Notify(TItemChange change) {
  if (!Gone()) FOwner.Owner().ItemChanged(*this, change);
}

bool TListItem::HasState(unsigned bit) const {
  return !Gone() && (FOwner.Owner().RowStates().State(Index()) & bit) != 0;
}

void TListItem::SetState(unsigned bit, bool on) {
  FOwner.ChangeState(*this, on ? bit : 0, bit);
}

void TListItem::Delete() {
  if (!Gone()) FOwner.Delete(Index());
}

void TListItem::MakeVisible(bool partialOk) {
  if (!Gone()) FOwner.Owner().ScrollToItem(*this, partialOk);
}

void TListItem::Update() {
  Notify(TItemChange::Image);
}

// One block of memory holds the head, TBlock, and behind it the texts themselves: a list of a million rows
// pays for one allocation a row, and none before the first text. Images are rare and have a vector of their
// own, as long as Count.
//
// The texts.

static_assert(QTypeInfo<QString>::isRelocatable, "texts are moved in memory as they are");

TSubItems::~TSubItems() {
  DropTexts();
}

void TSubItems::ThrowRange() {
  throw EListError("TSubItems: index out of range");
}

QString TSubItems::Text(int index) const {
  return index >= 0 && index < Count() ? Texts()[static_cast<size_t>(index)] : QString();
}

// realloc may move the block, texts and all, which QString stands (see the assertion).
void TSubItems::Reserve(int room) {
  if (FBlock != nullptr && FBlock->Room >= room) return;
  const bool first = FBlock == nullptr;
  void* const block =
      std::realloc(static_cast<void*>(FBlock), sizeof(TBlock) + static_cast<size_t>(room) * sizeof(QString));
  if (block == nullptr) throw std::bad_alloc();
  FBlock = static_cast<TBlock*>(block);
  if (first) *FBlock = {0, 0, nullptr};
  FBlock->Room = room;
}

void TSubItems::DropTexts() {
  if (FBlock == nullptr) return;
  std::ranges::destroy(Texts());
  delete FBlock->Images;
  std::free(static_cast<void*>(FBlock));
  FBlock = nullptr;
}

void TSubItems::InsertText(int index, const QString& text) {
  const QString kept = text;  // may be one of ours, and ours are about to move
  if (FBlock == nullptr || FBlock->Count == FBlock->Room) Reserve(std::max(kFirstRoom, 2 * Count()));
  if (FBlock->Images != nullptr) FBlock->Images->insert(FBlock->Images->begin() + index, -1);
  // Built behind the last and then turned into its place, so that no gap is ever half alive.
  ++FBlock->Count;
  const std::span<QString> texts = Texts();
  new (&texts.back()) QString(kept);
  std::rotate(texts.begin() + index, texts.end() - 1, texts.end());
}

int TSubItems::Add(const QString& text) {
  const int place = Count();
  InsertText(place, text);
  Changed();
  return place;
}

void TSubItems::Insert(int index, const QString& text) {
  if (index != Count()) (void)Checked(index);
  InsertText(index, text);
  Changed();
}

void TSubItems::Put(int index, const QString& text) {
  QString& place = Texts()[Checked(index)];
  if (place == text) return;
  place = text;
  Changed();
}

void TSubItems::Delete(int index) {
  const std::span<QString> texts = Texts();
  const auto place = texts.begin() + static_cast<std::ptrdiff_t>(Checked(index));
  std::rotate(place, place + 1, texts.end());
  std::destroy_at(&texts.back());
  if (FBlock->Images != nullptr) FBlock->Images->erase(FBlock->Images->begin() + index);
  --FBlock->Count;
  Changed();
}

void TSubItems::Clear() {
  Assign({});
}

void TSubItems::Assign(const QStringList& texts) {
  DropTexts();
  if (!texts.isEmpty()) Reserve(static_cast<int>(texts.size()));
  for (const QString& text : texts)
    InsertText(Count(), text);
  Changed();
}

int TSubItems::ImageIndex(int index) const {
  const bool known = index >= 0 && index < Count() && FBlock->Images != nullptr;
  return known ? (*FBlock->Images)[static_cast<size_t>(index)] : -1;
}

void TSubItems::SetImageIndex(int index, int image) {
  const size_t place = Checked(index);
  if (ImageIndex(index) == image) return;
  if (FBlock->Images == nullptr) FBlock->Images = new std::vector<int>(static_cast<size_t>(Count()), -1);
  (*FBlock->Images)[place] = image;
  FItem.Notify(TItemChange::Image);
}

void TSubItems::Changed() {
  FItem.Notify(TItemChange::Text);
}
