// A list in a real window, with a record of its events in order.
#pragma once

#include "controls/list/ListView.h"

#include <gtest/gtest.h>

#include <QStringList>
#include <QTest>

class TShownList : public ::testing::Test {
 protected:
  // Rows "row 0" to "row 9" and so on, two columns.
  void Show(const TListViewOptions& options, int rows = 10);

  [[nodiscard]] QPoint TextOf(int row) const { return List.Layout().CellParts(row, 0).Text.center(); }
  [[nodiscard]] QPoint BoxOf(int row) const { return List.Layout().CellParts(row, 0).CheckBox.center(); }
  [[nodiscard]] QPoint Blank() const { return List.viewport()->rect().bottomRight() - QPoint(3, 3); }
  [[nodiscard]] QWidget* Header() const { return List.childAt(List.HeaderRect().center()); }

  void Click(QPoint pos, Qt::MouseButton button = Qt::LeftButton, Qt::KeyboardModifiers shift = {}) {
    QTest::mouseClick(List.viewport(), button, shift, pos);
  }

  // The second press of a double click and its release.
  void ClickAgain(QPoint pos) {
    QTest::mouseDClick(List.viewport(), Qt::LeftButton, {}, pos);
    QTest::mouseRelease(List.viewport(), Qt::LeftButton, {}, pos);
  }

  // What was recorded since the last call.
  QString TakeLog() {
    const QString log = Log.join(u", ");
    Log.clear();
    return log;
  }

  QStringList Log;  // before the list, whose end is recorded too
  TListView List;

 private:
  void Record();
};
