// A row of a TRdListView, or the header row of a group. Owned by its TkListItems; main thread.
#pragma once

#include "controls/list/model/ListItem.h"
#include "controls/list/rd/model/RdListColumn.h"
#include "controls/skin/Colors.h"

#include <memory>

class TkListGroup;
class TkListItems;
class TkListModel;

// A list has many of these, so what few rows need stands in a block of its own. A row is shown, that is, it
// has an index, or it is hidden: out of the row host, but still of the list.
//
// Its life: entered in AllItems, placed in the list, hidden and shown again as often as one likes, told of
// its deletion, gone, freed. Between being entered and being placed it has neither an index nor is it hidden.
class TkListItem : public TListItem {
 public:
  explicit TkListItem(TkListItems& owner);
  ~TkListItem() override;

  [[nodiscard]] TkListItems& OwnerItems() const;
  [[nodiscard]] TkListModel& Model() const;

  // -1 for a hidden row. Inside an update bracket a binary search if rows have come or gone.
  [[nodiscard]] int Index() const override;

  // Creation number, unique in the list.
  [[nodiscard]] int Serial() const { return FSerial; }
  [[nodiscard]] bool IsGroupHeader() const { return FIsGroupHeader; }

  // A disabled row's buttons and labels neither react nor take hover.
  [[nodiscard]] bool Enabled() const { return FEnabled; }
  void SetEnabled(bool enabled);

  // clNone, clDefault, 1 and -16777215 mean no override.
  [[nodiscard]] TColor BackColor() const;
  [[nodiscard]] bool HasBackColor() const;
  void SetBackColor(TColor color);

  [[nodiscard]] int OverlayIndex() const;
  void SetOverlayIndex(int index);

  // The types that cells of this row have in place of their columns', null if there are none. Name is the
  // column index, value the number of the type.
  [[nodiscard]] const TStringValueList* ColumnTypes() const;
  [[nodiscard]] TStringValueList& MakeColumnTypes();
  void DropColumnTypes();

  // The group as a position in Groups; a position that no group has, as -1, is no group. Setting it moves
  // the row to its group: behind its last row, or into its hidden rows if it is collapsed.
  [[nodiscard]] int GroupID() const { return FGroupID; }
  void SetGroupID(int groupID);
  [[nodiscard]] TkListGroup* Group() const { return FGroup; }

  // The state of a hidden row counts as well; setting it fires no event of the host.
  [[nodiscard]] bool Checked() const override { return FCheckedState; }
  void SetChecked(bool checked) override;
  // How often a change of the check was reported.
  [[nodiscard]] int CheckChangeCount() const { return FCheckChangeCount; }

  // A check box cell: any text is checked. Column 0, and a column that the row does not have, reads false and
  // is not written.
  [[nodiscard]] bool SubItemChecked(int column) const;
  void SetSubItemChecked(int column, bool checked);

  // Takes the row out of the row host, and back to a place there; its group keeps it. Without a place a row
  // of a group comes behind its group's last row, any other to where it was.
  [[nodiscard]] bool Hidden() const { return FHidden; }
  [[nodiscard]] int HiddenIndex() const;
  void Hide(int index = -1);
  void Show(int index = -1);

  // The row becomes row newIndex, at most the last one. Both do nothing for a hidden row.
  void MoveTo(int newIndex);
  void ExchangeWith(int index);

  // A hidden row can be deleted as well.
  void Delete() override;

  // Stamp in the hidden rows of the group.
  [[nodiscard]] int GroupOrder() const { return FGroupOrder; }

 private:
  friend class TkItemQuickList;
  friend class TkRowNumbers;
  friend class TkListItems;
  friend class TkListModel;
  friend class TkGroupPlacing;
  friend class TkCheckBook;
  struct TExtras;
  [[nodiscard]] TExtras& Extras();

  int FSerial;
  int FSameIndexOrder = 0;  // tie-break among rows with one cached index; the former row of a hidden one
  int FGroupID = -1;
  int FCheckChangeCount = 0;
  int FGroupOrder = 0;
  bool FLeaves : 1 = false;            // its removal is under way
  bool FCheckPropagating : 1 = false;  // a header whose check goes to the members
  bool FEnabled : 1 = true;
  bool FIsGroupHeader : 1 = false;
  bool FHidden : 1 = false;
  bool FCheckedState : 1 = false;
  TkListGroup* FGroup = nullptr;
  std::unique_ptr<TExtras> FExtras;
};
