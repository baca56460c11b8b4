// The groups of a TRdListView. A group is known by its position, which is its GroupID. Main thread.
#pragma once

#include "controls/list/model/ListColumns.h"
#include "controls/list/rd/model/ItemQuickList.h"
#include "controls/list/rd/model/RdListTypes.h"

#include <QString>

#include <memory>
#include <vector>

class TkListGroups;
class TkListItem;
class TkListModel;

// Owned by its TkListGroups; owns no row. A header row stands for it where groups are drawn.
class TkListGroup {
 public:
  TkListGroup(TkListGroups& owner, int groupID) : FOwner(owner), FGroupID(groupID) {}
  TkListGroup(const TkListGroup&) = delete;
  TkListGroup& operator=(const TkListGroup&) = delete;

  [[nodiscard]] TkListModel& Model() const;
  [[nodiscard]] int GroupID() const { return FGroupID; }

  [[nodiscard]] const QString& Header() const { return FHeader; }
  void SetHeader(const QString& header) { Set(FHeader, header); }
  [[nodiscard]] TAlignment HeaderAlign() const { return FHeaderAlign; }
  void SetHeaderAlign(TAlignment align) { Set(FHeaderAlign, align); }
  // Places in the list's images of groups; -1 is none.
  [[nodiscard]] int TitleImage() const { return FTitleImage; }
  void SetTitleImage(int index) { Set(FTitleImage, index); }
  [[nodiscard]] int ExtendedImage() const { return FExtendedImage; }
  void SetExtendedImage(int index) { Set(FExtendedImage, index); }
  [[nodiscard]] TkGroupBtnAlign GroupExpandBtnAlign() const { return FGroupExpandBtnAlign; }
  void SetGroupExpandBtnAlign(TkGroupBtnAlign align) { Set(FGroupExpandBtnAlign, align); }

  // The header row, and the rows, have check boxes.
  [[nodiscard]] bool GroupHeadCheckbox() const { return FGroupHeadCheckbox; }
  void SetGroupHeadCheckbox(bool box) { Set(FGroupHeadCheckbox, box); }
  [[nodiscard]] bool GroupCheckboxes() const { return FGroupCheckboxes; }
  void SetGroupCheckboxes(bool boxes);

  // Setting it expands or collapses the group, unless a GroupShowHide handler has it otherwise.
  [[nodiscard]] bool GroupExpand() const { return FGroupExpand; }
  void SetGroupExpand(bool expand);
  [[nodiscard]] bool Collapsed() const { return FCollapsed || !FGroupExpand; }

  // The header's box. Setting it checks or unchecks the header and with it the rows; without a header row
  // the value is only stored.
  [[nodiscard]] bool GroupChecked() const { return FGroupChecked; }
  void SetGroupChecked(bool checked);
  [[nodiscard]] int CheckedCount() const { return FCheckedCount; }

  [[nodiscard]] TkListItem* HeaderItem() const { return FHeaderItem; }
  // All rows of the group, by Serial, and those that its collapse has hidden, in their order.
  [[nodiscard]] const TkItemQuickList& Items() const { return FItems; }
  [[nodiscard]] const TkItemQuickList& HiddenItems() const { return FHiddenItems; }

 private:
  friend class TkListGroups;
  friend class TkListItems;
  friend class TkGroupPlacing;
  friend class TkCheckBook;
  friend class TkListModel;
  friend class TkStoredRows;
  template <typename T>
  void Set(T& field, const T& value) {
    if (field == value) return;
    field = value;
    Redraw();
  }
  void Redraw();
  // All rows are gone.
  void Forget();

  TkListGroups& FOwner;
  int FGroupID;
  QString FHeader;
  TAlignment FHeaderAlign = TAlignment::LeftJustify;
  TkGroupBtnAlign FGroupExpandBtnAlign = tkgRight;
  int FTitleImage = -1;
  int FExtendedImage = -1;
  bool FGroupHeadCheckbox = true;
  bool FGroupCheckboxes = true;
  bool FCollapsed = false;
  bool FGroupExpand = true;
  bool FCheckPropagating = false;
  bool FGroupChecked = false;
  int FCheckedCount = 0;
  int FShownCount = 0;  // members that have an index
  TkListItem* FHeaderItem = nullptr;
  TkItemQuickList FItems;
  TkItemQuickList FHiddenItems{&ByGroupOrder, true};
};

class TkListGroups {
 public:
  explicit TkListGroups(TkListModel& model) : FModel(model) {}
  TkListGroups(const TkListGroups&) = delete;
  TkListGroups& operator=(const TkListGroups&) = delete;

  [[nodiscard]] TkListModel& Model() const { return FModel; }

  TkListGroup& Add(const QString& header = {});
  // The rows of the group stay, shown and without group; later groups and their rows move up by one id.
  void Delete(int index);
  void Clear();

  [[nodiscard]] int Count() const { return static_cast<int>(FGroups.size()); }
  // Throws EListError out of range; Find gives null there.
  [[nodiscard]] TkListGroup& operator[](int index) const;
  [[nodiscard]] TkListGroup* Find(int groupID) const;

  [[nodiscard]] auto begin() const { return FGroups.begin(); }
  [[nodiscard]] auto end() const { return FGroups.end(); }

 private:
  TkListModel& FModel;
  std::vector<std::unique_ptr<TkListGroup>> FGroups;
};
