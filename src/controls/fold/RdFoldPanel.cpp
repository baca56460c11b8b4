// The way of one opening: HeaderClick or SetIsOpen turns IsOpen over and Start arms the timer. Its Tick
// settles: the content shows, the height is taken (SettleOpen), the parent grows (PlaceParent), OnOpened
// comes, and if that has left the panel open, the panels below go down (PlaceSiblings). A closing goes the
// same way back (SettleClosed). Growth is always counted from FStartHeight, the height before the opening,
// never from the step before, so that nothing adds up.

#include "controls/fold/RdFoldPanel.h"

#include <QAccessibleWidget>
#include <QLayout>

#include <algorithm>

namespace {

constexpr int kHeaderHeight = 25;
// From the gesture to the step, so that OnTopButtonClick has come before the panel takes its height and
// OnOpened or OnClosed comes.
constexpr int kTickInterval = 5;  // milliseconds

// A group under the header's name, whose header tells whether it is open, as the group does itself.
class TAccessibleFoldPanel : public QAccessibleWidget {
 public:
  explicit TAccessibleFoldPanel(TRdFoldPanel& panel)
      : QAccessibleWidget(&panel, QAccessible::Grouping), FPanel(panel) {}

  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.expandable = FPanel.CanExpand();
    state.expanded = FPanel.IsOpen();
    state.collapsed = !FPanel.IsOpen();
    return state;
  }

  QString text(QAccessible::Text kind) const override {
    const QString told = QAccessibleWidget::text(kind);
    return told.isEmpty() && kind == QAccessible::Name ? FPanel.ButtonCaption.Get() : told;
  }

 private:
  TRdFoldPanel& FPanel;
};

QAccessibleInterface* AccessibleOf(const QString&, QObject* object) {
  auto* const panel = dynamic_cast<TRdFoldPanel*>(object);
  return panel == nullptr ? nullptr : new TAccessibleFoldPanel(*panel);
}

bool InLayout(const QWidget& panel) {
  const QWidget* const parent = panel.parentWidget();
  return parent != nullptr && parent->layout() != nullptr && parent->layout()->indexOf(&panel) >= 0;
}

}  // namespace

void TellAccessibilityOfFoldPanels() {
  QAccessible::installFactory(AccessibleOf);
}

TRdFoldPanel::TRdFoldPanel(QWidget* parent)
    : TRdImagePanel(parent),
      FButton(new TRdImageButton(this)),
      FMaxHeight(height()),
      FMinHeight(kHeaderHeight) {
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  setContentsMargins(0, kHeaderHeight, 0, 0);
  FButton->setGeometry(0, 0, width(), kHeaderHeight);
  FButton->SetFoldHeader(true);
  FButton->DisabledFontColor = clGrayText;
  FButton->OnClick = [this] { HeaderClick(); };
  FTimer.setSingleShot(true);
  FTimer.setInterval(kTickInterval);
  connect(&FTimer, &QTimer::timeout, this, [this] { Tick(); });
  TellAccessibilityOfFoldPanels();
}

QSize TRdFoldPanel::sizeHint() const {
  return {TRdImagePanel::sizeHint().width(), height()};
}

void TRdFoldPanel::resizeEvent(QResizeEvent* event) {
  TRdImagePanel::resizeEvent(event);
  FButton->resize(width(), FButton->height());
}

void TRdFoldPanel::SetButtonHeight(int height) {
  if (FMinHeight == FButton->height()) FMinHeight = height;
  FButton->resize(width(), height);
  setContentsMargins(0, height, 0, 0);
}

void TRdFoldPanel::SetParentHeight(int height) {
  FParentHeight = height;
  if (dynamic_cast<TRdFoldPanel*>(parentWidget()) != nullptr) FTaken = parentWidget()->height() - height;
}

// A click that closes also closes the open panels below. As it opens, a parent that is a fold panel takes its
// new height at once, the panel itself with the tick.
void TRdFoldPanel::HeaderClick() {
  if (FCanExpand) {
    if (FIsOpen) {
      FOldHeight = FMaxHeight;
      for (TRdFoldPanel* const sibling : Siblings())
        if (LiesBelow(*sibling) && sibling->FIsOpen) sibling->SetIsOpen(false);
    }
    FIsOpen = !FIsOpen;
    Start();
    if (FIsOpen) PlaceParent(FullHeight() - FStartHeight);
  }
  static_cast<void>(TellEvent(this, OnTopButtonClick));
}

void TRdFoldPanel::SetIsOpen(bool open) {
  if (!open) FOldHeight = std::min(FOldHeight, FMaxHeight);
  FIsOpen = open;
  Start();
}

void TRdFoldPanel::Start() {
  if (FIsOpen && !FGrown) {
    FGrown = true;
    FStartHeight = height();
  }
  const double ticks = static_cast<double>(FExpandTime) / kTickInterval;
  FExpandStep = std::max(1, ticks > 0 ? static_cast<int>(FMaxHeight / ticks) : FMaxHeight);
  FButton->Expand = FIsOpen;
  FTimer.start();
}

void TRdFoldPanel::Tick() {
  FTimer.stop();
  if (FIsOpen)
    SettleOpen();
  else
    SettleClosed();
}

