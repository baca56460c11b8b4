// The plain list in a window.
#pragma once

#include "ListRig.h"

class TShownList : public TListRig {
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
    ShowAndRecord({300, 200});
    List.OnDeletion = [this](TListItem* item) { Log << u"deletion "_qs + NameOf(*item); };
    List.OnColumnClick = [this](TListColumn* column) { Log << u"column %1"_qs.arg(column->Index()); };
    List.OnContextPopup = [this](const QPoint&, bool& handled) {
      handled = true;
      Log << u"popup"_qs;
    };
  }

  [[nodiscard]] TCustomListView& Shown() override { return List; }
  [[nodiscard]] QString NameOf(const TListItem& item) const override { return item.Caption().mid(4); }
  [[nodiscard]] QPoint TextOf(int row) const { return List.Layout().CellParts(row, 0).Text.center(); }
  [[nodiscard]] QPoint BoxOf(int row) const { return List.Layout().CellParts(row, 0).CheckBox.center(); }
  [[nodiscard]] QPoint Blank() const { return List.viewport()->rect().bottomRight() - QPoint(3, 3); }

  TListView List;
};
