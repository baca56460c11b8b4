// The gallery's list in a real window, with a record of its events in order. Rows by their first word:
//   0 Media (group), 1 Picture, 2 Recorder, 3 Film, 4 Office (group), 5 Tables, 6 Letter, 7 Page,
//   8 Tools (group), 9 Archive (disabled), 10 Terminal, 11 Night
#pragma once

#include "GalleryList.h"

#include <gtest/gtest.h>

#include <QTest>

class TGalleryRig : public ::testing::Test {
 protected:
  TGalleryRig() : List(Gallery.List()) {
    Record();
    List.resize(1300, 650);
    List.show();
    List.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&List));
    List.setFocus();
  }

  [[nodiscard]] static QString Name(const TListItem* item) {
    const auto* const row = static_cast<const TkListItem*>(item);
    return row->IsGroupHeader() ? row->Group()->Header()
                                : item->Caption().section(u'\r', 0, 0).section(u' ', 0, 0);
  }

  void Record() {
    const auto cell = [this](const char16_t* event) {
      return [this, event](const TListItem* item, int column) {
        Log << QString::fromUtf16(event) + u' ' + Name(item) + u' ' + QString::number(column);
      };
    };
    List.OnSelectItem = [this](TListItem* item, bool on) { Log << (on ? u"+"_qs : u"-"_qs) + Name(item); };
    List.OnItemChecked = [this](TListItem* item) {
      Log << (item->Checked() ? u"check "_qs : u"uncheck "_qs) + Name(item);
    };
    List.OnMouseDown = [this](Qt::MouseButton, Qt::KeyboardModifiers, int, int) { Log << u"down"_qs; };
    List.OnMouseUp = [this](Qt::MouseButton, Qt::KeyboardModifiers, int, int) { Log << u"up"_qs; };
    List.OnClick = [this] { Log << u"click"_qs; };
    List.OnDblClick = [this] { Log << u"dblclick"_qs; };
    List.OnButtonClick = cell(u"button");
    List.OnLabelClick = cell(u"label");
    List.OnIconLabelClick = cell(u"iconlabel");
    List.OnLabelIconClick = cell(u"icon");
    List.OnStarCaptionClick = cell(u"star");
    List.OnItemCheckBoxClick = [this](TListItem* item) { Log << u"box "_qs + Name(item); };
    List.OnCheckBoxClick = [this](TRdListView&, bool on) { Log << (on ? u"all"_qs : u"none"_qs); };
    List.OnSubItemChecking = [this](TkListItem*, int, bool& on) {
      Log << (on ? u"checking"_qs : u"unchecking"_qs);
    };
    List.OnSubItemChecked = [this](TkListItem*, int, bool&) { Log << u"checked"_qs; };
    List.GroupShowHide = [this](TRdListView&, TkListGroup& group, bool& show) {
      Log << (show ? u"show "_qs : u"hide "_qs) + group.Header();
    };
    List.EditOnEnter = cell(u"enter");
    List.EditOnExit = cell(u"exit");
    List.EditOnChange = cell(u"change");
    List.OnColumnComboBoxDropDown = [this](TListItem* item, int, int index) {
      Log << u"drop %1 %2"_qs.arg(Name(item)).arg(index);
    };
    List.OnColumnComboBoxChange = [this](TListItem* item, int, int index) {
      Log << u"choose %1 %2"_qs.arg(Name(item)).arg(index);
    };
    List.OnColumnClick = [this](TListColumn* column) {
      const TRdListState& state = List.MouseState();
      Log << u"column %1 %2"_qs.arg(column->Index())
                 .arg(state.SortColumn != nullptr ? state.SortState : ssNone);
    };
    List.OnWriteLog = [this](const QString& text) { Log << text; };
  }

  [[nodiscard]] TRdCell Cell(int row, int column) const {
    return TRdCellReader(List).Cell(*List.Items()[row], row, column);
  }
  // A point in the part of the cell that reacts.
  [[nodiscard]] QPoint Hot(int row, int column) const {
    const TRdCell cell = Cell(row, column);
    const TRdCellReader reader(List);
    for (int y = cell.Cell.top(); y <= cell.Cell.bottom(); y += 2)
      for (int x = cell.Cell.left(); x <= cell.Cell.right(); x += 2)
        if (reader.InHotArea(cell, {x, y}) && reader.IconTextHit(cell, {x, y}) != kIconHit) return {x, y};
    ADD_FAILURE() << "nothing reacts in " << row << ", " << column;
    return {};
  }
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
};
