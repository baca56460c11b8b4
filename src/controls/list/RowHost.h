// The scroll area under every list: keeps the state bits of the rows, the top row and the scroll positions,
// and paints the rows that show. It holds no texts: it asks a TRowSource for them by row index.
#pragma once

#include "controls/list/ListTypes.h"
#include "controls/list/input/RowInput.h"
#include "controls/list/layout/ListLayout.h"
#include "controls/list/model/EventScope.h"
#include "controls/list/model/RowStates.h"
#include "controls/picture/ImageList.h"

#include <QAbstractScrollArea>

#include <memory>

class QMouseEvent;
class THeaderBar;
class TListColumns;
class TRowSource;

// Main thread. The vertical scroll bar counts rows, the horizontal one pixels; both show as needed.
//
// The states have one entry per row of the source: whoever changes the rows brings both in step before
// anything is asked or painted. Only in an open bracket with a count (TkListItems::BeginUpdate) there may be
// entries behind the last row, and nothing is painted then.
//
// Rows are counted rather than pixels, so that the range of a bar, an int, holds any number of them and the
// row at the top is never cut.
class TRowHost : public QAbstractScrollArea, protected TRowInputHost {
 public:
  explicit TRowHost(QWidget* parent);
  ~TRowHost() override;

  [[nodiscard]] const TListViewOptions& Options() const override { return FOptions; }
  virtual void SetOptions(const TListViewOptions& options);

  // Small images of rows, cells and sort marks; images by StateIndex. Not owned; null once they are gone.
  // Changed images repaint the list.
  [[nodiscard]] TImageList* SmallImages() const { return FSmallImages.Images(); }
  void SetSmallImages(TImageList* images);
  void SetStateImages(TImageList* images);

  [[nodiscard]] const TListLifePtr& EventLife() const { return FEventLife; }

  [[nodiscard]] TRowStates& States() { return FStates; }
  [[nodiscard]] const TRowStates& States() const { return FStates; }
  [[nodiscard]] const TRowSource& Source() const { return *FSource; }

  [[nodiscard]] int TopIndex() const override;
  void SetTopIndex(int row) override;
  [[nodiscard]] int HorzPos() const;
  void SetHorzPos(int pixels);
  void MakeRowVisible(int row, bool partialOk) override;

  // Rectangles and hits of the present state. Valid until anything changes.
  [[nodiscard]] TListLayout Layout() const;
  // What lies at a point of the client area.
  [[nodiscard]] virtual THit HitTest(const QPoint& pos) const { return Layout().HitTest(pos); }
  [[nodiscard]] int ClientWidth() const;
  // The width that a vertical scroll bar takes, whether one shows or not.
  [[nodiscard]] int VertScrollBarWidth() const;
  // In the list's own coordinates; empty without column headers.
  [[nodiscard]] QRect HeaderRect() const;

  void UpdateRow(int row);
  // Makes the column as wide as its widest text, image and caption among the first 20,000 rows.
  void FitColumn(int column);

 protected:
  // Set once, by the constructor of the list that has the rows.
  void SetSource(const TRowSource& source, TListColumns& columns);

  // A state bit of a row has changed.
  virtual void RowStateChanged(int row, unsigned before, unsigned after) = 0;
  virtual void HeaderClicked(int column) = 0;
  // Columns were added or have gone.
  virtual void ColumnCountChanged() = 0;

  // Room for the font, or for the images if they are higher.
  [[nodiscard]] virtual int RowHeight() const;

  // Paints what shows of the rows in that part of the client area.
  virtual void PaintRows(QPainter& painter, const QRegion& region);

  // A list with a header of its own look paints it all and hears of the mouse first: true keeps the event
  // from the header. atDivider: the mouse could drag a divider, or does. HeaderFitsColumns: a second
  // press on a divider fits the column at its left.
  virtual bool PaintHeader(QPainter& painter, QWidget& header);
  virtual bool HeaderMouse(const QMouseEvent& event, bool atDivider);
  [[nodiscard]] virtual bool HeaderFitsColumns() const { return true; }

  // Room beside the rows that a list takes for bars of its own, below the header or beside it too.
  [[nodiscard]] virtual QMargins BarMargins() const { return {}; }
  [[nodiscard]] virtual bool BarCrossesHeader() const { return false; }
  // Client area, scroll ranges and header are up to date again.
  virtual void Arranged() {}
  [[nodiscard]] THeaderBar& Header() const { return *FHeader; }

  // Lays header, client area and scroll ranges out at once.
  void Arrange();
  // Rows or columns were changed: scroll ranges and paint follow, unless a batch is open.
  void ContentChanged();
  // While locked, nothing is painted and no scroll range moves; unlocking does both once.
  void LockPainting(bool locked);
  void SetHoverRow(int row);

  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void changeEvent(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

  // TRowInputHost
  [[nodiscard]] int RowsPerPage() const override;
  void ScrollHorz(int steps) override;
  [[nodiscard]] QString RowText(int row) const override;

 private:
  friend class THeaderBar;
  [[nodiscard]] TListMetrics Metrics() const;
  void ColumnsTold();
  void Settle() const;
  void UpdateScrollBars();
  void PlaceHeader();
  [[nodiscard]] int MeasureColumn(int column) const;

  // Shared with whoever tells an event, and so what may outlive the list, with what is buried in it.
  const TListLifePtr FEventLife = std::make_shared<TListLife>();
  TRowStateList FStates;
  TListViewOptions FOptions;
  const TRowSource* FSource = nullptr;
  TListColumns* FHostColumns = nullptr;
  TImageListLink FSmallImages{[this] { ContentChanged(); }};
  TImageListLink FStateImages{[this] { ContentChanged(); }};
  THeaderBar* FHeader;  // owned as a child window
  // As last told to ColumnCountChanged.
  int FColumnCount = 0;
  int FHoverRow = -1;
  bool FLocked = false;
  mutable bool FStale = false;  // scroll ranges are behind the content
};
