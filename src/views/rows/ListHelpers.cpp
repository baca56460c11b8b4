#include "views/rows/ListHelpers.h"

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QStyle>

#include <algorithm>

#include "controls/bars/BarManager.h"
#include "controls/list/ListView.h"

// An empty list leaves room for the scroll bar that its rows will bring, so that they don't push a second one
// out at the bottom. A column is never made so narrow that the user can't take hold of it any more.
void FitLastColumn(TCustomListView& list) {
  constexpr int kLeastWidth = 5;
  if (list.Columns().Count() == 0) return;
  const TListUpdate update(list.Items());
  const int last = list.Columns().Count() - 1;
  int others = 0;
  for (int column = 0; column < last; ++column)
    others += list.Columns()[column].Width();
  int width = list.ClientWidth();
  if (list.Items().Count() == 0) width -= list.style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  if (width > others) list.Columns()[last].SetWidth(std::max(width - others, kLeastWidth));
}

void FitFirstColumn(TCustomListView& list, int room) {
  int excess = -room;
  for (int index = 0; index < list.Columns().Count(); ++index)
    excess += list.Columns()[index].Width();
  if (excess <= 0) return;
  TListColumn& first = list.Columns()[0];
  // The bound gives way too, or the width would not.
  first.SetMinWidth(std::min(first.MinWidth(), first.Width() - excess));
  first.SetWidth(first.Width() - excess);
}

// A caption that is longer in the user's language widens its column, with room for the sort mark where a
// click makes one. What the others gain the first column gives, whose names are cut with an ellipsis rather
// than a caption.
void HoldCaptions(TCustomListView& list, int room) {
  const TListMetrics metrics;
  const TImageList* marks = list.Options().ColumnClick ? list.SmallImages() : nullptr;
  const int beside = 2 * metrics.Margin + metrics.Gap + (marks == nullptr ? 0 : marks->Size().width());
  int before = 0;
  for (int index = 0; index < list.Columns().Count(); ++index) {
    TListColumn& column = list.Columns()[index];
    const int need = list.fontMetrics().horizontalAdvance(column.Caption()) + beside;
    before += column.Width();
    if (need > column.Width()) column.SetMinWidth(need);
  }
  FitFirstColumn(list, std::max(before, room));
}

// The list tells the place of the mouse, or of the focused row. Some systems make no request of Shift+F10.
void AssignPopup(TCustomListView& list, TdxBarPopupMenu& popup) {
  list.OnContextPopup = [&list, &popup](const QPoint& pos, bool& handled) {
    popup.popup(list.viewport()->mapToGlobal(pos));
    handled = true;
  };
  list.OnKeyDown = [&list](int& key, Qt::KeyboardModifiers shift) {
    if (key != Qt::Key_F10 || shift != Qt::ShiftModifier) return;
    key = 0;
    QContextMenuEvent request(QContextMenuEvent::Keyboard, QPoint(), QPoint(), Qt::NoModifier);
    QCoreApplication::sendEvent(&list, &request);
  };
}

THeaderCheckBox::THeaderCheckBox(TCustomListView& list, const QString& name) : QCheckBox(&list), FList(list) {
  setObjectName(name);
  list.installEventFilter(this);
  connect(this, &QCheckBox::clicked, this, [this](bool checked) {
    CheckRows(checked);
    if (OnClick) OnClick(checked);
  });
}

// The box follows the rows: it is checked exactly while all of them are.
int THeaderCheckBox::CountChecked() {
  const TListItems& rows = FList.Items();
  const auto checked =
      std::count_if(rows.begin(), rows.end(), [](const TListItem* item) { return item->Checked(); });
  setChecked(checked == rows.Count());
  return static_cast<int>(checked);
}

// Each row that changes tells its own event; in the bracket the list paints once.
void THeaderCheckBox::CheckRows(bool checked) {
  const TListUpdate update(FList.Items());
  for (TListItem* item : FList.Items())
    item->SetChecked(checked);
}

void THeaderCheckBox::CheckAll(bool checked) {
  CheckRows(checked);
  setChecked(checked);
}

void THeaderCheckBox::Invert() {
  {
    const TListUpdate update(FList.Items());
    for (TListItem* item : FList.Items())
      item->SetChecked(!item->Checked());
  }
  CountChecked();
}

// The box lies over the first caption, which makes room by blanks once, however often the form is shown.
void THeaderCheckBox::Place(std::optional<int> top) {
  constexpr int kLeft = 6;  // pixels
  constexpr int kRoom = 6;  // blanks
  TListColumn& first = FList.Columns()[0];
  if (!FRoomMade) first.SetCaption(QString(kRoom, u' ') + first.Caption());
  FRoomMade = true;
  resize(sizeHint());
  const QRect header = FList.HeaderRect();
  move(kLeft, header.top() + top.value_or((header.height() - height()) / 2));
  raise();
}

bool THeaderCheckBox::eventFilter(QObject* watched, QEvent* event) {
  if (watched == &FList && event->type() == QEvent::KeyRelease && OnSpace) {
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (key.key() == Qt::Key_Space && !key.isAutoRepeat()) OnSpace();
  }
  return QCheckBox::eventFilter(watched, event);
}
