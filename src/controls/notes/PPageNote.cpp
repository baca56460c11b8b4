#include "controls/notes/PPageNote.h"

#include <QGridLayout>
#include <QMouseEvent>

#include <algorithm>

TPageTab::TPageTab(TPageNote& note) : QWidget(&note), FNote(note) {
  // The control keeps room for its largest page, so that it does not jump when another page is shown.
  QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  policy.setRetainSizeWhenHidden(true);
  setSizePolicy(policy);
  FNote.Insert(*this);
}

TPageTab::~TPageTab() {
  FNote.Remove(*this);
}

void TPageTab::mousePressEvent(QMouseEvent* event) {
  event->setAccepted(FNote.EditTabs());
}

TPageNote::TPageNote(QWidget* parent) : QWidget(parent) {
  auto* layout = new QGridLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
}

TPageNote::~TPageNote() {
  // Each takes itself out of the list, which still stands (~TPageTab).
  while (!FPages.empty())
    delete FPages.back();
}

void TPageNote::SetTabIndex(int index) {
  if (index < 0 || index >= TabCount() || index == FTabIndex) return;
  Apply(index);
}

TPageTab* TPageNote::ActivePage() const {
  return FTabIndex < 0 ? nullptr : FPages[static_cast<std::size_t>(FTabIndex)];
}

int TPageNote::IndexOf(const TPageTab& page) const {
  const auto found = std::find(FPages.begin(), FPages.end(), &page);
  return found == FPages.end() ? -1 : static_cast<int>(found - FPages.begin());
}

void TPageNote::Insert(TPageTab& page) {
  static_cast<QGridLayout*>(layout())->addWidget(&page, 0, 0);
  // Behind the page that shows, which for pages made one after another is the end.
  const int place = FTabIndex + 1;
  FPages.insert(FPages.begin() + place, &page);
  Apply(place);
}

void TPageNote::Remove(const TPageTab& page) {
  FPages.erase(FPages.begin() + IndexOf(page));
  Apply(std::min(FTabIndex, TabCount() - 1));
}

// The new page is shown before the old one is hidden, so that the focus finds a home.
void TPageNote::Apply(int index) {
  FTabIndex = index;
  if (TPageTab* active = ActivePage()) {
    active->setEnabled(true);
    active->show();
    active->raise();
  }
  for (TPageTab* page : FPages) {
    if (page == ActivePage()) continue;
    page->hide();
    page->setEnabled(false);
  }
}
