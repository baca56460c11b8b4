// What the mouse and the keys need of a list. The row host implements it; tests may without a window.
#pragma once

#include "controls/list/ListTypes.h"

#include <QString>

class TRowStates;

class TRowInputHost {
 public:
  virtual ~TRowInputHost() = default;

  [[nodiscard]] virtual const TListViewOptions& Options() const = 0;
  [[nodiscard]] virtual TRowStates& States() = 0;

  [[nodiscard]] virtual int TopIndex() const = 0;
  virtual void SetTopIndex(int row) = 0;
  [[nodiscard]] virtual int RowsPerPage() const = 0;
  virtual void MakeRowVisible(int row, bool partialOk) = 0;
  // Steps to the right, or to the left below 0.
  virtual void ScrollHorz(int steps) = 0;

  // The caption that type-ahead looks for.
  [[nodiscard]] virtual QString RowText(int row) const = 0;
};
