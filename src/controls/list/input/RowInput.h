// From gestures to acts: presses, releases and keys on the rows of a list. Knows no window; the list hands it
// what was hit.
#pragma once

#include "controls/list/input/RowInputHost.h"
#include "controls/list/input/RowSelection.h"
#include "controls/list/input/TypeAhead.h"
#include "controls/list/layout/ListLayout.h"

#include <Qt>

class TRowInput {
 public:
  explicit TRowInput(TRowInputHost& host) : FHost(host), FSelection(host) {}

  // A press of a button. Returns true if it switched a check box, which leaves the selection alone.
  bool Press(const THit& hit, Qt::MouseButton button, Qt::KeyboardModifiers shift);
  // The release that belongs to the last press.
  void Release();
  // The mouse was dragged away, so that the release changes no selection.
  void Cancel() { FCollapseRow = -1; }

  // A key that moves, selects, checks or scrolls. False for a key that is none of these.
  bool Key(int key, Qt::KeyboardModifiers shift);
  // Typed letters look for a row whose caption begins with them. False if the text holds none.
  bool Type(const QString& text, qint64 now);

 private:
  [[nodiscard]] bool OnCheckBox(const THit& hit) const;
  void PressRow(int row, Qt::MouseButton button, Qt::KeyboardModifiers shift);
  void PressBlank(Qt::KeyboardModifiers shift);
  [[nodiscard]] int TargetOf(int key) const;
  [[nodiscard]] int PageTarget(int from, int direction) const;
  bool MoveTo(int row, Qt::KeyboardModifiers shift);
  bool Space(Qt::KeyboardModifiers shift);
  void SwitchChecks(int row);

  TRowInputHost& FHost;
  TRowSelection FSelection;
  TTypeAhead FTypeAhead;
  int FCollapseRow = -1;  // pressed while selected among others
};
