#include "controls/scroll/RdScrollBar.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QElapsedTimer>
#include <QMouseEvent>
#include <QPainter>
#include <QTest>

#include <string>
#include <tuple>

#include "controls/notes/PaintCounter.h"
#include "controls/picture/Pictures.h"

namespace {

using ::testing::ElementsAre;

using TStep = std::tuple<bool, TIScrollCode, TScrollMode, int>;  // as OnScroll tells it

constexpr QSize kBar(16, 232);
constexpr QColor kFace(120, 130, 140);

// A shown bar 16 by 232 in a red window, with the plain look and arrows as long as the platform's.
class RdScrollBarTest : public ::testing::Test {
 protected:
  RdScrollBarTest() {
    Form.setPalette(QPalette(Qt::white, Qt::red));
    Form.resize(300, 300);
    Bar.AllSkinImage().SetColor(ToTColor(kFace));
    Bar.AllSkinImage().SetAutoSize(false);
    Bar.AllSkinImage().SetAutoArrow(false);
    Bar.resize(kBar);
    Bar.OnScroll = [this](TRdScrollBar&, bool start, TIScrollCode code, TScrollMode mode, int change) {
      Events += "scroll";
      Steps.emplace_back(start, code, mode, change);
    };
    Bar.OnChange = [this] { Events += "change"; };
    Bar.OnTrackEnd = [this] { Events += "end"; };
    Form.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&Form));
    Bar.clearFocus();  // the window gives it to its only control
  }

  [[nodiscard]] QPoint CentreOf(TScrollBarPos part) const { return Bar.Layout().RectOf(part).center(); }
  // Of the pixel in the middle of that point, whatever the density.
  [[nodiscard]] QColor PixelAt(QPoint point) {
    const QImage image = Form.grab().toImage();
    const auto pixel = [&image](int at) { return static_cast<int>((at + 0.5) * image.devicePixelRatio()); };
    return image.pixelColor(pixel(point.x()), pixel(point.y()));
  }

  // Without moving the mouse of the system.
  void MoveTo(QPointF point, Qt::MouseButtons held = {}) {
    QMouseEvent move(QEvent::MouseMove, point, Bar.mapToGlobal(point), Qt::NoButton, held, {});
    QApplication::sendEvent(&Bar, &move);
  }

  void Picture(TScrollPicture which, QSize size, const QColor& color) {
    Bar.AllSkinImage().SetPicture(which, PictureOf(size, color));
  }

  QWidget Form;
  TRdScrollBar Bar{&Form};
  std::string Events;
  std::vector<TStep> Steps;
};

}  // namespace

TEST_F(RdScrollBarTest, AClickOnEachPartScrollsWithItsEventsInOrderAsFarAsTheLastPage) {
  using enum TScrollBarPos;
  const std::tuple<TScrollBarPos, TIScrollCode, TScrollMode> cases[] = {
      {TopButton, TIScrollCode::LineUp, kScrollByButton | kScrollUp},
      {BottomButton, TIScrollCode::LineDown, kScrollByButton | kScrollDown},
      {PageUp, TIScrollCode::PageUp, kScrollByPage | kScrollUp},
      {PageDown, TIScrollCode::PageDown, kScrollByPage | kScrollDown}};
  for (const auto& [part, code, mode] : cases) {
    Bar.SetPosition(50);
    Events.clear();
    QTest::mouseClick(&Bar, Qt::LeftButton, {}, CentreOf(part));
    const int change = Bar.Position() - 50;
    EXPECT_EQ(std::abs(change), (mode & kScrollByPage) != 0 ? 10 : 3);
    EXPECT_EQ(Steps.back(), TStep(true, code, mode, change));
    EXPECT_EQ(Events, "scrollchangeend");
  }
  Events.clear();
  QTest::mouseClick(&Bar, Qt::RightButton, {}, CentreOf(TopButton));
  EXPECT_EQ(Events, "");
  const std::tuple<int, TScrollBarPos, int, const char*> ends[] = {{69, BottomButton, 71, "scrollchangeend"},
                                                                   {71, BottomButton, 71, ""},
                                                                   {90, BottomButton, 71, "scrollchangeend"},
                                                                   {2, TopButton, 0, "scrollchangeend"},
                                                                   {0, TopButton, 0, ""}};
  for (const auto& [position, part, after, events] : ends) {
    Bar.SetParams(0, 100, 30, position);
    Bar.SetPosition(position);
    Events.clear();
    QTest::mouseClick(&Bar, Qt::LeftButton, {}, CentreOf(part));
    EXPECT_EQ(Bar.Position(), after) << position;
    EXPECT_EQ(Events, events) << position;
  }
}

