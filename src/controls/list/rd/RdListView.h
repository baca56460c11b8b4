// The list with cells of many kinds, groups, skins, editors and bars of its own look.
//
//   list.AllSkinItem().ItemHeight = 32;
//   list.SetOpenOwnerDraw(true);
//   list.Columns().Add(u"Name"_qs, 200);
//   list.Columns()[0].SetColumnType(ltIconCaption);
//   TkListItem* row = list.Items().Add(groupID);
//   row->SetCaption(name);
//
// The header is always drawn by the header skin. Rows and cells are, with OpenOwnerDraw; otherwise they look
// and react as on any list, and all cells show their texts. With OpenGroupDraw too, groups have header rows.
// What the keys do stands in input/RdCellKeys.h, the order of events in RdListEvents.h. Main thread.
//
// Each gesture goes to the part that knows it, and each part owns what it remembers: rows and cells under the
// mouse to FMouse, keys to FKeys, editing to FEditors, the header to FHeaderPart, scroll bars to FBars, tips
// to FTip; what none of them takes goes on to the plain list. Rows, groups and checks are in model/.
// For an everyday change: a skin part is a field in skin/RdSkinValues.h, a property in skin/RdSkins.h and its
// use in layout/ or painter/. A cell type is a word of TListColumnType (model/RdListColumn.h), a case of
// PaintContent (painter/RdCellPainter.cpp), of InHotArea and TextCut (RdCellReader.cpp), of press, release
// and Act (input/RdCellMouse.cpp), and its kind for a screen reader in DescribeCell.
#pragma once

#include "controls/list/ListView.h"
#include "controls/list/rd/RdBars.h"
#include "controls/list/rd/RdHeader.h"
#include "controls/list/rd/RdListState.h"
#include "controls/list/rd/RdRowsPainter.h"
#include "controls/list/rd/RdTip.h"
#include "controls/list/rd/editors/RdEditors.h"
#include "controls/list/rd/input/RdCellKeys.h"
#include "controls/list/rd/input/RdCellMouse.h"
#include "controls/list/rd/model/RdListModel.h"
#include "controls/list/rd/painter/RdHeaderPainter.h"
#include "controls/list/rd/skin/RdSkins.h"

#include <memory>

// What a list shows beside its options; a value, handed over as a whole. Image lists are not owned; a freed
// one is forgotten.
struct TRdListProperties {
  bool CheckBoxOnColumnHeader = false;  // a box for all rows in the first header cell
  bool ShowToolTip = true;              // tips of cells that show only part of their text
  TColor FrameColor = clNone;           // of a frame of one pixel in place of the border
  TImageList* SortImage = nullptr;      // the sort arrows: up, down
  TImageList* IconImgList = nullptr;    // icons of the cells of columns without a list of their own
  TImageList* GroupImages = nullptr;    // title images of groups
};

class TRdListView : public TCustomListView, public TRdListEvents, private TkListOwner, private TSkinOwner {
 public:
  explicit TRdListView(QWidget* parent = nullptr);
  ~TRdListView() override;

  [[nodiscard]] TkListItems& Items() const;
  [[nodiscard]] TkListColumns& Columns() const;
  [[nodiscard]] TkListModel& Model() const { return Items().Model(); }
  [[nodiscard]] TkListGroups& Groups() const { return Model().Groups(); }

  void SetOptions(const TListViewOptions& options) override;
  [[nodiscard]] const TRdListProperties& Properties() const { return FProperties; }
  void SetProperties(const TRdListProperties& properties);

  // Rows and cells are drawn here. Setting it also sets RowSelect and ReadOnly.
  [[nodiscard]] bool OpenOwnerDraw() const { return FOpenOwnerDraw; }
  void SetOpenOwnerDraw(bool open);
  [[nodiscard]] bool OpenGroupDraw() const { return FListState.OpenGroupDraw; }
  void SetOpenGroupDraw(bool open);

