// The header above the rows: a child window that joins header layout, painter and input.
#pragma once

#include "controls/list/input/HeaderInput.h"

#include <QWidget>

class TRowHost;

class THeaderBar : public QWidget, private THeaderInputHost {
 public:
  explicit THeaderBar(TRowHost& host);

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  // THeaderInputHost
  [[nodiscard]] TListLayout HeaderLayout() const override;
  [[nodiscard]] TListColumns& HeaderColumns() override;
  [[nodiscard]] bool Clickable() const override;
  void ColumnClicked(int column) override;
  void FitColumnToContents(int column) override;

  void Press(QMouseEvent& event, bool second);

  TRowHost& FHost;
  THeaderInput FInput;
};
