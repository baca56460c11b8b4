// The columns of a TRdListView: a type for their cells, fonts, icons and events of their own. Main thread.
#pragma once

#include "controls/list/model/ListColumns.h"
#include "controls/list/rd/model/RdColumnTypes.h"
#include "controls/picture/ImageList.h"

#include <QFont>
#include <QStringList>

class TkListItem;
class TkListColumns;

using TOnEditChange = std::function<void(TkListItem* item, int columnIndex)>;
using TOnComboBoxChange = std::function<void(TkListItem* item, int columnIndex, int comboBoxIndex)>;

class TkListColumn : public TListColumn {
 public:
  explicit TkListColumn(TkListColumns& owner);

  TOnEditChange OnColumnEditChange;
  TOnComboBoxChange OnColumnComboBoxDropDown;
  TOnComboBoxChange OnColumnComboBoxChange;

  // A click on the header cell sorts.
  bool AutoClickSort = true;
  // The choices of an ltComboBox column.
  QStringList ComboBoxItems;

  // How the cells are drawn and hit, where neither row nor cell says otherwise.
  [[nodiscard]] TListColumnType ColumnType() const { return FColumnType; }
  void SetColumnType(TListColumnType type);

  // Fonts of the cells and of the header cell. They are the list's as long as ParentFont is set; setting one
  // clears it.
  [[nodiscard]] const QFont& ColumnFont() const { return FColumnFont; }
  void SetColumnFont(const QFont& font);
  [[nodiscard]] const QFont& ColumnHeaderFont() const { return FColumnHeaderFont; }
  void SetColumnHeaderFont(const QFont& font);
  [[nodiscard]] bool ParentFont() const { return FParentFont; }
  void SetParentFont(bool parent);

  // The user cannot drag the divider.
  [[nodiscard]] bool FixedWidth() const { return FFixedWidth; }
  void SetFixedWidth(bool fixed);
  [[nodiscard]] bool Resizable() const override { return !FFixedWidth; }

  // Shares the width that the others leave.
  [[nodiscard]] bool AutoSize() const { return FAutoSize; }
  void SetAutoSize(bool autoSize);

  // Icons of this column; null means the list's. Not owned: a freed image list is forgotten.
  [[nodiscard]] TImageList* IconImgList() const { return FIcons.Images(); }
  void SetIconImgList(TImageList* images);

 private:
  friend class TkListColumns;
  template <typename T>
  void SetField(T& field, const T& value);
  void TakeListFont(const QFont& font);

  QFont FColumnFont;
  QFont FColumnHeaderFont;
  TImageListLink FIcons{[this] { Changed(); }};
  TListColumnType FColumnType = ltNone;
  bool FParentFont = true;
  bool FFixedWidth = false;
  bool FAutoSize = false;
};

class TkListColumns : public TListColumns {
 public:
  [[nodiscard]] TkListColumn& operator[](int index) const;
  TkListColumn& Add() { return static_cast<TkListColumn&>(TListColumns::Add()); }

  // The font of the list, which the columns with ParentFont take.
  [[nodiscard]] const QFont& ListFont() const { return FListFont; }
  void SetListFont(const QFont& font);

 protected:
  [[nodiscard]] std::unique_ptr<TListColumn> CreateColumn() override;

 private:
  QFont FListFont;
};