  [[nodiscard]] const TListSkin& Skin() const { return FSkin; }
  [[nodiscard]] TkLVSkinItem& AllSkinItem() { return *FSkinItem; }
  [[nodiscard]] TkLVSkinGroup& AllSkinGroup() { return *FSkinGroup; }
  [[nodiscard]] TkLVSkinHeader& AllSkinHeader() { return *FSkinHeader; }
  [[nodiscard]] TRdScrollBarImages& AllSkinVertScroll() { return FBars->VertBar().AllSkinImage(); }
  [[nodiscard]] TRdScrollBarImages& AllSkinHorzScroll() { return FBars->HorzBar().AllSkinImage(); }

  // The state of the box in the header.
  [[nodiscard]] bool CheckAll() const { return Model().Checks().CheckAll(); }
  // The column with the sort arrow, -1 for none, and the way it points.
  [[nodiscard]] int SortColumnIndex() const;
  void SetSort(int column, TSortState state) { FHeaderPart.SetSort(column, state); }

  // Which scroll bars show.
  [[nodiscard]] TRdBars& Bars() { return *FBars; }
  [[nodiscard]] TRdEditors& Editors() { return *FEditors; }
  // Writes the editor's text to its cell and hides it. Throws EListError if the row has no such cell.
  void HideEditors() { FEditors->Hide(); }

  // The row at a point of the client area with its place, null and -1 for none.
  using TCustomListView::GetItemAt;
  TkListItem* GetItemAt(int x, int y, int& index, int& column) const;
  // Redraws a row or, with a column, one cell; nothing in a batch or without OpenOwnerDraw. onlyHover: not if
  // the row has no look of its own for the mouse.
  void RepaintCell(TkListItem& item, int column, bool onlyHover = false);

  // What mouse, editors and header are at; RowMouse is the mouse's part alone.
  [[nodiscard]] TRdListState MouseState() const;
  [[nodiscard]] const TRdMouseState& RowMouse() const { return FMouse.State(); }
  // The column of the cell cursor, -1 as long as it was not moved.
  [[nodiscard]] int CursorColumn() const { return FKeys.CursorColumn(); }

  [[nodiscard]] THit HitTest(const QPoint& pos) const override;
  // The text of a cell that the host has drawn cut.
  [[nodiscard]] QString HostCutText(const QPoint& pos) const { return TCustomListView::CutText(pos); }

  void AlphaSort() override { Model().AlphaSort(); }
  void DeleteSelected() override { Model().DeleteSelected(); }

 protected:
  // TListItemsOwner and TRowSource
  [[nodiscard]] std::unique_ptr<TListItem> CreateListItem(TListItems& items) override;
  void ItemChanged(TListItem& item, TItemChange change) override;
  void ItemGone(TListItem& item) override;
  void RowsChanged() override;
  [[nodiscard]] QString CellText(int row, int column) const override;
  [[nodiscard]] int CellImage(int row, int column) const override;

  // TRowHost and TCustomListView
  [[nodiscard]] TCellFacts DescribeCell(int row, int column) const override;
  bool ActOnCell(int row, int column, TCellAct act) override;
  [[nodiscard]] TCellFacts DescribeHeader(int column) const override;
  bool ActOnHeader(int column, TCellAct act) override;
  [[nodiscard]] int FocusedColumn() const override { return std::max(0, CursorColumn()); }
  [[nodiscard]] int RowHeight() const override;
  void PaintRows(QPainter& painter, const QRegion& region) override;
  bool PaintHeader(QPainter& painter, QWidget& header) override;
  bool HeaderMouse(const QMouseEvent& event, bool atDivider) override;
  [[nodiscard]] bool HeaderFitsColumns() const override { return false; }
  void HeaderClicked(int column) override;
  void ColumnCountChanged() override;
  [[nodiscard]] QMargins BarMargins() const override;
  [[nodiscard]] bool BarsPlaced() const;
  [[nodiscard]] bool BarCrossesHeader() const override { return FSkin.Header.VertScrollBarCross; }
  void Arranged() override;
  void CheckChanged(TListItem& item) override;
  void SwitchCheck(TListItem& item, bool checked) override;
  bool PressRows(const QPoint& pos, Qt::MouseButton button, Qt::KeyboardModifiers shift) override;
  bool DoKey(int key, const QKeyEvent& event) override;
  [[nodiscard]] QString CutText(const QPoint&) const override { return {}; }  // RdTip shows it

