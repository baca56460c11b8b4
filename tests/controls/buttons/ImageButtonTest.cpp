// Mouse, keys and assistive tools on image buttons, and what is painted.
#include <gtest/gtest.h>

#include <QAccessible>
#include <QPushButton>
#include <QTest>

#include "controls/buttons/RdImageButton.h"
#include "controls/notes/PaintCounter.h"
#include "controls/picture/Pictures.h"

namespace {

constexpr QPoint kOnBox(5, 10);
constexpr QPoint kOnIcon(85, 10);
constexpr QPoint kBeside(50, 10);
constexpr QPoint kOutside(50, 90);

// Notes what it is told, a letter an event.
class ImageButtonTest : public ::testing::Test {
 protected:
  ImageButtonTest() {
    Form.resize(200, 100);
    Form.move(20, 20);
    Button->setGeometry(50, 50, 100, 20);  // not where the mouse may lie
    Button->CheckBoxNormalImage = PictureOf({10, 10}, Qt::blue);
    Button->CheckBoxCheckedImage = PictureOf({10, 10}, Qt::green);
    Button->CheckBoxOffset = 0;
    Button->DnNormalIcon = PictureOf({10, 10}, Qt::red);
    Button->OnClick = [this] { Told += u'c'; };
    Button->OnCheckBoxClick = [this] { Told += u'k'; };
    Button->OnIconClick = [this] { Told += u'i'; };
    Button->OnMouseEnter = [this] { Told += u'e'; };
    Button->OnMouseLeave = [this] { Told += u'l'; };
    Form.show();
  }

  void Mouse(QEvent::Type type, QPoint at) {
    const auto button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    const auto held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
    QMouseEvent event(type, at, Button->mapToGlobal(QPointF(at)), button, held, {});
    QApplication::sendEvent(Button, &event);
  }
  QString After(QPoint press, QPoint release) {
    Mouse(QEvent::MouseButtonPress, press);
    if (!Button.isNull()) Mouse(QEvent::MouseButtonRelease, release);
    return std::exchange(Told, {});
  }
  QColor Pixel(QPoint at) { return Button->grab().toImage().pixelColor(at); }

  QWidget Form;
  QPointer<TRdImageButton> Button = new TRdImageButton(&Form);
  QString Told;
};

}  // namespace

TEST_F(ImageButtonTest, WhereThePressLandsDecidesWhatIsTold) {
  const std::tuple<bool, bool, QPoint, QPoint, QString> cases[] = {
      {false, false, kBeside, kBeside, u"c"_qs}, {false, false, kBeside, kOutside, u""_qs},
      {false, false, kOnIcon, kOnIcon, u"i"_qs}, {true, false, kOnBox, kOnBox, u"k"_qs},
      {true, false, kBeside, kBeside, u"kc"_qs}, {true, false, kOnIcon, kOnIcon, u"i"_qs},
      {true, true, kOnBox, kOnBox, u"k"_qs},     {true, true, kBeside, kBeside, u"c"_qs}};
  int number = 0;
  for (const auto& [box, header, press, release, told] : cases) {
    Button->ShowCheckBox = box;
    Button->SetFoldHeader(header);
    EXPECT_EQ(After(press, release), told) << number++;
    EXPECT_EQ(Button->State(), TImageButtonState::Normal);
  }
  Button->CheckState = TButtonCheck::Grayed;
  Button->SetFoldHeader(false);
  for (const TButtonCheck expected : {TButtonCheck::On, TButtonCheck::Off, TButtonCheck::On}) {
    After(kBeside, kBeside);
    EXPECT_EQ(Button->CheckState.Get(), expected);
  }
  Button->SetState(TImageButtonState::Selected);
  EXPECT_EQ(After(kBeside, kBeside), u"kc"_qs);
  EXPECT_EQ(Button->State(), TImageButtonState::Selected);
}

