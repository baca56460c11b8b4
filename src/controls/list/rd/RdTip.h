// The tip with the whole text of a cell that shows only part of it, laid over the cell. Main thread.
#pragma once

#include <QFont>
#include <QPoint>
#include <QString>

#include <memory>

class QLabel;
class TRdListView;

class TRdTip {
 public:
  explicit TRdTip(TRdListView& list);
  ~TRdTip();

  // Shows the tip of the cell there. False if it has none.
  bool Show(const QPoint& pos);
  void Hide();
  // Hides it unless the mouse is still on its cell.
  void Follow(const QPoint& pos);

  // What the tip of the cell at a point says, empty for none.
  [[nodiscard]] QString TextAt(const QPoint& pos) const;

 private:
  [[nodiscard]] QPoint CellAt(const QPoint& pos) const;

  TRdListView& FList;
  std::unique_ptr<QLabel> FLabel;
  QPoint FCell{-1, -1};  // row and column
};
