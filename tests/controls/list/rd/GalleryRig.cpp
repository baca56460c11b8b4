#include "GalleryRig.h"

TGalleryRig::TGalleryRig() : List(Gallery.List()) {
  Record();
  List.resize(1300, 650);
  List.show();
  List.activateWindow();
  EXPECT_TRUE(QTest::qWaitForWindowActive(&List));
  List.setFocus();
}

QString TGalleryRig::Name(const TListItem* item) {
  const auto* const row = static_cast<const TkListItem*>(item);
  return row->IsGroupHeader() ? row->Group()->Header()
                              : item->Caption().section(u'\r', 0, 0).section(u' ', 0, 0);
}

void TGalleryRig::Record() {
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

QPoint TGalleryRig::Hot(int row, int column) const {
  const TRdCell cell = Cell(row, column);
  const TRdCellReader reader(List);
  for (int y = cell.Cell.top(); y <= cell.Cell.bottom(); y += 2)
    for (int x = cell.Cell.left(); x <= cell.Cell.right(); x += 2)
      if (reader.InHotArea(cell, {x, y}) && reader.IconTextHit(cell, {x, y}) != kIconHit) return {x, y};
  ADD_FAILURE() << "nothing reacts in " << row << ", " << column;
  return {};
}
