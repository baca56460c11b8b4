// The list in its window: scrolling, columns, hits, tips, and what is on the screen.
#include "ShownList.h"

#include "controls/picture/ImageList.h"

#include <QElapsedTimer>
#include <QHelpEvent>
#include <QImage>
#include <QPaintEvent>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>
#include <utility>

using TListViewTest = TShownList;

namespace {

QIcon Square(const QColor& color) {
  QPixmap pixmap(16, 16);
  pixmap.fill(color);
  return QIcon(pixmap);
}

// What was painted of a window since it was asked last.
class TPaintWatch : public QObject {
 public:
  explicit TPaintWatch(QWidget& widget) : FWidget(widget) { FWidget.installEventFilter(this); }
  QRegion Take() {
    QCoreApplication::sendPostedEvents();
    QTest::qWait(1);
    return std::exchange(FPainted, {});
  }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) FPainted += static_cast<QPaintEvent*>(event)->region();
    return false;
  }

 private:
  QWidget& FWidget;
  QRegion FPainted;
};

// The smallest rectangle around all pixels of the colour.
QRect Where(const QImage& image, const QColor& color) {
  QRect found;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      if (image.pixelColor(x, y).rgb() == color.rgb()) found |= QRect(x, y, 1, 1);
  return found;
}

// The smallest rectangle around all pixels darker than the middle.
QRect Dark(const QImage& image, const QRect& within) {
  QRect found;
  for (int y = within.top(); y <= within.bottom(); ++y)
    for (int x = within.left(); x <= within.right(); ++x)
      if (image.pixelColor(x, y).lightness() < 128) found |= QRect(x, y, 1, 1);
  return found;
}

// How far the darkest and the lightest pixel are apart, 0 to 255.
int Range(const QImage& image, const QRect& within) {
  int least = 255;
  int most = 0;
  for (int y = within.top(); y <= within.bottom(); ++y)
    for (int x = within.left(); x <= within.right(); ++x) {
      least = std::min(least, image.pixelColor(x, y).lightness());
      most = std::max(most, image.pixelColor(x, y).lightness());
    }
  return most - least;
}

}  // namespace

TEST_F(TListViewTest, HitsTellRowsBoxesAndBlankPlaces) {
  Show({.CheckBoxes = true}, 3);
  const QPoint box = BoxOf(1);
  const QPoint text = TextOf(1);
  EXPECT_EQ(List.GetHitTestInfoAt(box.x(), box.y()) & 512U, 512U);
  EXPECT_EQ(List.GetHitTestInfoAt(text.x(), text.y()) & 512U, 0U);
  EXPECT_EQ(List.GetHitTestInfoAt(Blank().x(), Blank().y()), htNowhere);
  EXPECT_EQ(List.ItemAtPos(box), List.Items()[1]);
  EXPECT_EQ(List.GetItemAt(Blank().x(), Blank().y()), nullptr);
}

TEST_F(TListViewTest, RowsScrollIntoViewAndTheTopFollowsTheEnd) {
  Show({}, 100);
  EXPECT_EQ(List.TopItem(), List.Items()[0]);
  List.Items()[50]->MakeVisible(false);
  EXPECT_TRUE(List.viewport()->rect().contains(List.Layout().RowRect(50).adjusted(0, 0, -1, 0)));
  const int top = List.TopIndex();
  List.Items()[49]->MakeVisible(false);
  EXPECT_EQ(List.TopIndex(), top);
  QTest::keyClick(&List, Qt::Key_End);
  EXPECT_EQ(List.TopIndex(), List.Layout().MaxTopRow());
  while (List.Items().Count() > 3)
    List.Items().Delete(3);
  EXPECT_EQ(List.TopItem(), List.Items()[0]);
}

TEST_F(TListViewTest, ScrollBarsShowAsNeeded) {
  Show({}, 3);
  EXPECT_FALSE(List.verticalScrollBar()->isVisible());
  EXPECT_FALSE(List.horizontalScrollBar()->isVisible());
  const int width = List.ClientWidth();
  {
    const TListUpdate update(List.Items());
    for (int row = 0; row < 50; ++row)
      List.Items().Add();
    EXPECT_FALSE(List.verticalScrollBar()->isVisible()) << "nothing moves inside the bracket";
  }
  EXPECT_EQ(List.ClientWidth(), width - List.VertScrollBarWidth());
  List.Columns()[0].SetWidth(1000);
  QTest::keyClick(&List, Qt::Key_Right);
  EXPECT_GT(List.HorzPos(), 0);
  EXPECT_TRUE(List.horizontalScrollBar()->isVisible());
}

