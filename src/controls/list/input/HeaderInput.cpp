#include "controls/list/input/HeaderInput.h"

#include "controls/list/model/ListColumns.h"

#include <utility>

namespace {
constexpr int kDividerReach = 4;
}

int THeaderInput::DividerAt(int x) const {
  const int column = FHost.HeaderLayout().DividerAt(x, kDividerReach);
  return column >= 0 && FHost.HeaderColumns()[column].Resizable() ? column : -1;
}

void THeaderInput::Press(int x, bool second) {
  const int divider = DividerAt(x);
  if (divider >= 0 && second) {
    FHost.FitColumnToContents(divider);
  } else if (divider >= 0) {
    FTrackedColumn = divider;
    FTrackStart = x;
    FTrackWidth = FHost.HeaderColumns()[divider].Width();
  } else if (FHost.Clickable()) {
    FDownColumn = FHotColumn = FHost.HeaderLayout().ColumnAt(x);
  }
}

void THeaderInput::Move(int x) {
  if (FTrackedColumn >= 0 && FTrackedColumn < FHost.HeaderColumns().Count())
    FHost.HeaderColumns()[FTrackedColumn].SetWidth(FTrackWidth + x - FTrackStart);
  if (Tracking()) return;
  const bool hot = FHost.Clickable() && (FDownColumn >= 0 || DividerAt(x) < 0);
  FHotColumn = hot ? FHost.HeaderLayout().ColumnAt(x) : -1;
}

void THeaderInput::Release(int x) {
  FTrackedColumn = -1;
  const int down = std::exchange(FDownColumn, -1);
  if (down >= 0 && FHost.HeaderLayout().ColumnAt(x) == down) FHost.ColumnClicked(down);
}

void THeaderInput::Leave() {
  FHotColumn = -1;
}
