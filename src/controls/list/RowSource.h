// Where a row host gets what it shows: rows and cells by index, asked for only when they are painted,
// measured or read aloud.
#pragma once

#include <QString>

class TListColumns;

class TRowSource {
 public:
  virtual ~TRowSource() = default;

  [[nodiscard]] virtual const TListColumns& RowColumns() const = 0;

  // Text and small image of a cell; empty and -1 for a cell that the row does not have.
  [[nodiscard]] virtual QString CellText(int row, int column) const = 0;
  [[nodiscard]] virtual int CellImage(int row, int column) const = 0;
  [[nodiscard]] virtual int StateImage(int row) const = 0;
};
