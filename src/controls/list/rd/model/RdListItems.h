// The rows of a TRdListView in their order: adding, deleting, moving, sorting, update brackets with a count.
// Main thread.
//
// Who counts what: Count and Index are about shown rows, header rows among them; Model().AllItems() has the
// hidden ones too. The row host counts shown rows and, in an open bracket with a count, the room that the
// bracket holds behind them.
#pragma once

#include "controls/list/model/ListItems.h"
#include "controls/list/rd/model/RdListItem.h"
#include "controls/list/rd/model/RdRowOrder.h"

#include <span>

class TkListGroup;

// The modes of the control. It changes them as they are set; the model only reads them.
struct TkListState {
  bool CheckBoxes = false;
  bool OpenGroupDraw = false;  // group rows exist
  bool GroupCanExpand = true;  // false: no group may be collapsed
};

// What the model reads of its control, and what it tells it. The row states and the life of rows go through
// TListItemsOwner; this is the rest.
class TkListOwner {
 public:
  virtual ~TkListOwner() = default;

  [[nodiscard]] virtual const TkListState& ListState() const = 0;

  // The row below the last one of the page: top index plus count per page.
  [[nodiscard]] virtual int EndOfPage() const = 0;
  [[nodiscard]] virtual int HorzScrollPos() const = 0;
  virtual void ScrollToHorz(int pos) = 0;

  // Not called in an update bracket.
  virtual void RedrawRow(TkListItem& item) = 0;
  virtual void RedrawList() = 0;
  // Rows and bars are laid out anew; comes at the end of the outermost bracket, after RowsChanged.
  virtual void Realign() = 0;

  // Hover, press and editors are dropped, as all rows go.
  virtual void ResetMouseState() = 0;
  // A check is set by the program: a click that the control was about to refuse is forgotten.
  virtual void ForgetBoxClick() = 0;
  // OnCompare as a comparison, empty if it is not assigned.
  [[nodiscard]] virtual TListItems::TCompare RowCompare() = 0;
  // The other events. False: the list itself is gone.
  [[nodiscard]] virtual bool DoItemChecked(TkListItem& item) = 0;
  // GroupShowHide; showState comes with the wanted state and goes with what the handler left.
  [[nodiscard]] virtual bool DoGroupShowHide(TkListGroup& group, bool& showState) = 0;
  [[nodiscard]] virtual bool DoSubItemChecking(TkListItem& item, int column, bool& checked) = 0;
  [[nodiscard]] virtual bool DoSubItemChecked(TkListItem& item, int column, bool& checked) = 0;
};

class TkListModel;

// Owns the shown rows and the hidden ones.
class TkListItems : public TListItems {
 public:
  TkListItems(TListItemsOwner& rows, TkListOwner& owner);
  // Destroys the rows without a word; the control calls Clear first, while its handlers still stand.
  ~TkListItems() override;

  [[nodiscard]] TkListModel& Model() const { return *FModel; }

  // A new row behind the last row of its group, or at the end. Null if a handler deletes it at once.
  TkListItem* Add(int groupID = -1);
  TkListItem* Insert(int index);
  // An index below 0 is the end. Throws EListError for a row that is no TkListItem, which is then destroyed.
  TkListItem* AddItem(std::unique_ptr<TListItem> item, int index = -1) override;
  void Delete(int index) override;
  // Hidden rows may be among them. Each is deselected, then OnDeletion comes, but not for header rows. The
  // last row of a group takes the header row with it.
  void DeleteRows(const std::vector<TListItem*>& rows) override;
  // All rows, the hidden ones too; OnDeletion for each but header rows. Rows that handlers add stay.
  void Clear() override;

  [[nodiscard]] TkListItem* Item(int index) const;
  [[nodiscard]] TkListItem* operator[](int index) const;
  // All of them as they stand now, for a loop whose steps may change the list.
  [[nodiscard]] std::vector<TkListItem*> ShownRows() const;

  // countDelta: how many rows the bracket is about to add. The row host has room for them at once and gives
  // back at the end what was not used. Below 0, that rows will be removed: their room goes at the end. Both
  // give true at the outermost level. A surplus EndUpdate throws EListError.
  bool BeginUpdate() override { return BeginUpdate(0); }
  bool BeginUpdate(int countDelta);
  bool EndUpdate() override;

  // Sorts within groups, the hidden rows of collapsed groups as well: rows without group, then group by
  // group, each behind its header row. An empty comparison does nothing.
  void Sort(const TCompare& compare) override;
  // The same by the texts of a column (without their type prefix), gathered once; a sort of many rows that
  // looks for each text at each comparison spends most of its time with that.
  using TTextOrder = int (*)(QStringView a, QStringView b);
  void SortByText(int column, TTextOrder order, bool descending = false);

  // Copies of the rows of another list take the place of all rows. No OnDeletion comes.
  void Assign(const TListItems& source);

 private:
  friend class TkGroupPlacing;
  friend class TkListItem;
  friend class TkListModel;

  [[nodiscard]] TkListItem* Row(size_t index) const { return static_cast<TkListItem*>(FRows[index]); }
  [[nodiscard]] int IndexOfRow(const TkListItem& item) const { return FNumbers.IndexOf(item); }

  // Rows come to a valid place, or leave theirs and are hidden; the row host follows. Tell comes after.
  void Place(std::span<TkListItem* const> items, int index);
  void TakeOut(TkListItem& item, int hiddenIndex);
  void TakeOut(const std::vector<int>& ascending);
  void Shift(int from, int to);
  void Exchange(int a, int b);
  void Tell() { NoteRowsChanged(); }

  void Arrived(TkListItem& item, int index);
  // Both come after the change of Rows.
  void HostInsert(int index, int count);
  void HostRemove(const std::vector<int>& ascending);
  void MoveFocusToRows();
  void CopyRow(const TListItem& source);
  [[nodiscard]] const TListLifePtr& Life() const { return Owner().Life(); }
  void TellDeletions(const std::vector<TListItem*>& rows, bool deselect);
  using TOrder = std::function<void(std::vector<TListItem*>& rows, const TCompare& compare)>;
  void SortRows(const TCompare& asked, const TOrder& sortShown);

  // Made by the rows as they come into being.
  [[nodiscard]] int NextSerial() { return FSerialCounter++; }

  TkListOwner& FOwner;
  TkRowNumbers FNumbers{FRows};
  TkGroupOrder FGroupOrder{FRows};
  // Rows of the host behind ours that an open bracket with a count holds, innermost last.
  // Rows that come take of it, rows that go give to it, so that adding the announced rows at the end moves no
  // bits.
  std::vector<int> FUpdateStack;
  int FSerialCounter = 0;
  int FSavedHorzPos = -1;
  std::unique_ptr<TkListModel> FModel;
};
