#include "views/ListHelpers.h"

#include <QStyle>

#include <algorithm>

#include "controls/list/ListView.h"

void FitLastColumn(TListView& list) {
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