TEST_F(RdScrollBarTest, AReleaseThatWasLostLetsGoOfTheThumb) {
  QTest::mousePress(&Bar, Qt::LeftButton, {}, CentreOf(TScrollBarPos::Thumb));
  MoveTo({8, 150}, Qt::LeftButton);
  const int dragged = Bar.Position();
  EXPECT_GT(dragged, 0);
  MoveTo({8, 40});
  EXPECT_EQ(Bar.Position(), dragged);
  EXPECT_EQ(Events, "scrollchangeend");
}

TEST_F(RdScrollBarTest, AHeldButtonRepeatsAfterTheWaitWhileTheMouseIsThere) {
  const auto moves = [this](int milliseconds) {
    const int before = Bar.Position();
    return QTest::qWaitFor([&] { return Bar.Position() != before; }, milliseconds);
  };
  const QPoint button = CentreOf(TScrollBarPos::BottomButton);
  Bar.SetWaitInterval(120);
  QElapsedTimer held;
  held.start();
  QTest::mousePress(&Bar, Qt::LeftButton, {}, button);
  ASSERT_EQ(Bar.Position(), 3);
  ASSERT_TRUE(QTest::qWaitFor([this] { return Bar.Position() >= 12; }, 5000));
  EXPECT_GE(held.elapsed(), 200) << "120 and twice 50, less the timer's coarseness";
  EXPECT_TRUE(std::get<bool>(Steps[0]) && !std::get<bool>(Steps[1])) << "the first begins";
  MoveTo({-40, 5}, Qt::LeftButton);
  EXPECT_FALSE(moves(150));
  MoveTo(button, Qt::LeftButton);
  EXPECT_TRUE(moves(5000));
  QTest::mouseRelease(&Bar, Qt::LeftButton, {}, button);
  EXPECT_FALSE(moves(150));
  Bar.SetPosition(0);
  QTest::mousePress(&Bar, Qt::LeftButton, {}, {8, 100});
  while (moves(300)) {
  }
  EXPECT_TRUE(Bar.Layout().ThumbRect.contains(8, 100)) << "the thumb under the mouse ends the paging";
}

TEST_F(RdScrollBarTest, DraggingTheThumbKeepsItUnderTheMouseWhateverTheOwnerSets) {
  const QPoint start = CentreOf(TScrollBarPos::Thumb);
  const int top = Bar.Layout().ThumbRect.y();
  QTest::mousePress(&Bar, Qt::LeftButton, {}, start);
  for (const int way : {60, -500, 37}) {
    QTest::mouseMove(&Bar, start + QPoint(0, way));
    EXPECT_EQ(Bar.Layout().ThumbRect.y(), top + std::max(way, 0));
  }
  using enum TIScrollCode;
  const auto& [begins, code, mode, change] = Steps[1];
  EXPECT_EQ(std::tuple(begins, code, mode), std::tuple(false, Track, kScrollByThumb | kScrollUp));
  EXPECT_EQ(change, -std::get<int>(Steps[0]));
  Bar.SetPosition(90);
  Bar.SetParams(0, 100, 0, 80);
  EXPECT_EQ(Bar.Layout().ThumbRect.y(), top + 37);
  QTest::mouseRelease(&Bar, Qt::LeftButton, {}, start + QPoint(0, 37));
  EXPECT_EQ(Bar.Position(), 80);
  EXPECT_GT(Bar.Layout().ThumbRect.y(), top + 100) << "the release puts it where the position is";
}

TEST_F(RdScrollBarTest, WheelNotchesAddUpAndKeysFollowTheFocus) {
  Bar.SetPosition(50);
  for (const QPoint delta : {QPoint(0, 60), QPoint(0, 60), QPoint(-240, 0)}) {
    QWheelEvent event({8, 8}, Bar.mapToGlobal(QPointF(8, 8)), {}, delta, {}, {}, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&Bar, &event);
  }
  EXPECT_EQ(Bar.Position(), 56);
  using enum TIScrollCode;
  EXPECT_THAT(Steps, ElementsAre(TStep(true, LineUp, 20, -6), TStep(true, LineDown, 36, 6),
                                 TStep(true, LineDown, 36, 6)));

  for (const Qt::FocusPolicy policy : {Qt::NoFocus, Qt::StrongFocus}) {
    Bar.setFocusPolicy(policy);
    QTest::mouseClick(&Bar, Qt::LeftButton, {}, CentreOf(TScrollBarPos::TopButton));
    EXPECT_EQ(Bar.hasFocus(), policy == Qt::StrongFocus);
  }
  EXPECT_EQ(PixelAt(Bar.Layout().ThumbRect.topLeft()), Bar.palette().color(QPalette::Highlight));
  const std::tuple<Qt::Key, int, TIScrollCode, TScrollMode> keys[] = {
      {Qt::Key_Right, 41, LineDown, kScrollDown},
      {Qt::Key_PageUp, 31, PageUp, kScrollUp},
      {Qt::Key_Home, 0, Top, kScrollUp},
      {Qt::Key_End, 91, Bottom, kScrollDown}};
  for (const auto& [key, after, code, mode] : keys) {
    Bar.SetParams(0, 100, 10, 40);
    QTest::keyClick(&Bar, key);
    EXPECT_EQ(Bar.Position(), after) << key;
    EXPECT_EQ(Steps.back(), TStep(true, code, mode | kScrollByKey, after - 40)) << key;
  }
}