void TRdFoldPanel::SettleOpen() {
  FFolded = false;
  ShowContent(true);
  SetPanelHeight(FullHeight());
  PlaceParent(height() - FStartHeight);
  if (!TellEvent(this, OnOpened) || !FIsOpen) return;
  CollectSiblings();
  PlaceSiblings(height() - FStartHeight);
  if (layout() != nullptr) layout()->activate();
}

void TRdFoldPanel::SettleClosed() {
  FFolded = true;
  ShowContent(false);
  SetPanelHeight(FButton->height());
  if (!TellEvent(this, OnClosed) || FIsOpen) return;
  // A sibling that closes along gives its own siblings back first, as it was opened last.
  const QPointer<QWidget> alive(this);
  for (const TMoved& moved : std::vector<TMoved>(FTops))
    if (!moved.Panel.isNull() && moved.Panel->FTimer.isActive()) moved.Panel->Tick();
  if (alive.isNull()) return;
  PlaceSiblings(0);
  PlaceParent(0);
  FTops.clear();
  FParentHeight = 0;
  FGrown = false;
  FButton->raise();
}

void TRdFoldPanel::SetPanelHeight(int height) {
  resize(width(), height);
  updateGeometry();
}

// MaxHeight and what open panels on this one have made it grow by.
int TRdFoldPanel::FullHeight() const {
  int height = FMaxHeight;
  for (QObject* const child : children())
    if (const auto* const panel = dynamic_cast<TRdFoldPanel*>(child); panel != nullptr)
      height += panel->FTaken;
  return height;
}

void TRdFoldPanel::ShowContent(bool show) {
  if (show) {
    for (const QPointer<QWidget>& hidden : std::exchange(FHiddenContent, {}))
      if (!hidden.isNull() && hidden->parentWidget() == this) hidden->show();
    return;
  }
  // Before its holder hides, else the toolkit would give the focus to any other control of the form.
  if (focusWidget() != nullptr && focusWidget()->hasFocus()) FButton->setFocus();
  for (QWidget* const content : findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
    // A child that nobody has shown or hidden yet is as good as shown: it comes with the panel.
    const bool hidden = content->isHidden() && content->testAttribute(Qt::WA_WState_ExplicitShowHide);
    if (content == FButton || content->isWindow() || hidden) continue;
    FHiddenContent.emplace_back(content);
    content->hide();
  }
}

std::vector<TRdFoldPanel*> TRdFoldPanel::Siblings() const {
  std::vector<TRdFoldPanel*> siblings;
  if (parentWidget() == nullptr) return siblings;
  for (QObject* const child : parentWidget()->children())
    if (auto* const panel = dynamic_cast<TRdFoldPanel*>(child); panel != nullptr && panel != this)
      siblings.push_back(panel);
  return siblings;
}

// Below the panel as it was before it grew, as those below may have gone down already.
bool TRdFoldPanel::LiesBelow(const TRdFoldPanel& other) const {
  return other.y() >= y() + FStartHeight;
}

void TRdFoldPanel::CollectSiblings() {
  for (TRdFoldPanel* const sibling : Siblings()) {
    const bool known = std::any_of(FTops.begin(), FTops.end(),
                                   [sibling](const TMoved& moved) { return moved.Panel == sibling; });
    if (!known && LiesBelow(*sibling) && !InLayout(*sibling)) FTops.push_back({sibling, sibling->y()});
  }
}

// Siblings may be open at once and close in any order: whatever one of them moves is moved in the memory of
// the others too.
void TRdFoldPanel::PlaceSiblings(int growth) {
  for (const TMoved& moved : FTops) {
    if (moved.Panel.isNull()) continue;
    const int by = moved.Top + growth - moved.Panel->y();
    moved.Panel->move(moved.Panel->x(), moved.Panel->y() + by);
    for (TRdFoldPanel* const sibling : Siblings())
      for (TMoved& other : sibling->FTops)
        if (other.Panel == moved.Panel) other.Top += by;
  }
}

// Likewise for the height of the parent that they share. No parent but a fold panel is made to grow, but any
// gets back a ParentHeight. A folded one takes its new height when it opens.
void TRdFoldPanel::PlaceParent(int growth) {
  if (parentWidget() == nullptr || (growth == 0 && FParentHeight == 0)) return;
  auto* const parent = dynamic_cast<TRdFoldPanel*>(parentWidget());
  if (parent == nullptr) {
    if (growth == 0) parentWidget()->resize(parentWidget()->width(), FParentHeight);
    return;
  }
  if (FParentHeight == 0) FParentHeight = parent->FFolded ? parent->FullHeight() : parent->height();
  const int by = growth - FTaken;
  FTaken = growth;
  for (TRdFoldPanel* const sibling : Siblings())
    if (sibling->FParentHeight != 0) sibling->FParentHeight += by;
  if (!parent->FFolded) parent->FollowContent(parent->height() + by);
}

// A panel on this one has grown or shrunk, and the height follows. If this one was opened, what lies below it
// and its parent follow in turn.
void TRdFoldPanel::FollowContent(int height) {
  SetPanelHeight(height);
  if (!FGrown) return;
  PlaceParent(height - FStartHeight);
  PlaceSiblings(height - FStartHeight);
}
