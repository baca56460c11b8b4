#include "controls/list/rd/RdRowsPainter.h"

#include "controls/list/rd/RdListView.h"
#include "controls/list/rd/painter/RdDrawing.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>

#include <algorithm>

struct TRdRowsPainter::TRow {
  const TRdCellReader& Reader;
  TkListItem& Item;
  int Index;
  QRect Area;  // what is painted of it, in the client area
  QRegion Region;
};

void TRdRowsPainter::Paint(QPainter& painter, const QRegion& region) {
  const TRdCellReader reader(FList);
  painter.setClipRegion(region);
  for (int row = reader.Layout().Metrics().TopRow; row < reader.Layout().EndOfVisibleRows(); ++row) {
    const QRect area = reader.PaintedRect(row);
    TkListItem* const item = FList.Items().Item(row);
    if (item == nullptr || !region.intersects(area)) continue;
    TRow one{reader, *item, row, area, region};
    PaintRow(painter, one);
  }
  PaintBlank(painter, reader, region);
}

// Each row is composed in one bitmap that all rows share and that keeps the coordinates of the client area;
// so a text can look at the pixels behind it (BackgroundBehind).
void TRdRowsPainter::PaintRow(QPainter& target, TRow& row) {
  TRowCanvas canvas(target, FBitmap, row.Area);
  if (!canvas.Valid()) return;
  if (row.Reader.IsGroupRow(row.Item))
    PaintGroupRow(canvas.Painter(), row);
  else
    PaintPlainRow(canvas.Painter(), row);
  PaintFocus(canvas.Painter(), row);
  canvas.Blit();
}

bool TRdRowsPainter::Selected(int row) const {
  const bool shows = !FList.Options().HideSelection || FList.hasFocus();
  return shows && (FList.States().State(row) & kRowSelected) != 0;
}

// Asks for the selection of the two neighbours too: in cross mode their frames lie over the edges of this
// row.
TRdRowLook TRdRowsPainter::LookOf(const TRow& row) const {
  TRdRowLook look;
  look.Index = row.Index;
  look.Selected = Selected(row.Index);
  look.Hovered = row.Index == FList.RowMouse().HotRow && FList.isEnabled();
  look.BackColor = row.Item.HasBackColor() ? row.Item.BackColor() : clDefault;
  // A selected group row without a picture of its own shows no frame that could lie over this row.
  const auto frames = [this, &row](int neighbour) {
    const TkListItem* const item = FList.Items().Item(neighbour);
    if (item == nullptr || !Selected(neighbour)) return false;
    return !row.Reader.IsGroupRow(*item) || !FList.Skin().Group.GroupPic_BgSelect.Empty();
  };
  look.Neighbours = {frames(row.Index - 1), frames(row.Index + 1)};
  return look;
}

void TRdRowsPainter::PaintPlainRow(QPainter& painter, const TRow& row) {
  PaintRowBackground(painter, row.Area, LookOf(row), FList.Skin(), FList.palette());
  // Called, not told: what it may not do stands in RdListEvents.h.
  if (FList.OnCustomDrawItem) FList.OnCustomDrawItem(painter, &row.Item, row.Area);
  PaintGridLine(painter, row.Area, FList.Skin().Item, FList.palette());
  const QRect box = row.Reader.CheckBoxRect(row.Item, row.Index);
  if (row.Region.intersects(box))
    TRdCellPainter(painter, FList, FList.Skin()).PaintCheckBox(box, row.Item.Checked());
  for (int column = 0; column < row.Reader.ColumnCount(); ++column)
    PaintCell(painter, row, column);
}

