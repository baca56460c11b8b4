// The gallery's list in a real window, with a record of its events in order. Rows by their first word:
//   0 Media (group), 1 Picture, 2 Recorder, 3 Film, 4 Office (group), 5 Tables, 6 Letter, 7 Page,
//   8 Tools (group), 9 Archive (disabled), 10 Terminal, 11 Night
#pragma once

#include "GalleryList.h"

#include <gtest/gtest.h>

#include <QTest>

class TGalleryRig : public ::testing::Test {
 protected:
  TGalleryRig();

  [[nodiscard]] static QString Name(const TListItem* item);

  [[nodiscard]] TRdCell Cell(int row, int column) const {
    return TRdCellReader(List).Cell(*List.Items()[row], row, column);
  }
  // A point in the part of the cell that reacts.
  [[nodiscard]] QPoint Hot(int row, int column) const;
  [[nodiscard]] QPoint Box(int row) const {
    return TRdCellReader(List).CheckBoxRect(*List.Items()[row], row).center();
  }
  [[nodiscard]] QPoint Arrow(int row) const {
    return TRdCellReader(List).ExpandButtonRect(*List.Items()[row], row).center();
  }
  [[nodiscard]] QWidget* Header() const { return List.childAt(List.HeaderRect().center()); }

  void Click(QPoint pos, Qt::KeyboardModifiers shift = {}) {
    QTest::mouseClick(List.viewport(), Qt::LeftButton, shift, pos);
  }
  void DoubleClick(QPoint pos) {
    Click(pos);
    QTest::mouseDClick(List.viewport(), Qt::LeftButton, {}, pos);
    QTest::mouseRelease(List.viewport(), Qt::LeftButton, {}, pos);
  }
  void MoveTo(QPoint pos, Qt::MouseButtons buttons = {}, quint64 tick = 0) {
    QMouseEvent move(QEvent::MouseMove, pos, List.viewport()->mapToGlobal(QPointF(pos)), Qt::NoButton,
                     buttons, {});
    move.setTimestamp(tick);
    QCoreApplication::sendEvent(List.viewport(), &move);
  }
  void ClickHeader(int x) { QTest::mouseClick(Header(), Qt::LeftButton, {}, {x, 10}); }
  [[nodiscard]] int Middle(int column) const { return List.Layout().SectionRect(column, 1).center().x(); }

  // What was recorded since the last call.
  std::u16string TakeLog() {
    const QString log = Log.join(u", ");
    Log.clear();
    return log.toStdU16String();
  }

  QStringList Log;  // before the list, whose end is recorded too
  TGalleryList Gallery;
  TRdListView& List;

 private:
  void Record();
};
