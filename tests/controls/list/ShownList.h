// A list in a real window, with a record of its events in order.
#pragma once

#include "controls/list/ListView.h"

#include <gtest/gtest.h>

#include <QStringList>
#include <QTest>

class TShownList : public ::testing::Test {
 protected:
  // Rows "row 0" to "row 9" and so on, two columns.
  void Show(const TListViewOptions& options, int rows = 10) {
    List.SetOptions(options);
    List.Columns().Add(u"Name"_qs, 150);
    List.Columns().Add(u"Size"_qs, 80, TAlignment::RightJustify);
    for (int row = 0; row < rows; ++row) {
      List.Items().Add()->SetCaption(u"row %1"_qs.arg(row));
      List.Items()[row]->SubItems().Add(QString::number(row * 10));
    }
    List.resize(300, 200);
    List.show();
    List.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&List));
    List.setFocus();
    Record();
  }

  void Record() {
    const auto row = [](const TListItem* item) { return item->Caption().mid(4); };
    List.OnSelectItem = [=, this](TListItem* item, bool on) { Log << (on ? u"+"_qs : u"-"_qs) + row(item); };
    List.OnItemChecked = [=, this](TListItem* item) {
      Log << (item->Checked() ? u"check "_qs : u"uncheck "_qs) + row(item);
    };
    List.OnDeletion = [=, this](TListItem* item) { Log << u"deletion "_qs + row(item); };
    List.OnColumnClick = [this](TListColumn* column) { Log << u"column %1"_qs.arg(column->Index()); };
    List.OnMouseDown = [this](Qt::MouseButton, Qt::KeyboardModifiers, int, int) { Log << u"down"_qs; };
    List.OnMouseUp = [this](Qt::MouseButton, Qt::KeyboardModifiers, int, int) { Log << u"up"_qs; };
    List.OnClick = [this] { Log << u"click"_qs; };
    List.OnDblClick = [this] { Log << u"dblclick"_qs; };
    List.OnContextPopup = [this](const QPoint&, bool& handled) {
      handled = true;
      Log << u"popup"_qs;
    };
  }

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
};