TEST_F(RdScrollBarTest, OnlySettingThePositionFiresTheEvent) {
  Bar.SetParams(0, 90, 10, 40);
  Bar.SetPositionSilent(120, true);
  EXPECT_EQ(Bar.Position(), 90);
  Bar.SetPosition(90);
  Bar.SetPosition(85);
  EXPECT_EQ(Events, "change");
  Bar.SetPageSize(30);
  EXPECT_EQ(Bar.Position(), 61);
  EXPECT_EQ(Events, "changechange") << "the last page took the position back";
  Bar.ScrollBy(-1, 5);
  EXPECT_EQ(Events, "changechangescrollchange");
  EXPECT_EQ(std::get<int>(Steps.back()), -5);
}

TEST_F(RdScrollBarTest, NothingToScrollDisablesAndWithAutoHideHides) {
  int enabledChanges = 0;
  Bar.OnEnabledChange = [&] { ++enabledChanges; };
  Bar.SetPageSize(100);
  EXPECT_TRUE(Bar.isEnabled()) << "a page as large as the range still scrolls";
  Bar.SetPageSize(101);
  EXPECT_FALSE(Bar.isEnabled() || Bar.Layout().HasThumb());
  EXPECT_EQ(PixelAt({8, 100}), kFace) << "shown, as one part";
  Bar.AllSkinImage().SetAutoHide(true);
  EXPECT_FALSE(Bar.isVisible());
  Bar.SetParams(0, 500, 101, 0);
  EXPECT_TRUE(Bar.isVisible() && Bar.Layout().HasThumb());
  EXPECT_EQ(enabledChanges, 2);

  QTest::mousePress(&Bar, Qt::LeftButton, {}, CentreOf(TScrollBarPos::PageDown));
  const int pressed = Bar.Position();
  Bar.SetWaitInterval(1);
  Bar.setEnabled(false);
  EXPECT_FALSE(Bar.isVisible());
  EXPECT_FALSE(QTest::qWaitFor([&] { return Bar.Position() != pressed; }, 60)) << "the press has ended";
  Bar.SetReading(true);
  Bar.SetMax(600);
  EXPECT_FALSE(Bar.isVisible());
  Bar.SetReading(false);
  EXPECT_TRUE(Bar.isVisible());
}

TEST_F(RdScrollBarTest, PagesAreShadedByTheirState) {
  Bar.SetPosition(50);
  const QPoint up = CentreOf(TScrollBarPos::PageUp);
  const QPoint down = CentreOf(TScrollBarPos::PageDown);
  EXPECT_EQ(PixelAt(up), Shaded(kFace, -20));
  EXPECT_EQ(PixelAt(down), Shaded(kFace, 10));
  QApplication::processEvents();
  TPaintCounter paints(Bar);
  for (const int beside : {0, 1}) {
    MoveTo(up + QPoint(0, beside));
    QApplication::processEvents();
    EXPECT_EQ(paints.Count, 1) << "a move within the part paints nothing";
  }
  EXPECT_EQ(PixelAt(up), Shaded(kFace, 50));
  QTest::mousePress(&Bar, Qt::LeftButton, {}, up);
  EXPECT_EQ(PixelAt(up), Shaded(kFace, -80));
  QTest::mouseRelease(&Bar, Qt::LeftButton, {}, up);

  Picture(ScrollBg, {16, 4}, Qt::green);
  EXPECT_EQ(PixelAt(down), QColor(Qt::green)) << "a background picture leaves them alone";
  Bar.AllSkinImage().Assign(nullptr);
  EXPECT_EQ(PixelAt(down), Shaded(Qt::red, 10)) << "the parent's colour";
  Bar.AllSkinImage().SetColor(clNone);
  EXPECT_EQ(PixelAt(down), QColor(Qt::red)) << "the parent itself";
}

