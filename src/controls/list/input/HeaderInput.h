// The mouse on a header: which section is hot or pressed, which divider is dragged. Knows no window.
#pragma once

#include "controls/list/layout/ListLayout.h"

class TListColumns;

class THeaderInputHost {
 public:
  virtual ~THeaderInputHost() = default;

  [[nodiscard]] virtual TListLayout HeaderLayout() const = 0;
  [[nodiscard]] virtual TListColumns& HeaderColumns() = 0;
  // Sections can be pressed.
  [[nodiscard]] virtual bool Clickable() const = 0;

  virtual void ColumnClicked(int column) = 0;
  virtual void FitColumnToContents(int column) = 0;
};

class THeaderInput {
 public:
  explicit THeaderInput(THeaderInputHost& host) : FHost(host) {}

  // The left button. A second press in a row on a divider fits the column at its left.
  void Press(int x, bool second);
  void Release(int x);
  void Move(int x);
  void Leave();

  [[nodiscard]] int HotColumn() const { return FHotColumn; }
  // The section that looks pressed; -1 while the mouse is away from it.
  [[nodiscard]] int PressedColumn() const { return FHotColumn == FDownColumn ? FDownColumn : -1; }
  [[nodiscard]] bool Tracking() const { return FTrackedColumn >= 0; }
  // A divider that can be dragged is within reach.
  [[nodiscard]] bool AtDivider(int x) const { return DividerAt(x) >= 0; }

 private:
  [[nodiscard]] int DividerAt(int x) const;

  THeaderInputHost& FHost;
  int FHotColumn = -1;
  int FDownColumn = -1;
  int FTrackedColumn = -1;
  int FTrackStart = 0;  // the mouse and the width at the begin of the drag
  int FTrackWidth = 0;
};
