// The state bits of the rows of a list, by row index. Items reach their bits through the interface, so that
// rows live and are tested without a window.
#pragma once

#include "controls/list/ListTypes.h"

#include <QtGlobal>

#include <functional>
#include <vector>

class TRowStates {
 public:
  virtual ~TRowStates() = default;

  [[nodiscard]] virtual int Count() const = 0;

  // The bits of a row, 0 for a row out of range.
  [[nodiscard]] virtual unsigned State(int row) const = 0;

  // Bits that one row only may have: whoever gives them takes them from the former row first, as
  // TListItems::ChangeState does.
  [[nodiscard]] virtual unsigned UniqueBits() const = 0;

  // Gives the row the bits under the mask and tells whoever listens, if that changes anything. A row out of
  // range changes nothing.
  virtual void Change(int row, unsigned bits, unsigned mask) = 0;

  // Replaces all bits of a row without a word; used when rows move.
  virtual void Put(int row, unsigned state) = 0;

  // New rows have no bits. None of the rows that are removed has the focus.
  virtual void Insert(int row, int count) = 0;
  virtual void Remove(int row, int count) = 0;
  // Any rows, in ascending order, in one pass. The focused row hands the focus to its successor, without a
  // word.
  virtual void Remove(const std::vector<int>& rows) = 0;

  // The first row after the given one (-1 for the first of all) that has all the bits, or -1.
  [[nodiscard]] virtual int Next(int after, unsigned bits) const = 0;

  // How many rows have the bit.
  [[nodiscard]] virtual int CountOf(unsigned bit) const = 0;
};

// The bits as a plain list; what every control of the program uses.
class TRowStateList : public TRowStates {
 public:
  // Called after each change with the row, its bits before and after. The listener may change anything.
  std::function<void(int row, unsigned before, unsigned after)> OnChange;

  // With single selection, at most one row is selected.
  void SetSingleSelect(bool single) { FSingleSelect = single; }
  [[nodiscard]] unsigned UniqueBits() const override {
    return kRowFocused | kRowAnchor | (FSingleSelect ? kRowSelected : 0);
  }

  [[nodiscard]] int Count() const override { return static_cast<int>(FStates.size()); }
  [[nodiscard]] unsigned State(int row) const override;
  void Change(int row, unsigned bits, unsigned mask) override;
  void Put(int row, unsigned state) override;
  void Insert(int row, int count) override;
  void Remove(int row, int count) override;
  void Remove(const std::vector<int>& rows) override;
  [[nodiscard]] int Next(int after, unsigned bits) const override;
  [[nodiscard]] int CountOf(unsigned bit) const override;

 private:
  [[nodiscard]] bool Has(int row) const { return row >= 0 && row < Count(); }
  void Recount(unsigned before, unsigned after);

  // A byte per row. The counts, one per bit, spare a walk over all rows for "is anything selected".
  std::vector<quint8> FStates;
  int FCounts[6] = {};
  bool FSingleSelect = false;
  mutable int FFocusHint = -1;  // where the focus was last found: it is asked for at each paint
};
