// The list of the gallery: a column for each kind of cell, rows in three groups. The tests play on it too.
// Main thread.
#pragma once

#include "controls/list/rd/RdListView.h"
#include "controls/picture/ImageList.h"

// The columns in their order.
enum TGalleryColumn {
  kNameColumn,
  kButtonColumn,
  kLabelColumn,
  kProgressColumn,
  kStarColumn,
  kEditColumn,
  kComboColumn,
  kCheckColumn,
  kTextColumn,
};

class TGalleryList {
 public:
  explicit TGalleryList(QWidget* parent = nullptr);

  [[nodiscard]] TRdListView& List() { return FList; }

 private:
  void AddColumns();
  void AddGroups();
  void AddRows();

  // They outlive the list.
  TImageList FIcons{{32, 32}};
  TImageList FGroupIcons{{16, 16}};
  TImageList FArrows{{16, 16}};
  TRdListView FList;
};
