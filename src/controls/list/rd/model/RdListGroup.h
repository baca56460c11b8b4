// The groups of a TRdListView, and the sorted row lists that they and the model keep. A group is known by its
// position, which is its GroupID. Main thread.
#pragma once

#include "controls/list/model/ListColumns.h"
#include "controls/list/rd/model/RdListColumn.h"

#include <QString>

#include <functional>
#include <memory>
#include <vector>

class TkListGroups;
class TkListItem;
class TkListModel;

// -1, 0 or 1 as the first row comes before, with or after the second.
using TkItemOrder = int (*)(const TkListItem& a, const TkListItem& b);
[[nodiscard]] int BySerial(const TkListItem& a, const TkListItem& b);
[[nodiscard]] int ByGroupOrder(const TkListItem& a, const TkListItem& b);

// A sorted list of rows that finds a row by binary search. It owns none of them.
// Rows in it must not change what they are sorted by, but for Restamp, which does so for all at once.
class TkItemQuickList {
 public:
  // In stamping mode each added row gets the next GroupOrder stamp, so that it goes to the end.
  explicit TkItemQuickList(TkItemOrder compare = &BySerial, bool stamping = false)
      : FCompare(compare), FStamping(stamping) {}

  // False if the row stands in the list already.
  bool Add(TkListItem& item);
  // The place that the row had, -1 if it was not in the list.
  int Remove(const TkListItem& item);
  // Several at once, in one pass.
  template <typename Is>
  void RemoveAll(const Is& is) {
    std::erase_if(FList, is);
  }
  void Clear() { FList.clear(); }
  void Reserve(int count) { FList.reserve(static_cast<size_t>(count)); }

  [[nodiscard]] int IndexOf(const TkListItem& item) const;
  [[nodiscard]] bool Contains(const TkListItem& item) const { return IndexOf(item) >= 0; }
  [[nodiscard]] int Count() const { return static_cast<int>(FList.size()); }
  [[nodiscard]] TkListItem* operator[](int index) const { return FList[static_cast<size_t>(index)]; }
  [[nodiscard]] auto begin() const { return FList.begin(); }
  [[nodiscard]] auto end() const { return FList.end(); }

  // Gives a stamping list another order by new stamps. Rows that have left the list meanwhile are passed
  // over, rows that have come stay last.
  void Restamp(const std::vector<TkListItem*>& order);

 private:
  struct TPlace {
    size_t Index;
    bool Found;
  };
  [[nodiscard]] TPlace Find(const TkListItem& item) const;
  [[nodiscard]] int NextStamp();

  std::vector<TkListItem*> FList;
  TkItemOrder FCompare;
  bool FStamping;
  int FStampCounter = 0;
};

// Owned by its TkListGroups; owns no row. A header row stands for it where groups are drawn.
class TkListGroup {
 public:
  TkListGroup(TkListGroups& owner, int groupID) : FOwner(owner), FGroupID(groupID) {}
  TkListGroup(const TkListGroup&) = delete;
  TkListGroup& operator=(const TkListGroup&) = delete;

  [[nodiscard]] TkListModel& Model() const;
  // -1 for a group that is gone.
  [[nodiscard]] int GroupID() const { return FGroupID; }
  // The group was deleted and is kept only until the event at hand has been told.
  [[nodiscard]] bool Gone() const { return FGroupID < 0; }

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
  template <typename T>
  void Set(T& field, const T& value) {
    if (field == value) return;
    field = value;
    Redraw();
  }
  void Redraw();

  TkListGroups& FOwner;
  int FGroupID;
  QString FHeader;
  TAlignment FHeaderAlign = TAlignment::LeftJustify;
  TkGroupBtnAlign FGroupExpandBtnAlign = tkgRight;
  int FTitleImage = -1;
  int FExtendedImage = -1;
  bool FGroupHeadCheckbox = true;
  bool FGroupCheckboxes = true;
  // Both say that the rows are out of the list; they are set together, and Collapsed asks for either.
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

  // Rows that ask for its id already join it.
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
