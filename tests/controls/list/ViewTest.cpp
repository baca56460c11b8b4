// The list in its window: scrolling, columns, hits, tips, and what is on the screen.
#include "ShownList.h"

#include "controls/picture/ImageList.h"
#include "controls/picture/Pictures.h"

#include <QHelpEvent>
#include <QImage>
#include <QPaintEvent>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>
#include <utility>

using TListViewTest = TShownList;

namespace {

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

// The smallest rectangle around all pixels within that are like that.
template <class TIs>
QRect Where(const QImage& image, const QRect& within, TIs is) {
  QRect found;
  for (int y = within.top(); y <= within.bottom(); ++y)
    for (int x = within.left(); x <= within.right(); ++x)
      if (is(image.pixelColor(x, y))) found |= QRect(x, y, 1, 1);
  return found;
}
QRect Where(const QImage& image, const QColor& color) {
  return Where(image, image.rect(), [&color](const QColor& pixel) { return pixel.rgb() == color.rgb(); });
}
QRect Dark(const QImage& image, const QRect& within) {
  return Where(image, within, [](const QColor& pixel) { return pixel.lightness() < 128; });
}

}  // namespace

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
  EXPECT_EQ(List.viewport()->y(), List.HeaderRect().bottom() + 1);
  List.SetOptions({.ShowColumnHeaders = false});
  EXPECT_TRUE(List.HeaderRect().isNull());
  EXPECT_EQ(List.viewport()->y(), List.frameWidth());
}

TEST_F(TListViewTest, ScrollBarsShowAsNeeded) {
  Show({}, 3);
  EXPECT_FALSE(List.verticalScrollBar()->isVisible() || List.horizontalScrollBar()->isVisible());
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

  List.Columns()[0].SetWidth(List.maximumViewportSize().width() - List.Columns()[1].Width());
  EXPECT_GT(List.horizontalScrollBar()->maximum(), 0) << "the vertical bar takes room from the columns";
  while (List.Items().Count() > List.maximumViewportSize().height() / List.Layout().Metrics().RowHeight)
    List.Items().Delete(0);
  EXPECT_EQ(List.viewport()->size(), List.maximumViewportSize()) << "bars that only need each other go";
}

TEST_F(TListViewTest, ADividerIsDraggedAndItsDoubleClickFitsTheColumn) {
  Show({.CheckBoxes = true, .ColumnClick = false});  // dividers work all the same
  List.Columns()[0].SetMaxWidth(180);
  List.Columns()[0].SetMinWidth(60);
  int edge = 150;
  for (const auto& [to, width] : {std::pair(170, 170), std::pair(10, 60), std::pair(290, 180)}) {
    QTest::mousePress(Header(), Qt::LeftButton, {}, QPoint(edge, 5));
    QTest::mouseMove(Header(), QPoint(to, 5));
    QTest::mouseRelease(Header(), Qt::LeftButton, {}, QPoint(to, 5));
    EXPECT_EQ(List.Columns()[0].Width(), width);
    edge = width;
  }
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
  List.SetOptions({.ShowHint = false});
  tip(List.Layout().CellRect(1, 1).center());
  EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }));
}

TEST_F(TListViewTest, HighlightMarksAndImagesAreOnTheScreen) {
  TImageList images(QSize(16, 16));
  Show({}, 4);
  List.SetSmallImages(&images);
  List.Items()[1]->SetSelected(true);
  List.Items()[2]->SetImageIndex(0);
  List.Items()[3]->SetChecked(true);
  List.Columns()[0].SetImageIndex(0);
  TPaintWatch watch(*List.viewport());
  watch.Take();
  images.Add(PictureOf({16, 16}, Qt::red));
  EXPECT_TRUE(watch.Take().contains(List.viewport()->rect().center())) << "changed images paint all anew";
  const QImage rows = List.viewport()->grab().toImage();
  const QColor highlight = rows.pixelColor(List.Layout().CellRect(1, 0).bottomRight() - QPoint(9, 9));
  EXPECT_NE(highlight, List.palette().color(QPalette::Base));
  EXPECT_TRUE(List.Layout().RowRect(1).contains(Where(rows, highlight)));
  EXPECT_GT(Where(rows, highlight).width(), 200) << "the whole row is marked";
  EXPECT_EQ(Where(rows, Qt::red), List.Layout().CellParts(2, 0).SmallImage);
  EXPECT_EQ(Where(Header()->grab().toImage(), Qt::red).size(), QSize(16, 16)) << "the sort mark";

  List.SetOptions({.CheckBoxes = true});
  const QImage checks = List.viewport()->grab().toImage();
  const QRect box = List.Layout().CellParts(3, 0).CheckBox.adjusted(2, 2, -2, -2);
  EXPECT_FALSE(Dark(checks, box).isNull()) << "the mark of a checked row";
  EXPECT_TRUE(Dark(checks, box.translated(0, -3 * List.Layout().Metrics().RowHeight)).isNull());
  List.SetSmallImages(nullptr);
}

TEST_F(TListViewTest, TheFocusIsSeenOnItsRowElseOnTheFirstAndAChangeRepaintsItsRowAlone) {
  Show({}, 4);
  const auto framed = [this](int row) {
    const QImage edge =
        List.viewport()->grab().toImage().copy({List.Layout().RowRect(row).topLeft(), QSize(100, 1)});
    return Where(edge, List.palette().color(QPalette::Base)).size() != edge.size();
  };
  EXPECT_TRUE(framed(0));
  TPaintWatch watch(*List.viewport());
  watch.Take();
  List.Items()[2]->SetFocused(true);
  EXPECT_TRUE(watch.Take().contains(List.Layout().RowRect(0).center()))
      << "where the frame was is painted too";
  EXPECT_TRUE(!framed(0) && framed(2));
  List.clearFocus();
  EXPECT_FALSE(framed(2));

  watch.Take();
  const QRect row = List.Layout().RowRect(2);
  List.Items()[2]->SetSelected(true);
  EXPECT_EQ(watch.Take().boundingRect().intersected(row), row);
  List.Items()[2]->SetCaption(u"new"_qs);
  const QRect painted = watch.Take().boundingRect();
  EXPECT_EQ(painted.top(), row.top());
  EXPECT_EQ(painted.bottom(), row.bottom());
  List.Items()[2]->SetCaption(u"new"_qs);
  EXPECT_TRUE(watch.Take().isEmpty());
}
