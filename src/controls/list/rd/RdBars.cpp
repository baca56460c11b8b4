#include "controls/list/rd/RdBars.h"

#include "controls/list/rd/RdListView.h"

#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>

namespace {
// Small steps of a bar: one row down the list, one row height sideways (Mirror).
constexpr int kWheelRows = 3;
constexpr int kWheelSteps = 2;
}  // namespace

TRdBars::TRdBars(TRdListView& list) : FList(list) {
  FVert.Bar = new TRdScrollBar(&list);
  FHorz.Bar = new TRdScrollBar(&list);
  FHorz.Bar->SetKind(TScrollBarKind::Horizontal);
  for (TAxis* const axis : {&FVert, &FHorz}) {
    axis->Bar->SetAllowed(false);
    axis->Bar->setFocusPolicy(Qt::NoFocus);  // the list has the keys
    axis->Bar->OnChange = [this, axis] { Moved(*axis); };
    axis->Bar->OnTrackEnd = [this] { Mirror(); };
  }
  FVert.Bar->setObjectName(u"VertScrollBar"_qs);
  FHorz.Bar->setObjectName(u"HorzScrollBar"_qs);
}

// A bar that is telling of its move is up the stack: it goes when the program comes back to its event loop.
TRdBars::~TRdBars() {
  for (TAxis* const axis : {&FVert, &FHorz}) {
    axis->Bar->OnChange = axis->Bar->OnTrackEnd = nullptr;
    if (!FList.EventLife()->Telling()) continue;
    axis->Bar->setParent(nullptr);
    axis->Bar->deleteLater();
  }
}

void TRdBars::Choose(TAxis& axis, bool own, bool skinned) {
  if (axis.Own == own && axis.Skinned == skinned) return;
  axis.Own = own;
  axis.Skinned = skinned;
  ApplyPolicies();
  FList.ContentChanged();
}

void TRdBars::ApplyPolicies() {
  const auto policy = [](const TAxis& axis) {
    return axis.Own ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff;
  };
  FList.setVerticalScrollBarPolicy(policy(FVert));
  FList.setHorizontalScrollBarPolicy(policy(FHorz));
}

QMargins TRdBars::Margins() const {
  return {0, 0, Shows(FVert) ? FVert.Bar->width() : 0, Shows(FHorz) ? FHorz.Bar->height() : 0};
}

void TRdBars::Mirror() {
  if (FMirroring) return;
  const QScopedValueRollback guard(FMirroring, true);
  const TListMetrics metrics = FList.Layout().Metrics();
  const auto show = [](const TAxis& axis, bool wanted) { axis.Bar->SetAllowed(axis.Skinned && wanted); };
  // Rows for the one, pixels for the other. Max is the last of them, not their number: a bar's last page
  // begins at Max - PageSize + 1.
  FVert.Bar->SetSmallChange(1);
  FVert.Bar->SetParams(0, std::max(0, metrics.RowCount - 1), FList.Layout().RowsPerPage(), metrics.TopRow);
  show(FVert, metrics.RowCount > 0);
  FHorz.Bar->SetSmallChange(std::max(1, metrics.RowHeight));
  FHorz.Bar->SetLargeChange(std::min(metrics.Client.width(), kMaxScrollInc));
  FHorz.Bar->SetParams(0, std::max(0, FList.Layout().TotalWidth() - 1), metrics.Client.width(),
                       metrics.HorzPos);
  show(FHorz, true);
  Place();
}

void TRdBars::Place() {
  const QRect room = FList.contentsRect();
  const QMargins taken = Margins();
  // Beside the header too, or only below it.
  const int top = FList.Skin().Header.VertScrollBarCross ? 0 : FList.HeaderRect().height();
  FVert.Bar->setGeometry(room.right() + 1 - FVert.Bar->width(), room.top() + top, FVert.Bar->width(),
                         room.height() - top - taken.bottom());
  FHorz.Bar->setGeometry(room.left(), room.bottom() + 1 - FHorz.Bar->height(), room.width() - taken.right(),
                         FHorz.Bar->height());
}

// The host takes the position as far as it goes, and the bar is set right by it afterwards.
void TRdBars::Moved(const TAxis& axis) {
  if (FMirroring) return;
  const TEventScope scope(FList.EventLife());
  FList.CloseEditors();
  if (scope.ListGone()) return;
  if (&axis == &FVert)
    FList.SetTopIndex(axis.Bar->Position());
  else
    FList.SetHorzPos(axis.Bar->Position());
  if (!scope.ListGone()) Mirror();
}

bool TRdBars::Wheel(int direction) {
  const bool vertical = Shows(FVert);
  if (!vertical && !Shows(FHorz)) return false;
  TRdScrollBar& bar = vertical ? *FVert.Bar : *FHorz.Bar;
  const int before = bar.Position();
  bar.ScrollBy(direction, bar.SmallChange() * (vertical ? kWheelRows : kWheelSteps));
  return bar.Position() != before;
}
