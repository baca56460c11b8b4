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
  const TRdListState& state = FList.MouseState();
  if (!FList.Options().ColumnClick || state.HeaderTracking) return TPartState::Normal;
  if (state.HeaderPressed && column == state.HeaderDownColumn && column == state.HeaderHotColumn)
    return TPartState::Pressed;
  return column == state.HeaderHotColumn ? TPartState::Hot : TPartState::Normal;
}

// The application is not asked while the mouse is on the section; its last word holds.
int TRdHeader::ArrowOf(int column) {
  const TkListColumn* const sorted = SortColumn();
  if (sorted == nullptr || sorted != &FList.Columns()[column]) return -1;
  const TRdListState& state = FList.MouseState();
  if (state.HeaderHotColumn == column && FList.OnDrawSortColumnIcon) return FArrow;
  FArrow = state.SortState - 1;
  if (FList.OnDrawSortColumnIcon) FList.OnDrawSortColumnIcon(FArrow, column, state.SortState);
  return FArrow;
}

TkListColumn* TRdHeader::SortColumn() const {
  for (int column = 0; column < FList.Columns().Count(); ++column)
    if (&FList.Columns()[column] == FList.MouseState().SortColumn) return &FList.Columns()[column];
  return nullptr;
}

void TRdHeader::SetSort(int column, int state) {
  const bool known = column >= 0 && column < FList.Columns().Count();
  FList.FState.SortColumn = known ? &FList.Columns()[column] : nullptr;
  FList.FState.SortState = static_cast<TSortState>(state);
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
  TRdListState& state = FList.FState;
  const QPoint pos = event.position().toPoint();
  const bool left = event.button() == Qt::LeftButton;
  switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
      if (left) Press(pos, header, atDivider);
      return left && state.HeaderBoxPressed;
    case QEvent::MouseButtonRelease:
      if (left) Release(pos, header);
      return false;
    default:
      state.HeaderTracking = atDivider && event.buttons().testFlag(Qt::LeftButton);
      if (state.HeaderTracking) return false;
      state.HeaderHotColumn =
          !atDivider && QRect(QPoint(), header).contains(pos) ? FList.Layout().ColumnAt(pos.x()) : -1;
      return false;
  }
}

void TRdHeader::Press(const QPoint& pos, const QSize& header, bool atDivider) {
  FList.CloseEditors();
  TRdListState& state = FList.FState;
  state.HeaderBoxPressed = !atDivider && CheckBoxRect(header).contains(pos);
  state.HeaderTracking = atDivider;
  state.HeaderDownColumn = atDivider ? -1 : FList.Layout().ColumnAt(pos.x());
  state.HeaderHotColumn = state.HeaderDownColumn;
  state.HeaderPressed = state.HeaderDownColumn >= 0 && !state.HeaderBoxPressed;
}

void TRdHeader::Release(const QPoint& pos, const QSize& header) {
  TRdListState& state = FList.FState;
  state.HeaderTracking = false;
  state.HeaderPressed = false;
  const int down = std::exchange(state.HeaderDownColumn, -1);
  const bool inBox = CheckBoxRect(header).contains(pos);
  if (std::exchange(state.HeaderBoxPressed, false)) {
    if (inBox) ToggleCheckAll();
    return;
  }
  const bool clicked = down >= 0 && FList.Layout().ColumnAt(pos.x()) == down;
  FReleasedInBox = clicked && inBox && FList.Options().ColumnClick;
  if (clicked && !inBox && !FList.Options().ColumnClick) state.SortColumn = nullptr;
}

void TRdHeader::Leave() {
  TRdListState& state = FList.FState;
  state.HeaderHotColumn = -1;
  state.HeaderDownColumn = -1;
  state.HeaderPressed = false;
}

void TRdHeader::SortByClick(int column) {
  if (std::exchange(FReleasedInBox, false)) return;
  TkListColumn& clicked = FList.Columns()[column];
  TRdListState& state = FList.FState;
  state.SortColumn = clicked.AutoClickSort ? &clicked : nullptr;
  if (clicked.AutoClickSort) {
    state.SortState = state.SortState == ssUp ? ssDown : ssUp;
    FArrow = state.SortState - 1;
    if (FList.OnDrawSortColumnIcon) FList.OnDrawSortColumnIcon(FArrow, column, state.SortState);
  }
  FList.UpdateHeader();
}

void TRdHeader::ToggleCheckAll() {
  const bool checked = !FList.CheckAll();
  FList.Model().Checks().SetAll(checked);
  FList.UpdateHeader();
  if (FList.OnCheckBoxClick) FList.OnCheckBoxClick(FList, FList.CheckAll());
}