TEST_F(RdScrollBarTest, PicturesFillTheirPartsAndSetTheThickness) {
  Bar.SetPosition(50);
  Bar.AllSkinImage().SetAutoSize(true);
  const std::pair<TScrollPicture, QSize> pictures[] = {
      {ScrollBgTop, {20, 30}}, {ScrollBg, {20, 1}},   {ScrollBgBottom, {20, 40}}, {TrackTop, {10, 8}},
      {TrackCenter, {10, 20}}, {TrackBottom, {6, 9}}, {TrackCenterHot, {10, 20}}, {BtnLeft, {12, 11}},
      {BtnLeftHot, {12, 11}},  {BtnRight, {12, 13}}};
  int number = 0;
  for (const auto& [which, size] : pictures) {
    ++number;
    Picture(which, size, QColor(number, number, number));
  }
  EXPECT_EQ(Bar.width(), 20);
  const QRect thumb = Bar.Layout().ThumbRect;
  EXPECT_EQ(thumb, QRect(5, 97, 10, 37)) << "11 + round((208 - 37) / 2), centred across";

  const auto shade = [this](QPoint point) { return PixelAt(point).red(); };
  EXPECT_EQ(shade({10, 20}), 1);
  EXPECT_EQ(shade({10, kBar.height() - 40}), 3);
  EXPECT_EQ(shade(thumb.topLeft() + QPoint(0, 7)), 4);
  EXPECT_EQ(shade(thumb.topLeft() + QPoint(0, 8)), 5);
  EXPECT_EQ(shade(thumb.bottomRight() - QPoint(2, 8)), 6);
  EXPECT_EQ(shade(thumb.bottomRight() - QPoint(1, 8)), 2) << "beside the thin end";
  EXPECT_EQ(shade({10, 5}), 8);

  MoveTo(thumb.center());
  EXPECT_EQ(shade(thumb.center()), 7);
  EXPECT_EQ(shade(thumb.topLeft()), 4) << "without a hot picture the normal one";
  Picture(TrackTop, {10, 8}, QColor(11, 11, 11));
  EXPECT_EQ(shade(thumb.topLeft()), 11) << "composed anew";
  QTest::mousePress(&Bar, Qt::LeftButton, {}, QPoint(10, 5));
  EXPECT_EQ(shade({10, 5}), 9) << "the hot picture is also the pressed one";
}

TEST_F(RdScrollBarTest, AssigningKeepsThePicturesThatTheOtherLacks) {
  Picture(BtnLeft, {12, 11}, Qt::blue);
  Picture(BtnRight, {12, 11}, Qt::blue);
  TRdScrollBar other;
  other.AllSkinImage().SetPicture(BtnRight, PictureOf({5, 6}, Qt::green));
  other.AllSkinImage().SetColor(clSilver);
  other.AllSkinImage().SetPropertyPaste(&Bar.AllSkinImage());
  EXPECT_EQ(Bar.Skin()[BtnLeft].Size(), QSize(12, 11));
  EXPECT_EQ(Bar.Skin()[BtnRight].Size(), QSize(5, 6));
  EXPECT_EQ(Bar.Skin().Color, clSilver);
}

TEST_F(RdScrollBarTest, OwnerDrawComesBeforeEachPartAndAfterItIfDrawn) {
  Bar.SetPosition(50);
  std::vector<std::pair<TScrollBarPos, bool>> calls;
  Bar.OnDrawControl = [&](QPainter& painter, TScrollBarPos part, const QRect& rect, TButtonState,
                          bool& draw) {
    calls.emplace_back(part, draw);
    if (part == TScrollBarPos::PageUp) painter.fillRect(rect, Qt::yellow);
    if (part == TScrollBarPos::PageDown) draw = true;
  };
  Bar.SetOwnerDraw(true);
  calls.clear();
  EXPECT_EQ(PixelAt(CentreOf(TScrollBarPos::PageUp)), QColor(Qt::yellow));
  using enum TScrollBarPos;
  EXPECT_THAT(calls, ElementsAre(std::pair(PageUp, false), std::pair(PageDown, false),
                                 std::pair(PageDown, true), std::pair(Thumb, false),
                                 std::pair(TopButton, false), std::pair(BottomButton, false)));
  EXPECT_EQ(PixelAt(CentreOf(PageDown)), Shaded(kFace, 10));
  EXPECT_EQ(PixelAt(CentreOf(Thumb)), kFace) << "nothing but the bar's colour";
}

TEST_F(RdScrollBarTest, AssistiveToolsReadAndSetTheValue) {
  Bar.SetParams(0, 300, 20, 120);
  QAccessibleInterface* const told = QAccessible::queryAccessibleInterface(&Bar);
  ASSERT_TRUE(told != nullptr && told->valueInterface() != nullptr);
  EXPECT_EQ(told->role(), QAccessible::ScrollBar);
  EXPECT_EQ(told->valueInterface()->currentValue(), 120);
  told->valueInterface()->setCurrentValue(150);
  EXPECT_EQ(Bar.Position(), 150);
  EXPECT_EQ(Events, "scrollchange") << "as if the user had moved it";
  told->actionInterface()->doAction(QAccessibleActionInterface::decreaseAction());
  EXPECT_EQ(Bar.Position(), 149);
}
