#include "ShownList.h"

void TShownList::Show(const TListViewOptions& options, int rows) {
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

void TShownList::Record() {
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