TEST_F(TListViewTest, BarsThatOnlyNeedEachOtherGoAway) {
  Show({}, 200);
  List.Columns()[0].SetWidth(List.maximumViewportSize().width() - List.Columns()[1].Width());
  EXPECT_LT(List.ClientWidth(), List.maximumViewportSize().width());
  EXPECT_GT(List.horizontalScrollBar()->maximum(), 0) << "the vertical bar takes room from the columns";
  const int fitting = List.maximumViewportSize().height() / List.Layout().Metrics().RowHeight;
  while (List.Items().Count() > fitting)
    List.Items().Delete(0);
  EXPECT_EQ(List.ClientWidth(), List.maximumViewportSize().width());
  EXPECT_EQ(List.viewport()->height(), List.maximumViewportSize().height());
}

TEST_F(TListViewTest, WithoutHeadersTheRowsBeginAtTheTop) {
  Show({}, 3);
  EXPECT_EQ(List.viewport()->y(), List.HeaderRect().bottom() + 1);
  TListViewOptions options = List.Options();
  options.ShowColumnHeaders = false;
  List.SetOptions(options);
  EXPECT_TRUE(List.HeaderRect().isNull());
  EXPECT_EQ(List.viewport()->y(), List.frameWidth());
}

TEST_F(TListViewTest, AMillionRowsAreNoBurden) {
  QElapsedTimer timer;
  timer.start();
  for (int row = 0; row < 1'000'000; ++row)
    List.Items().Add();
  Show({.MultiSelect = true}, 0);
  List.Items()[999'999]->SetSelected(true);
  List.Items()[999'999]->MakeVisible(false);
  List.grab();
  EXPECT_EQ(List.ItemIndex(), 999'999);
  EXPECT_LT(timer.elapsed(), 20'000) << "a bound for the slowest of instrumented builds";
}

TEST_F(TListViewTest, ADividerIsDraggedAndItsDoubleClickFitsTheColumn) {
  Show({.CheckBoxes = true});
  List.Columns()[0].SetMaxWidth(180);
  QTest::mousePress(Header(), Qt::LeftButton, {}, QPoint(150, 5));
  QTest::mouseMove(Header(), QPoint(290, 5));
  QTest::mouseRelease(Header(), Qt::LeftButton, {}, QPoint(290, 5));
  EXPECT_EQ(List.Columns()[0].Width(), 180);
  EXPECT_EQ(TakeLog(), u"") << "a drag is no click";

  List.Columns()[0].SetMaxWidth(0);
  List.Items()[4]->SetCaption(u"the longest of all the captions"_qs);
  QTest::mouseDClick(Header(), Qt::LeftButton, {}, QPoint(180, 5));
  const int text = List.fontMetrics().horizontalAdvance(List.Items()[4]->Caption());
  const int room = List.Layout().CellParts(4, 0).Text.width();
  EXPECT_GE(room, text);
  EXPECT_LE(room, text + 4);
}

TEST_F(TListViewTest, TheTipShowsACutTextElseTheHint) {
  Show({});
  List.SetHint(u"Double click <b>"_qs);
  List.Columns()[0].SetWidth(20);
  const auto tip = [this](QPoint pos) {
    QToolTip::hideText();
    QHelpEvent event(QEvent::ToolTip, pos, List.viewport()->mapToGlobal(pos));
    QCoreApplication::sendEvent(List.viewport(), &event);
    return QToolTip::text();
  };
  EXPECT_EQ(tip(TextOf(1)), u"row 1");
  EXPECT_TRUE(tip(List.Layout().CellRect(1, 1).center()).contains(u"&lt;b&gt;"))
      << "a name is never taken for markup";
  List.Columns()[0].SetWidth(List.ClientWidth() + 2000);
  List.Items()[2]->SetCaption(QString(60, u'w'));
  EXPECT_EQ(tip(List.Layout().CellRect(2, 0).topLeft() + QPoint(9, 9)), List.Items()[2]->Caption())
      << "what the window's edge cuts is cut";
  TListViewOptions options = List.Options();
  options.ShowHint = false;
  List.SetOptions(options);
  tip(List.Layout().CellRect(1, 1).center());
  EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }));
}

TEST_F(TListViewTest, TheSortMarkStandsRightOfItsCaption) {
  TImageList images(QSize(16, 16));
  images.AddIcon(Square(Qt::red));
  Show({});
  List.SetSmallImages(&images);
  List.Columns()[0].SetImageIndex(0);
  const QImage header = Header()->grab().toImage();
  const QRect mark = Where(header, Qt::red);
  ASSERT_EQ(mark.size(), QSize(16, 16));
  const QRect caption = Dark(header, {4, 4, mark.left() - 6, header.height() - 8});
  EXPECT_FALSE(caption.isNull());
  EXPECT_GT(mark.left(), caption.right());
  EXPECT_LT(mark.left() - caption.right(), 12) << "beside it, whatever the font leaves blank";
  EXPECT_LT(mark.right(), 150);
  List.SetSmallImages(nullptr);
}

TEST_F(TListViewTest, HighlightMarksAndImagesAreOnTheScreen) {
  TImageList images(QSize(16, 16));
  images.AddIcon(Square(Qt::red));
  Show({}, 4);
  List.SetSmallImages(&images);
  List.Items()[1]->SetSelected(true);
  List.Items()[2]->SetImageIndex(0);
  List.Items()[3]->SetChecked(true);
  const QImage rows = List.viewport()->grab().toImage();
  const QColor highlight = rows.pixelColor(List.Layout().CellRect(1, 0).bottomRight() - QPoint(9, 9));
  EXPECT_NE(highlight, List.palette().color(QPalette::Base));
  EXPECT_TRUE(List.Layout().RowRect(1).contains(Where(rows, highlight)));
  EXPECT_GT(Where(rows, highlight).width(), 200) << "the whole row is marked";
  EXPECT_GT(Range(rows, List.Layout().CellParts(1, 0).Text), 100) << "its text can be read";
  EXPECT_EQ(Where(rows, Qt::red), List.Layout().CellParts(2, 0).SmallImage);

  TListViewOptions options = List.Options();
  options.CheckBoxes = true;
  List.SetOptions(options);
  const QImage checks = List.viewport()->grab().toImage();
  const QRect box = List.Layout().CellParts(3, 0).CheckBox.adjusted(2, 2, -2, -2);
  EXPECT_FALSE(Dark(checks, box).isNull()) << "the mark of a checked row";
  EXPECT_TRUE(Dark(checks, box.translated(0, -3 * List.Layout().Metrics().RowHeight)).isNull());
  List.SetSmallImages(nullptr);
}

TEST_F(TListViewTest, TheFocusIsSeenOnItsRowElseOnTheFirst) {
  Show({}, 4);
  const auto framed = [this](int row) {
    const QRect rect = List.Layout().RowRect(row);
    const QImage edge = List.viewport()->grab().toImage().copy({rect.topLeft(), QSize(100, 1)});
    QImage plain = edge;
    plain.fill(List.palette().color(QPalette::Base));
    return edge != plain;
  };
  EXPECT_TRUE(framed(0));
  TPaintWatch watch(*List.viewport());
  watch.Take();
  List.Items()[2]->SetFocused(true);
  EXPECT_TRUE(watch.Take().contains(List.Layout().RowRect(0).center()))
      << "where the frame was is painted too";
  EXPECT_FALSE(framed(0));
  EXPECT_TRUE(framed(2));
  List.clearFocus();
  EXPECT_FALSE(framed(2));
}

TEST_F(TListViewTest, AChangeRepaintsItsRowAlone) {
  Show({}, 4);
  TPaintWatch watch(*List.viewport());
  watch.Take();
  const QRect row = List.Layout().RowRect(2);
  List.Items()[2]->SetSelected(true);
  EXPECT_EQ(watch.Take().boundingRect().intersected(row), row);
  List.Items()[2]->SetCaption(u"new"_qs);
  const QRect painted = watch.Take().boundingRect();
  EXPECT_EQ(painted.top(), row.top());
  EXPECT_EQ(painted.bottom(), row.bottom());
  EXPECT_TRUE(watch.Take().isEmpty());
}

TEST_F(TListViewTest, AChangedImageListRepaintsAll) {
  TImageList images(QSize(16, 16));
  Show({}, 4);
  List.SetSmallImages(&images);
  List.Items()[2]->SetImageIndex(0);
  QTest::qWait(10);
  images.AddIcon(Square(Qt::red));
  EXPECT_FALSE(Where(List.grab().toImage(), Qt::red).isNull());
  List.SetSmallImages(nullptr);
  EXPECT_TRUE(Where(List.grab().toImage(), Qt::red).isNull());
}

TEST_F(TListViewTest, SortingByTheHandlerKeepsTheSelection) {
  Show({}, 5);
  List.Items()[4]->SetSelected(true);
  TakeLog();
  List.OnCompare = [](TListItem* a, TListItem* b, int& result) {
    result = b->SubItems()[0].toInt() - a->SubItems()[0].toInt();
  };
  List.AlphaSort();
  EXPECT_EQ(List.ItemIndex(), 0);
  EXPECT_EQ(List.Selected()->Caption(), u"row 4");
  EXPECT_EQ(TakeLog(), u"") << "no row changed its state";
  List.OnCompare = nullptr;
  List.AlphaSort();
  EXPECT_EQ(List.ItemIndex(), 4);
}

namespace {

class TOwnItem : public TListItem {
 public:
  using TListItem::TListItem;
};

class TOwnList : public TListView {
 protected:
  std::unique_ptr<TListItem> CreateListItem(TListItems& items) override {
    return std::make_unique<TOwnItem>(items);
  }
};

}  // namespace

TEST(ListViewFactory, AListMayHaveRowsOfItsOwnClass) {
  TOwnList list;
  EXPECT_NE(dynamic_cast<TOwnItem*>(list.Items().Add()), nullptr);
}
