// A list in a real window, with a record of its events in order: what the tests of both lists have in common.
#pragma once

#include "controls/list/ListView.h"

#include <gtest/gtest.h>

#include <QStringList>
#include <QTest>

class TListRig : public ::testing::Test {
 protected:
  [[nodiscard]] virtual TCustomListView& Shown() = 0;
  // What the record calls the row.
  [[nodiscard]] virtual QString NameOf(const TListItem& item) const = 0;

  void ShowAndRecord(QSize size) {
    TCustomListView& list = Shown();
    list.resize(size);
    list.show();
    list.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&list));
    list.setFocus();
    list.OnSelectItem = [this](TListItem* item, bool on) { Log << (on ? u"+"_qs : u"-"_qs) + NameOf(*item); };
    list.OnItemChecked = [this](TListItem* item) {
      Log << (item->Checked() ? u"check "_qs : u"uncheck "_qs) + NameOf(*item);
    };
    list.OnMouseDown = [this](auto&&...) { Log << u"down"_qs; };
    list.OnMouseUp = [this](auto&&...) { Log << u"up"_qs; };
    list.OnClick = [this] { Log << u"click"_qs; };
    list.OnDblClick = [this] { Log << u"dblclick"_qs; };
  }

  [[nodiscard]] QWidget* Header() { return Shown().childAt(Shown().HeaderRect().center()); }

  void Click(QPoint pos, Qt::MouseButton button = Qt::LeftButton, Qt::KeyboardModifiers shift = {}) {
    QTest::mouseClick(Shown().viewport(), button, shift, pos);
  }
  void DoubleClick(QPoint pos) {
    Click(pos);
    QTest::mouseDClick(Shown().viewport(), Qt::LeftButton, {}, pos);
    QTest::mouseRelease(Shown().viewport(), Qt::LeftButton, {}, pos);
  }
  // Over the rows or, as told, over the header.
  static void MoveTo(QWidget& widget, QPoint pos, Qt::MouseButtons held = {}, quint64 tick = 0) {
    QMouseEvent move(QEvent::MouseMove, pos, widget.mapToGlobal(QPointF(pos)), Qt::NoButton, held, {});
    move.setTimestamp(tick);
    QCoreApplication::sendEvent(&widget, &move);
  }

  // What was recorded since the last call.
  std::u16string TakeLog() { return std::exchange(Log, {}).join(u", ").toStdU16String(); }

  QStringList Log;  // before the list, whose end is recorded too
};