TEST_F(ImageButtonTest, TheMouseAndTheStateDecideTheLook) {
  Button->ImageNormal = PictureOf({1, 1}, Qt::white);
  Button->ImageOver = PictureOf({1, 1}, Qt::yellow);
  Button->ImageDown = PictureOf({1, 1}, Qt::cyan);
  Button->DnHoverIcon = PictureOf({10, 10}, Qt::magenta);
  Mouse(QEvent::MouseMove, kBeside);
  EXPECT_EQ(Pixel({1, 1}), QColor(Qt::yellow));
  EXPECT_EQ(Pixel(kOnIcon), QColor(Qt::red));
  Mouse(QEvent::MouseMove, kOnIcon);
  EXPECT_EQ(Pixel(kOnIcon), QColor(Qt::magenta));
  Mouse(QEvent::MouseButtonPress, kBeside);
  EXPECT_EQ(Pixel({1, 1}), QColor(Qt::cyan));
  Mouse(QEvent::MouseMove, kOutside);
  EXPECT_EQ(Pixel({1, 1}), QColor(Qt::white)) << "drawn off";
  EXPECT_EQ(std::exchange(Told, {}), u"el");
  Button->setEnabled(false);
  EXPECT_EQ(Pixel(kOnIcon), QColor(76, 76, 76)) << "grey for want of a disabled icon";
  QEnterEvent enter(kBeside, kBeside, kBeside);
  QApplication::sendEvent(Button, &enter);
  EXPECT_EQ(Pixel({1, 1}), QColor(Qt::white));
  EXPECT_EQ(Told, QString());
}

TEST_F(ImageButtonTest, OnlyAPictureThatShowsIsPaintedAnew) {
  QWidget other(&Form);  // takes the focus, and what the window system wants painted is counted on both
  other.setFocusPolicy(Qt::StrongFocus);
  other.show();
  other.setFocus();
  Button->SetState(TImageButtonState::Selected);
  ASSERT_TRUE(QTest::qWaitForWindowActive(&Form));
  QApplication::processEvents();
  TPaintCounter paints(*Button), others(other);
  for (TButtonPicture* hidden : {&Button->ImageOver, &Button->ImageDown, &Button->UpHoverIcon})
    *hidden = PictureOf({1, 1}, Qt::black);
  Button->SetReading(true);
  Button->ImageNormal = PictureOf({20, 20}, Qt::black);
  QApplication::processEvents();
  EXPECT_EQ(paints.Count, others.Count);
  EXPECT_TRUE(Button->ImageOption.Empty()) << "nor is anything seeded while reading";
  Button->SetReading(false);
  QApplication::processEvents();
  for (TButtonPicture* shown : {&Button->ImageNormal, &Button->ImageSelected}) {
    paints.Count = others.Count;
    *shown = PictureOf({15, 15}, Qt::white);
    ASSERT_TRUE(QTest::qWaitFor([&] { return paints.Count > others.Count; }));
  }
  EXPECT_EQ(Button->ImageOption.Slices(), (TDesignSlices{5, 5, 5, 5}));
}

TEST_F(ImageButtonTest, BlackIsBeneath) {
  QPushButton beneath(&Form);
  beneath.setGeometry(Button->geometry());
  beneath.show();
  Button->raise();
  QImage range = Filled({100, 18}, Qt::white);
  range.setPixelColor(30, 10, Qt::black);
  Button->ImageRange = TPicture(range);
  int clicks = 0;
  QObject::connect(&beneath, &QPushButton::clicked, [&clicks] { ++clicks; });
  EXPECT_EQ(After({30, 10}, {30, 10}), QString());
  EXPECT_EQ(After({50, 19}, {50, 19}), QString()) << "out of the mask";
  EXPECT_EQ(clicks, 2);
  EXPECT_EQ(After({50, 10}, {50, 10}), u"c"_qs);
  Button->ImageRange = PictureOf({5, 5}, Qt::transparent);
  EXPECT_EQ(After({30, 10}, {30, 10}), u"c"_qs);
  EXPECT_EQ(clicks, 2);
}