  bool event(QEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void changeEvent(QEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;

 private:
  friend class TRdBars;
  friend class TRdCellKeys;
  friend class TRdCellMouse;
  friend class TRdEditors;
  friend class TRdHeader;

  // TkListOwner
  [[nodiscard]] const TkListState& ListState() const override { return FListState; }
  [[nodiscard]] int EndOfPage() const override;
  [[nodiscard]] int HorzScrollPos() const override;
  void ScrollToHorz(int pos) override;
  void RedrawRow(TkListItem& item) override;
  void RedrawList() override;
  void Realign() override;
  void ResetMouseState() override;
  void ForgetBoxClick() override { FMouse.ForgetBoxClick(); }
  [[nodiscard]] TListItems::TCompare RowCompare() override;
  bool DoItemChecked(TkListItem& item) override;
  bool DoGroupShowHide(TkListGroup& group, bool& showState) override;
  bool DoSubItemChecking(TkListItem& item, int column, bool& checked) override;
  bool DoSubItemChecked(TkListItem& item, int column, bool& checked) override;

  // TSkinOwner
  void SkinChanged(TSkinChange change) override;
  [[nodiscard]] int HeaderHeight() const override;

  // For the parts of the list.
  void CloseEditors();
  void WriteLog(const QString& text) const;
  void SelectRow(int row);
  void UpdateHeader();
  bool ClickHeader(int column);
  bool ToggleCheckAll();
  void CursorMoved();
  bool Act(TkListItem& item, int column, bool onIcon = false) { return FMouse.Act(item, column, onIcon); }
  bool ClickBox(TkListItem& item) { return FMouse.ClickBox(item); }

  void Press(QMouseEvent& event, bool second);
  bool ShareColumns();
  void TakeFont();
  void ImagesChanged();
  [[nodiscard]] TCellFacts DescribeGroup(const TkListItem& header) const;

  // The skins are views on FSkin and stand behind it. The parts below keep a reference to the list and end
  // with it; a bar or editor that is telling of itself as they end is left to the event loop.
  TListSkin FSkin;
  TRdListProperties FProperties;
  TkListState FListState;
  std::unique_ptr<TkLVSkinItem> FSkinItem;
  std::unique_ptr<TkLVSkinGroup> FSkinGroup;
  std::unique_ptr<TkLVSkinHeader> FSkinHeader;
  TRdHeader FHeaderPart{*this};
  TRdRowsPainter FRowsPainter{*this};
  TRdCellMouse FMouse{*this};
  TRdCellKeys FKeys{*this};
  // Made in the body of the constructor: whoever may be called before that asks for null.
  std::unique_ptr<TRdBars> FBars;
  std::unique_ptr<TRdEditors> FEditors;
  std::unique_ptr<TRdTip> FTip;
  QFont FListFont;
  TImageListLink FSortImages{[this] { ImagesChanged(); }};
  TImageListLink FIcons{[this] { ImagesChanged(); }};
  TImageListLink FGroupImages{[this] { ImagesChanged(); }};
  std::vector<TAutoColumn> FShared;  // what the widths of auto columns were last reckoned from
  int FSharedRoom = -1;
  int FWheelRest = 0;  // eighths of a degree that do not make a notch yet
  bool FOpenOwnerDraw = false;
  bool FArranging = false;
};
