#include "controls/list/rd/RdTip.h"

#include "controls/list/rd/RdListView.h"

#include <QLabel>
#include <QToolTip>

#include <algorithm>

namespace {
constexpr int kLeastWithBoxes = 45;  // pixels: a first column below has no room beside its check box
}

TRdTip::TRdTip(TRdListView& list) : FList(list), FLabel(std::make_unique<QLabel>(&list, Qt::ToolTip)) {
  FLabel->setObjectName(u"RdListTip"_qs);
  FLabel->setTextFormat(Qt::PlainText);
  FLabel->setFrameStyle(QFrame::Box | QFrame::Plain);
  FLabel->setMargin(1);
  FLabel->setAttribute(Qt::WA_ShowWithoutActivating);
}

TRdTip::~TRdTip() = default;

QPoint TRdTip::CellAt(const QPoint& pos) const {
  const THit hit = FList.HitTest(pos);
  return hit.Row >= 0 ? QPoint(hit.Column, hit.Row) : QPoint(-1, -1);
}

QString TRdTip::TextAt(const QPoint& pos) const {
  const QPoint at = CellAt(pos);
  const TkListItem* const item = FList.Items().Item(at.y());
  if (!FList.Properties().ShowToolTip || item == nullptr || at.x() < 0) return {};
  const TRdCellReader reader(FList);
  if (reader.Layout().CellRect(at.y(), at.x()).width() < kLeastWithBoxes && FList.Options().CheckBoxes)
    return {};
  if (!FList.OpenOwnerDraw()) return FList.HostCutText(pos);
  if (reader.IsGroupRow(*item) || !HasCell(*item, at.x())) return {};
  const TRdCell cell = reader.Cell(*item, at.y(), at.x());
  return reader.TextCut(cell) ? PlainText(cell.Type, cell.Text, FList.Skin().Item, u'\n') : QString();
}

bool TRdTip::Show(const QPoint& pos) {
  const QString text = TextAt(pos);
  Hide();
  if (text.isEmpty()) return false;
  FCell = CellAt(pos);
  const TRdCellReader reader(FList);
  const TRdCell cell = reader.Cell(*FList.Items().Item(FCell.y()), FCell.y(), FCell.x());
  const TItemSkin& skin = FList.Skin().Item;
  // So that the tip's text begins about where the cell's does.
  const int inset = skin.TextOffset - 2 + (cell.Column == 0 ? skin.ItemLeftOffset : 0);
  FLabel->setPalette(QToolTip::palette());
  FLabel->setFont(cell.Font);
  FLabel->setText(text);
  FLabel->adjustSize();
  const QPoint corner(std::max(cell.Cell.left(), cell.Cell.left() + inset - FLabel->margin()),
                      cell.Cell.center().y() - FLabel->height() / 2);
  FLabel->move(FList.viewport()->mapToGlobal(corner));
  FLabel->show();
  return true;
}

void TRdTip::Hide() {
  FLabel->hide();
  FCell = {-1, -1};
}

void TRdTip::Follow(const QPoint& pos) {
  if (FLabel->isVisible() && CellAt(pos) != FCell) Hide();
}