TEST_F(ImageButtonTest, KeysAndAssistiveToolsDoAllThatTheMouseDoes) {
  QAccessibleInterface* const told = QAccessible::queryAccessibleInterface(Button);
  ASSERT_TRUE(told != nullptr && told->actionInterface() != nullptr);
  Button->Caption = u"Pause"_qs;
  EXPECT_EQ(told->text(QAccessible::Name), u"Pause");
  EXPECT_EQ(told->role(), QAccessible::Button);
  const auto key = [this](Qt::Key which, Qt::KeyboardModifiers with = {}) {
    QTest::keyClick(Button.data(), which, with);
    return std::exchange(Told, {});
  };
  const auto act = [&](const QString& name) {
    told->actionInterface()->doAction(name);
    return std::exchange(Told, {});
  };
  const QString press = QAccessibleActionInterface::pressAction();
  const QString toggle = QAccessibleActionInterface::toggleAction();
  EXPECT_EQ(key(Qt::Key_Space) + key(Qt::Key_Return) + act(press) + act(toggle), u"ccc");
  EXPECT_EQ(key(Qt::Key_Enter, Qt::ShiftModifier), u"i");
  Button->ShowCheckBox = true;
  EXPECT_EQ(told->role(), QAccessible::CheckBox);
  EXPECT_EQ(key(Qt::Key_Space), u"kc");
  EXPECT_TRUE(told->state().checked);
  EXPECT_EQ(act(toggle), u"k");
  EXPECT_FALSE(told->state().checked);
  Button->SetFoldHeader(true);
  EXPECT_EQ(key(Qt::Key_Space) + key(Qt::Key_Return), u"kc");
  Button->setEnabled(false);
  EXPECT_EQ(act(press), QString());
}

TEST_F(ImageButtonTest, AnyHandlerMayDeleteTheButton) {
  const std::pair<TButtonEvent TCustomImageButton::*, QPoint> cases[] = {
      {&TCustomImageButton::OnClick, kBeside},
      {&TCustomImageButton::OnCheckBoxClick, kBeside},
      {&TCustomImageButton::OnIconClick, kOnIcon},
      {&TCustomImageButton::OnMouseEnter, kBeside}};
  for (const auto& [event, press] : cases) {
    if (Button.isNull()) Button = new TRdImageButton(&Form);
    Button->resize(100, 20);
    Button->DnNormalIcon = PictureOf({10, 10}, Qt::red);
    Button->ShowCheckBox = true;
    Button.data()->*event = [this] { delete Button.data(); };
    Mouse(QEvent::MouseMove, press);
    if (!Button.isNull()) After(press, press);
    EXPECT_TRUE(Button.isNull());
  }
}

TEST_F(ImageButtonTest, TheSizeFollowsCaptionOrPicture) {
  Button->IconVisible = false;
  Button->Caption = u"Some words"_qs;
  Button->TextLeftMargin = 4;
  Button->ButtonCaptionAlignment = TButtonAlign::Left;
  Button->AutoSizeByText = true;
  const QFontMetrics metrics = Button->fontMetrics();
  EXPECT_EQ(Button->size(), QSize(20 + metrics.horizontalAdvance(u"Some words"_qs) + 4, metrics.height()));
  Button->ImageNormal = PictureOf({33, 44}, Qt::white);
  Button->AutoSize = true;
  EXPECT_EQ(Button->size(), QSize(33, 44));
}

TEST(ImageButtonEx, TheMiddleIsStretchedBetweenTheEnds) {
  TRdImageButtonEx button;
  button.resize(50, 20);
  button.ImageNormalLeft = PictureOf({6, 10}, Qt::red);
  button.ImageNormalMiddle = PictureOf({2, 12}, Qt::green);
  button.ImageNormalRight = PictureOf({9, 10}, Qt::blue);
  const QImage image = button.grab().toImage();
  for (const auto& [x, color] : {std::pair{5, Qt::red}, {6, Qt::green}, {40, Qt::green}, {41, Qt::blue}})
    EXPECT_EQ(image.pixelColor(x, 9), QColor(color)) << x;
  EXPECT_NE(image.pixelColor(45, 11), QColor(Qt::green)) << "not beneath the end";
}
