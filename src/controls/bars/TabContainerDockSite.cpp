#include "controls/bars/TabContainerDockSite.h"

#include <QKeySequence>
#include <QShortcut>
#include <QTabWidget>
#include <QVBoxLayout>

#include "controls/picture/Picture.h"

// The first panel becomes active here, which is told while it has neither caption nor content.
TdxDockPanel::TdxDockPanel(TdxTabContainerDockSite& site) : FSite(site) {
  site.FTabs->addTab(this, {});
}

void TdxDockPanel::SetCaption(const QString& caption) {
  FCaption = caption;
  FSite.FTabs->setTabText(FSite.FTabs->indexOf(this), caption);
}

void TdxDockPanel::SetPicture(const TPicture& picture) {
  FSite.FTabs->setIconSize(picture.Size());
  FSite.FTabs->setTabIcon(FSite.FTabs->indexOf(this), picture.ToIcon());
}

void TdxDockPanel::SetTabEnabled(bool enabled) {
  FSite.FTabs->setTabEnabled(FSite.FTabs->indexOf(this), enabled);
}

TdxTabContainerDockSite::TdxTabContainerDockSite(QWidget* parent)
    : QWidget(parent), FTabs(new QTabWidget(this)) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(FTabs);
  connect(FTabs, &QTabWidget::currentChanged, this, [this] {
    if (OnActiveChildChanged) OnActiveChildChanged();
  });
  AddCycleKeys({QKeySequence(Qt::CTRL | Qt::Key_Tab), QKeySequence(Qt::CTRL | Qt::Key_PageDown)}, 1);
  AddCycleKeys({QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab), QKeySequence(Qt::CTRL | Qt::Key_PageUp)},
               -1);
}

// The panels go while the container can still be asked, and none of them becoming active is news.
TdxTabContainerDockSite::~TdxTabContainerDockSite() {
  OnActiveChildChanged = nullptr;
  delete FTabs;
}

void TdxTabContainerDockSite::SetCaption(const QString& caption) {
  setAccessibleName(caption);
  FTabs->setAccessibleName(caption);
}

int TdxTabContainerDockSite::ChildCount() const {
  return FTabs->count();
}

int TdxTabContainerDockSite::ActiveChildIndex() const {
  return FTabs->currentIndex();
}

void TdxTabContainerDockSite::SetActiveChildIndex(int index) {
  FTabs->setCurrentIndex(index);
}

// The shortcut works in the whole window, wherever the focus is, as long as the container shows.
void TdxTabContainerDockSite::AddCycleKeys(const QList<QKeySequence>& keys, int step) {
  auto* shortcut = new QShortcut(this);
  shortcut->setKeys(keys);
  connect(shortcut, &QShortcut::activated, this, [this, step] { Cycle(step); });
}

void TdxTabContainerDockSite::Cycle(int step) {
  const int count = ChildCount();
  for (int away = 1; away < count; ++away) {
    // With the count added, the sum stays above 0 for a step back too, so that the rest is an index.
    const int index = (ActiveChildIndex() + (step + count) * away) % count;
    if (FTabs->isTabEnabled(index)) return SetActiveChildIndex(index);
  }
}
