#include "controls/list/rd/RdCellReader.h"

#include "controls/list/rd/RdListView.h"
#include "controls/list/rd/layout/RdCellLayout.h"

#include <algorithm>

QString PlainText(TListColumnType type, const QString& text, const TItemSkin& skin, QChar between) {
  if (type != ltIconCaption && type != ltNormalIconCaption) return text;
  QStringList lines;
  for (const TIconTextLine& line : SplitIconText(text, TIconTextKind::IconCaption, {}, skin))
    lines << line.Text;
  return lines.join(between);
}

TRdCellReader::TRdCellReader(const TRdListView& list) : FList(list), FLayout(list.Layout()) {}

bool TRdCellReader::IsGroupRow(const TkListItem& item) const {
  return item.IsGroupHeader() && item.Group() != nullptr && FList.OpenOwnerDraw() && FList.OpenGroupDraw();
}

QRect TRdCellReader::PaintedRect(int row) const {
  return PaintedRow(FLayout.RowRect(row), FLayout.Metrics().Client.width(), FLayout.Metrics().RowHeight);
}

TRdGroupRow TRdCellReader::GroupRow(const TkListItem& item, int row) const {
  const TkListGroup& group = *item.Group();
  TRdGroupRow result;
  result.Row = PaintedRect(row);
  result.Collapsed = group.Collapsed();
  result.Checked = group.GroupChecked();
  result.TitleImages = FList.Properties().GroupImages;
  result.TitleImage = group.TitleImage();
  result.Content.Header = group.Header();
  result.Content.HeaderAlign = group.HeaderAlign();
  result.Content.CheckBoxes = FList.Options().CheckBoxes;
  result.Content.HasCheckBox = HasCheckBox(item);
  result.Content.ButtonAlign = group.GroupExpandBtnAlign();
  // By the size of the resting button: the layout must not jump with the mouse.
  result.Content.Button = GroupButtonSize(FList.Skin().Group, result.Collapsed);
  result.Content.TitleImage = IconSize(result.TitleImages, result.TitleImage);
  return result;
}

bool TRdCellReader::HasCheckBox(const TkListItem& item) const {
  return FList.Options().CheckBoxes && GroupGivesBox(item);
}

QRect TRdCellReader::CheckBoxRect(const TkListItem& item, int row) const {
  if (!HasCheckBox(item)) return {};
  if (IsGroupRow(item)) {
    const TRdGroupRow group = GroupRow(item, row);
    return LayoutGroupRow(group.Row, group.Content, FList.Skin()).CheckBox;
  }
  return RowCheckBoxRect(FLayout.RowRect(row), FList.Skin().Item);
}

QRect TRdCellReader::ExpandButtonRect(const TkListItem& item, int row) const {
  if (!IsGroupRow(item)) return {};
  const TRdGroupRow group = GroupRow(item, row);
  return LayoutGroupRow(group.Row, group.Content, FList.Skin()).Button;
}

// The check box takes its room from the first cell, by the skin or, where the host draws, by the host's
// layout.
QRect TRdCellReader::CellRect(const TkListItem& item, int row, int column) const {
  const QRect cell = FLayout.CellRect(row, column);
  if (column > 0) return cell;
  if (FList.OpenOwnerDraw()) return FirstCellRect(cell, HasCheckBox(item), FList.Skin().Item);
  const QRect box = FLayout.CellParts(row, 0).CheckBox;
  return box.isNull() ? cell : QRect(QPoint(box.right() + 1, cell.top()), cell.bottomRight());
}

TRdCell TRdCellReader::Cell(const TkListItem& item, int row, int column) const {
  const TkListColumn& about = FList.Columns()[column];
  TkCell content = CellOf(item, about);
  TRdCell cell;
  cell.Exists = HasCell(item, column);
  cell.Cell = CellRect(item, row, column);
  cell.Column = column;
  cell.Type = content.Type;
  cell.Text = std::move(content.Text);
  cell.Alignment = about.Alignment();
  cell.Font = about.ColumnFont();
  cell.Icons = about.IconImgList() != nullptr ? about.IconImgList() : FList.Properties().IconImgList;
  cell.Icon = column == 0 ? item.ImageIndex() : item.SubItems().ImageIndex(column - 1);
  cell.Enabled = item.Enabled();
  return cell;
}

// Where the host draws, the editor takes the whole cell, as nothing marks a band in it.
QRect TRdCellReader::EditBand(const TRdCell& cell) const {
  if (!FList.OpenOwnerDraw()) return cell.Cell;
  return LayoutEdit(cell.Cell, FList.Skin().Item.EditHeight, cell.Type == ltComboBox).Band;
}

int TRdCellReader::IconTextHit(const TRdCell& cell, const QPoint& pos) const {
  const bool icon = cell.Type == ltIconCaption || cell.Type == ltNormalIconCaption;
  return icon ? HitIconText(CellIconText(cell, FList.Skin().Item), pos) : kNoIconTextHit;
}

bool TRdCellReader::InHotArea(const TRdCell& cell, const QPoint& pos) const {
  const TListSkin& skin = FList.Skin();
  // Disabled is a row for its buttons and labels; all else in it reacts.
  const bool edits = cell.Type == ltEdit || cell.Type == ltComboBox;
  if (!cell.Cell.contains(pos) || (!cell.Exists && !edits)) return false;
  switch (cell.Type) {
    case ltIconCaption:
    case ltNormalIconCaption:
      return IconTextHit(cell, pos) != kNoIconTextHit;
    case ltButton:
      return cell.Enabled && CellButton(cell, skin.Item, true).contains(pos);
    case ltLabel:
      return cell.Enabled &&
             LayoutCellText(cell.Text, cell.Font, cell.Cell, cell.Column, cell.Alignment, skin.Item)
                 .Rect.contains(pos);
    case ltStar:
      return StarCaptionArea(cell.Cell).contains(pos);
    case ltEdit:
    case ltComboBox:
      return EditBand(cell).contains(pos);
    case ltCheckbox:
      return CellCheckBoxRect(cell.Cell, skin.Item).contains(pos);
    default:
      return false;
  }
}

// By the layouts that paint.
bool TRdCellReader::TextCut(const TRdCell& cell) const {
  const TItemSkin& skin = FList.Skin().Item;
  switch (cell.Type) {
    case ltIconCaption:
    case ltNormalIconCaption: {
      const TIconTextParts parts = CellIconText(cell, skin);
      return std::ranges::any_of(parts.Lines, [](const TIconTextLine& line) { return line.Block.Cut; });
    }
    case ltNone:
    case ltLabel:
      return LayoutCellText(cell.Text, cell.Font, cell.Cell, cell.Column, cell.Alignment, skin).Cut;
    case ltButton: {
      const QRect button = CellButton(cell, skin, cell.Enabled && FList.isEnabled());
      return LayoutText(cell.Text, cell.Font, button, TAlignment::Center).Cut;
    }
    case ltEdit:
    case ltComboBox: {
      const QRect room = LayoutEdit(cell.Cell, skin.EditHeight, cell.Type == ltComboBox).Text;
      return LayoutText(cell.Text, cell.Font, room, cell.Alignment).Cut;
    }
    default:
      return false;
  }
}
