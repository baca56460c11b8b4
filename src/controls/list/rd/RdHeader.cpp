#include "controls/list/rd/RdHeader.h"

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

TPartState TRdHeader::StateOf(int column) const {
  if (!FList.Options().ColumnClick || FState.HeaderTracking) return TPartState::Normal;
  if (FState.HeaderPressed && column == FState.HeaderDownColumn && column == FState.HeaderHotColumn)
    return TPartState::Pressed;
  return column == FState.HeaderHotColumn ? TPartState::Hot : TPartState::Normal;
}

// The application is not asked while the mouse is on the section; its last word holds.
int TRdHeader::ArrowOf(int column) {
  const TkListColumn* const sorted = SortColumn();
  if (sorted == nullptr || sorted != &FList.Columns()[column]) return -1;
  if (FState.HeaderHotColumn != column || !FList.OnDrawSortColumnIcon) AskArrow(column);
  return FArrow;
}

void TRdHeader::AskArrow(int column) {
  int arrow = FState.SortState - 1;
  if (Tell(FList.EventLife(), FList.OnDrawSortColumnIcon, arrow, column, FState.SortState)) FArrow = arrow;
}

TkListColumn* TRdHeader::SortColumn() const {
  for (int column = 0; column < FList.Columns().Count(); ++column)
    if (&FList.Columns()[column] == FState.SortColumn) return &FList.Columns()[column];
  return nullptr;
}

void TRdHeader::SetSort(int column, TSortState state) {
  const bool known = column >= 0 && column < FList.Columns().Count();
  FState.SortColumn = known ? &FList.Columns()[column] : nullptr;
  FState.SortState = state;
  FArrow = state - 1;
  FList.UpdateHeader();
}

QRect TRdHeader::CheckBoxRect(const QSize& header) const {
  if (!FList.Properties().CheckBoxOnColumnHeader || FList.Columns().Count() == 0) return {};
  const QRect rect = FList.Layout().SectionRect(0, header.height());
  return HeaderSectionParts(Section(0, rect), FList.Skin()).CheckBox;
}

bool TRdHeader::Mouse(const QMouseEvent& event, const QSize& header, bool atDivider) {
  if (FList.Columns().Count() == 0) return false;
  const QPoint pos = event.position().toPoint();
  const bool left = event.button() == Qt::LeftButton;
  switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
      if (left) Press(pos, header, atDivider);
      return left && FState.HeaderBoxPressed;
    case QEvent::MouseButtonRelease:
      if (left) Release(pos, header);
      return false;
    default:
      if (!event.buttons().testFlag(Qt::LeftButton)) LosePress();
      FState.HeaderTracking = atDivider && event.buttons().testFlag(Qt::LeftButton);
      if (FState.HeaderTracking) return false;
      FState.HeaderHotColumn =
          !atDivider && QRect(QPoint(), header).contains(pos) ? FList.Layout().ColumnAt(pos.x()) : -1;
      return false;
  }
}

// Without a button no press is held, whatever became of its release.
void TRdHeader::LosePress() {
  FState.HeaderDownColumn = -1;
  FState.HeaderPressed = false;
  FState.HeaderBoxPressed = false;
}

void TRdHeader::Press(const QPoint& pos, const QSize& header, bool atDivider) {
  FState.HeaderBoxPressed = !atDivider && CheckBoxRect(header).contains(pos);
  FState.HeaderTracking = atDivider;
  FState.HeaderDownColumn = atDivider ? -1 : FList.Layout().ColumnAt(pos.x());
  FState.HeaderHotColumn = FState.HeaderDownColumn;
  FState.HeaderPressed = FState.HeaderDownColumn >= 0 && !FState.HeaderBoxPressed;
}

void TRdHeader::Release(const QPoint& pos, const QSize& header) {
  FState.HeaderTracking = false;
  FState.HeaderPressed = false;
  const int down = std::exchange(FState.HeaderDownColumn, -1);
  const bool inBox = CheckBoxRect(header).contains(pos);
  if (std::exchange(FState.HeaderBoxPressed, false)) {
    if (inBox) ToggleCheckAll();
    return;
  }
  const bool clicked = down >= 0 && FList.Layout().ColumnAt(pos.x()) == down;
  FReleasedInBox = clicked && inBox && FList.Options().ColumnClick;
  if (clicked && !inBox && !FList.Options().ColumnClick) FState.SortColumn = nullptr;
}

void TRdHeader::Leave() {
  FState.HeaderHotColumn = -1;
  FState.HeaderDownColumn = -1;
  FState.HeaderPressed = false;
}

bool TRdHeader::SortByClick(int column) {
  if (std::exchange(FReleasedInBox, false)) return true;
  const TEventScope scope(FList.EventLife());
  TkListColumn& clicked = FList.Columns()[column];
  FState.SortColumn = clicked.AutoClickSort ? &clicked : nullptr;
  if (clicked.AutoClickSort) {
    FState.SortState = FState.SortState == ssUp ? ssDown : ssUp;
    AskArrow(column);
    if (scope.ListGone()) return false;
  }
  FList.UpdateHeader();
  return true;
}

void TRdHeader::ToggleCheckAll() {
  const TEventScope scope(FList.EventLife());
  FList.Model().Checks().SetAll(!FList.CheckAll());
  if (scope.ListGone()) return;
  FList.UpdateHeader();
  (void)Tell(FList.EventLife(), FList.OnCheckBoxClick, FList, FList.CheckAll());
}
