// The list of the program: rows with texts, images and check boxes in a report with columns.
//
//   list.Columns().Add(u"Name"_qs, 200);
//   list.SetOptions({.MultiSelect = true, .CheckBoxes = true});
//   TListItem* item = list.Items().Add();
//   item->SetCaption(name);
//   item->SubItems().Add(size);
//   list.OnSelectItem = [](TListItem* item, bool selected) { ... };
//
// The objectName is the component name. Main thread.
//
// Where to look: a row and its texts are in model/ListItem, the order of rows in model/ListItems, their bits
// in model/RowStates; where things lie is in layout/ListLayout, how they look in painter/RowPainter, what
// mouse and keys do in input/RowInput, scrolling and repainting in RowHost, the header in HeaderBar, what a
// screen reader hears in accessible/. This class hands from one to the other and tells the events of
// ListViewEvents.h in their order.
// For an everyday change: a column is Columns().Add where the form is made, its texts are sub-items; a value
// that rows show goes from TListItem through TRowSource to TRowPainter; a key goes to TRowInput::Key; an
// event to ListViewEvents.h and the one place here that tells it.
#pragma once

#include "controls/list/ListTypes.h"
#include "controls/list/ListViewEvents.h"
#include "controls/list/RowHost.h"
#include "controls/list/accessible/ListAccessible.h"
#include "controls/list/input/RowInput.h"
#include "controls/list/model/ListColumns.h"
#include "controls/list/model/ListItems.h"

// Joins rows, row host and input. Items belong to the list; their Data does not.
class TCustomListView : public TRowHost,
                        public TListViewEvents,
                        protected TListItemsOwner,
                        protected TRowSource {
 public:
  explicit TCustomListView(QWidget* parent = nullptr);
  // Fires OnDeletion for each row.
  ~TCustomListView() override;

  [[nodiscard]] TListItems& Items() { return *FItems; }
  [[nodiscard]] const TListItems& Items() const { return *FItems; }
  [[nodiscard]] TListColumns& Columns() { return *FColumns; }
  [[nodiscard]] const TListColumns& Columns() const { return *FColumns; }
  void Clear() { FItems->Clear(); }

  // The selected row, with several the first of them, or null. Setting selects and focuses the row, in
  // addition to others with MultiSelect; setting null deselects all.
  [[nodiscard]] TListItem* Selected() const;
  void SetSelected(TListItem* item);
  // The index of Selected, -1 for none.
  [[nodiscard]] int ItemIndex() const;
  void SetItemIndex(int index) { SetSelected(FItems->Item(index)); }
  [[nodiscard]] int SelCount() const;
  // The next selected row after the given one, null for none.
  [[nodiscard]] TListItem* GetNextSelected(const TListItem* after) const;
  virtual void DeleteSelected();

  [[nodiscard]] TListItem* ItemFocused() const;
  void SetItemFocused(TListItem* item);

  // The row at the top of the client area, null in an empty list.
  [[nodiscard]] TListItem* TopItem() const;

  // The row at a point of the client area, null beside the rows.
  [[nodiscard]] TListItem* GetItemAt(int x, int y) const;
  [[nodiscard]] TListItem* ItemAtPos(const QPoint& pos) const { return GetItemAt(pos.x(), pos.y()); }
  // The ht bits of what lies there.
  [[nodiscard]] unsigned GetHitTestInfoAt(int x, int y) const;

  // Sorts the rows; selection, focus and check marks stay with their items.
  void CustomSort(const TListItems::TCompare& compare) { FItems->Sort(compare); }
  // By OnCompare or, if it is not set, by the captions in the user's language.
  virtual void AlphaSort();

  // What assistive technology knows of a cell, and what it may do with it: press it as a click would, switch
  // its check box, expand or collapse it. False for what the cell does not offer.
  [[nodiscard]] virtual TCellFacts DescribeCell(int row, int column) const;
  virtual bool ActOnCell(int row, int column, TCellAct act);
  [[nodiscard]] virtual TCellFacts DescribeHeader(int column) const;
  virtual bool ActOnHeader(int column, TCellAct act);
  // What is said of a column with a SortState.
  void SetSortTexts(const TSortTexts& texts) { FSortTexts = texts; }
  // The column that the keys act on.
  [[nodiscard]] virtual int FocusedColumn() const { return 0; }

  // Shown when the mouse rests on the list, with ShowHint on. A cell whose text is cut shows that instead.
  [[nodiscard]] const QString& Hint() const { return FHint; }
  void SetHint(const QString& hint) { FHint = hint; }

 protected:
  // For lists with rows and columns of classes of their own: in their constructors, before any row exists,
  // and with the plain classes in their destructors, after the last row has gone.
  void ReplaceCollections(std::unique_ptr<TListItems> items, std::unique_ptr<TListColumns> columns);

  // TListItemsOwner
  [[nodiscard]] std::unique_ptr<TListItem> CreateListItem(TListItems& items) override;
  [[nodiscard]] TRowStates& RowStates() override { return States(); }
  [[nodiscard]] const TListLifePtr& Life() const override { return EventLife(); }
  void ItemChanged(TListItem& item, TItemChange change) override;
  void ItemDeleting(TListItem& item) override;
  void ItemGone(TListItem& item) override { FInput.Forget(item); }
  void RowsChanged() override;
  void UpdatingChanged(bool updating) override;
  void ScrollToItem(TListItem& item, bool partialOk) override;

  // TRowSource
  [[nodiscard]] const TListColumns& RowColumns() const override { return *FColumns; }
  [[nodiscard]] QString CellText(int row, int column) const override;
  [[nodiscard]] int CellImage(int row, int column) const override;
  [[nodiscard]] int StateImage(int row) const override;

  // The check bit of a row has changed.
  virtual void CheckChanged(TListItem& item);
  void SelectOnly(TListItem& item) { FInput.SelectOnly(item); }
  // The button is up, though its release never came.
  void LosePress() { FInput.LosePress(); }
  // What a press does to the rows, before OnMouseDown. True if it was on a check box.
  virtual bool PressRows(const QPoint& pos, Qt::MouseButton button, Qt::KeyboardModifiers shift);
  bool PressRow(const THit& hit, Qt::MouseButton button, Qt::KeyboardModifiers shift);
  // What a key does after OnKeyDown. False for a key that does nothing.
  virtual bool DoKey(int key, const QKeyEvent& event);
  // The text of the cell at a point if the cell does not show all of it.
  [[nodiscard]] virtual QString CutText(const QPoint& pos) const;

  // TRowInputHost
  [[nodiscard]] TListItems& InputItems() override { return *FItems; }

  // TRowHost
  void RowStateChanged(int row, unsigned before, unsigned after) override;
  void HeaderClicked(int column) override;
  void ColumnCountChanged() override { TellRowsChanged(*this); }

  // The mouse and the keys.
  bool viewportEvent(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;

 private:
  void Press(QMouseEvent& event, bool second);
  bool ClickHeaderByKey(int key, Qt::KeyboardModifiers shift);
  bool ContextPopup(const QPoint& pos);
  void ShowTip(const QPoint& pos, const QPoint& globalPos);

  // Never null between constructor and destructor. The input holds rows by pointer and hears of each that
  // goes (ItemGone).
  std::unique_ptr<TListColumns> FColumns;
  std::unique_ptr<TListItems> FItems;
  TRowInput FInput;
  QString FHint;
  TSortTexts FSortTexts;
};

// The plain face: a list as forms place it.
class TListView : public TCustomListView {
 public:
  using TCustomListView::TCustomListView;
};
