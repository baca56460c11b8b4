// The gallery's list in a real window, with a record of its events in order. Rows by their first word:
//   0 Media (group), 1 Picture, 2 Recorder, 3 Film, 4 Office (group), 5 Tables, 6 Letter, 7 Page,
//   8 Tools (group), 9 Archive (disabled), 10 Terminal, 11 Night
#pragma once

#include "GalleryList.h"
#include "controls/list/ListRig.h"

class TGalleryRig : public TListRig {
 protected:
  TGalleryRig() : List(Gallery.List()) {
    ShowAndRecord({1300, 650});
    Record();
  }

  [[nodiscard]] TCustomListView& Shown() override { return List; }
  [[nodiscard]] QString NameOf(const TListItem& item) const override {
    const auto& row = static_cast<const TkListItem&>(item);
    return row.IsGroupHeader() ? row.Group()->Header()
                               : item.Caption().section(u'\r', 0, 0).section(u' ', 0, 0);
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
  void MoveTo(QPoint pos, Qt::MouseButtons held = {}, quint64 tick = 0) {
    TListRig::MoveTo(*List.viewport(), pos, held, tick);
  }
  void ClickHeader(int x) { QTest::mouseClick(Header(), Qt::LeftButton, {}, {x, 10}); }
  [[nodiscard]] int Middle(int column) const { return List.Layout().SectionRect(column, 1).center().x(); }

  TGalleryList Gallery;
  TRdListView& List;

 private:
  void Record() {
    const auto cell = [this](const char16_t* event) {
      return [this, event](const TListItem* item, int column) {
        Log << QString::fromUtf16(event) + u' ' + NameOf(*item) + u' ' + QString::number(column);
      };
    };
    List.OnButtonClick = cell(u"button");
    List.OnLabelClick = cell(u"label");
    List.OnIconLabelClick = cell(u"iconlabel");
    List.OnLabelIconClick = cell(u"icon");
    List.OnStarCaptionClick = cell(u"star");
    List.OnItemCheckBoxClick = [this](TListItem* item) { Log << u"box "_qs + NameOf(*item); };
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
      Log << u"drop %1 %2"_qs.arg(NameOf(*item)).arg(index);
    };
    List.OnColumnComboBoxChange = [this](TListItem* item, int, int index) {
      Log << u"choose %1 %2"_qs.arg(NameOf(*item)).arg(index);
    };
    List.OnColumnClick = [this](TListColumn* column) {
      const TRdListState& state = List.MouseState();
      Log << u"column %1 %2"_qs.arg(column->Index())
                 .arg(state.SortColumn != nullptr ? state.SortState : ssNone);
    };
    List.OnWriteLog = [this](const QString& text) { Log << text; };
  }
};
