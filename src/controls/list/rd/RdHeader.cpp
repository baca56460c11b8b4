#include "controls/list/rd/RdHeader.h"

#include "controls/list/HeaderBar.h"
#include "controls/list/rd/RdListView.h"
#include "controls/picture/ImageList.h"

#include <QMouseEvent>

#include <utility>

void TRdHeader::Paint(QPainter& painter, QWidget& header) {
  const TListLayout layout = FList.Layout();
  TRdHeaderPainter sections(painter, FBitmap, header, FList.Skin());
  int right = 0;
  for (int column = 0; column < FList.Columns().Count(); ++column) {
    const QRect rect = layout.SectionRect(column, header.height());
    right = rect.right() + 1;
    if (right <= 0 || rect.left() >= header.width() || rect.width() <= 0) continue;
    TRdHeaderSection section = Section(column, rect);
    section.Arrow = ArrowOf(column);
    sections.PaintSection(section);
  }
  if (right < header.width()) sections.PaintRest({right, 0, header.width() - right, header.height()});
}

TRdHeaderSection TRdHeader::Section(int column, const QRect& rect) const {
  const TkListColumn& about = FList.Columns()[column];
  TRdHeaderSection section;
  section.Rect = rect;
  section.Caption = about.Caption();
  section.Font = about.ParentFont() ? FList.Skin().Header.HeaderFont : about.ColumnHeaderFont();
  section.Alignment = about.Alignment();
  section.First = column == 0;
  section.CheckBox = FList.Properties().CheckBoxOnColumnHeader;
  section.Checked = FList.CheckAll();
  section.Arrows = FList.Properties().SortImage;
  section.State = StateOf(column);
  return section;
}

TRdHeaderState TRdHeader::State() const {
  const THeaderBar& mouse = FList.Header();
  TRdHeaderState state = FState;
  state.HeaderHotColumn = mouse.HotColumn();
  state.HeaderDownColumn = mouse.DownColumn();
  state.HeaderPressed = mouse.PressedColumn() >= 0;
  state.HeaderTracking = mouse.Tracking();
  state.SortColumn = SortColumn();
  return state;
}

TPartState TRdHeader::StateOf(int column) const {
  const THeaderBar& mouse = FList.Header();
  if (mouse.Tracking()) return TPartState::Normal;
  if (column == mouse.PressedColumn()) return TPartState::Pressed;
  return column == mouse.HotColumn() ? TPartState::Hot : TPartState::Normal;
}

// The application is not asked while the mouse is on the section; its last word holds.
int TRdHeader::ArrowOf(int column) {
  const TkListColumn* const sorted = SortColumn();
  if (sorted == nullptr || sorted != &FList.Columns()[column]) return -1;
  if (FList.Header().HotColumn() != column || !FList.OnDrawSortColumnIcon) AskArrow(column);
  return FArrow;
}

void TRdHeader::AskArrow(int column) {
  // Mostly within a paint (ArrowOf), and once for each click: the handler answers and changes nothing.
  int arrow = FState.SortState - 1;
  if (Tell(FList.EventLife(), FList.OnDrawSortColumnIcon, arrow, column, FState.SortState)) FArrow = arrow;
}

void TRdHeader::Reset() {
  FState = {};
  FList.Columns().SetSorted(-1, ssNone);
}

TkListColumn* TRdHeader::SortColumn() const {
  for (int column = 0; column < FList.Columns().Count(); ++column)
    if (FList.Columns()[column].SortState() != ssNone) return &FList.Columns()[column];
  return nullptr;
}

void TRdHeader::SetSort(int column, TSortState state) {
  FState.SortState = state;
  FArrow = state - 1;
  FList.Columns().SetSorted(column, state);
}

QRect TRdHeader::CheckBoxRect(const QSize& header) const {
  if (!FList.Properties().CheckBoxOnColumnHeader || FList.Columns().Count() == 0) return {};
  const QRect rect = FList.Layout().SectionRect(0, header.height());
  return HeaderSectionParts(Section(0, rect), FList.Skin()).CheckBox;
}

bool TRdHeader::Mouse(const QMouseEvent& event, const QSize& header, bool atDivider) {
  if (FList.Columns().Count() == 0) return false;
  const bool left = event.button() == Qt::LeftButton;
  switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
      if (left)
        FState.HeaderBoxPressed = !atDivider && CheckBoxRect(header).contains(event.position().toPoint());
      return left && FState.HeaderBoxPressed;
    case QEvent::MouseButtonRelease:
      if (left) Release(event.position().toPoint(), header);
      return false;
    default:
      // Without a button no press is held, whatever became of its release.
      if (!event.buttons().testFlag(Qt::LeftButton)) FState.HeaderBoxPressed = false;
      return false;
  }
}

void TRdHeader::Release(const QPoint& pos, const QSize& header) {
  const bool inBox = CheckBoxRect(header).contains(pos);
  if (std::exchange(FState.HeaderBoxPressed, false)) {
    if (inBox) ToggleCheckAll();
    return;
  }
  // The press went to the section and the release to its box: the click that the header bar now tells sorts
  // nothing.
  // The header bar sees this release after the list, so its column is still the one that was pressed.
  const int down = FList.Header().DownColumn();
  FReleasedInBox = inBox && down >= 0 && FList.Layout().ColumnAt(pos.x()) == down;
}

bool TRdHeader::SortByClick(int column) {
  if (std::exchange(FReleasedInBox, false)) return true;
  const TEventScope scope(FList.EventLife());
  TkListColumn& clicked = FList.Columns()[column];
  if (!clicked.AutoClickSort) {
    FList.Columns().SetSorted(-1, ssNone);
    return true;
  }
  SetSort(column, FState.SortState == ssUp ? ssDown : ssUp);
  AskArrow(column);
  return !scope.ListGone();
}

void TRdHeader::ToggleCheckAll() {
  const TEventScope scope(FList.EventLife());
  FList.Model().Checks().SetAll(!FList.CheckAll());
  if (scope.ListGone()) return;
  FList.UpdateHeader();
  (void)Tell(FList.EventLife(), FList.OnCheckBoxClick, FList, FList.CheckAll());
}