void TRdRowsPainter::PaintCell(QPainter& painter, const TRow& row, int column) {
  const QRect rect = row.Reader.Layout().CellRect(row.Index, column);
  if (!HasCell(row.Item, column) || !rect.intersects(row.Area) || !row.Region.intersects(rect)) return;
  TRdCell cell = row.Reader.Cell(row.Item, row.Index, column);
  AddMouseState(cell, row);
  if (FList.OnCustomDrawSubItem && !FList.OnCustomDrawSubItem(painter, &row.Item, cell)) return;
  TRdCellPainter(painter, FList, FList.Skin()).Paint(cell);
}

void TRdRowsPainter::AddMouseState(TRdCell& cell, const TRow& row) const {
  const TRdMouseState& state = FList.RowMouse();
  if (row.Index != state.HotRow || cell.Column != state.HotColumn || !FList.isEnabled()) return;
  cell.State = static_cast<TPartState>(state.CellHotState);
  cell.Hovered = state.CellHotState != kCellNormal;
  cell.HotLine = state.HotLine;
}

void TRdRowsPainter::PaintGroupRow(QPainter& painter, const TRow& row) {
  const TRdMouseState& state = FList.RowMouse();
  TRdGroupRow group = row.Reader.GroupRow(row.Item, row.Index);
  const bool held = state.GroupBtnPressed && state.PressedRow == row.Index;
  group.ButtonState = held                             ? TPartState::Pressed
                      : state.HotGroupRow == row.Index ? TPartState::Hot
                                                       : TPartState::Normal;
  PaintGroupBackground(painter, row.Area, LookOf(row), FList.Skin(), FList.palette());
  if (FList.OnCustomDrawItem) FList.OnCustomDrawItem(painter, &row.Item, row.Area);
  TRdGroupPainter parts(painter, FList, FList.Skin(), group);
  parts.PaintTitleImage();
  TRdCell header;
  header.Cell = row.Area;
  header.Text = group.Content.Header;
  if (!FList.OnCustomDrawSubItem || FList.OnCustomDrawSubItem(painter, &row.Item, header))
    parts.PaintHeader();
  parts.PaintCheckBox();
  parts.PaintButton();
}

// The row that the keys begin at, and the cell that they act on.
void TRdRowsPainter::PaintFocus(QPainter& painter, const TRow& row) {
  if (!FList.hasFocus() || (FList.States().State(row.Index) & kRowFocused) == 0) return;
  const int column = row.Reader.IsGroupRow(row.Item) ? -1 : FList.CursorColumn();
  QStyleOptionFocusRect option;
  option.initFrom(&FList);
  option.rect = row.Area;
  if (column >= 0) option.rect = row.Reader.Layout().CellRect(row.Index, column).intersected(row.Area);
  option.rect.adjust(1, 1, -1, -1);
  option.state |= QStyle::State_KeyboardFocusChange | QStyle::State_Item;
  FList.style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, &FList);
}

// Below the last row and right of the last column.
void TRdRowsPainter::PaintBlank(QPainter& painter, const TRdCellReader& reader, const QRegion& region) {
  const TListMetrics& metrics = reader.Layout().Metrics();
  const QRect client(QPoint(), metrics.Client);
  const int end = reader.Layout().EndOfVisibleRows();
  const int shown = end - metrics.TopRow;
  const int width = std::clamp(reader.Layout().TotalWidth() - metrics.HorzPos, 0, client.width());
  // The stripes go on below the last row as if there were more.
  const int height = metrics.RowCount > 0 ? metrics.RowHeight : BlankRowHeight(FList.Skin().Item);
  const int top = shown * metrics.RowHeight;
  const QRect beside(QPoint(width, 0), client.bottomRight());
  if (region.intersects(beside)) painter.fillRect(beside, ListColor(FList.Skin(), FList.palette()));
  if (top >= client.height() || width == 0) return;
  const QRect area(0, top, width, client.height() - top);
  if (!region.intersects(area)) return;
  TRowCanvas canvas(painter, FBitmap, area);
  if (!canvas.Valid()) return;
  PaintBlankArea(canvas.Painter(), area, end, height, FList.Skin(), FList.palette());
  canvas.Blit();
}
