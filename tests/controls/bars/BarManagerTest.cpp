#include "controls/bars/BarManager.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMainWindow>
#include <QMenuBar>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

namespace {

constexpr TBarItemRow kItems[] = {
    {"mainBar", TBarItemKind::MenuBar, "Main menu"},
    {"largeBar", TBarItemKind::ToolBar, "Tools"},
    {"pmList", TBarItemKind::Popup},
    {"subFile", TBarItemKind::SubItem, "File(&F)"},
    {"subEdit", TBarItemKind::SubItem, "Edit(&E)"},
    {"btnOpen", TBarItemKind::Button, "Open", false},
    {"btnMove", TBarItemKind::Button, "Move..."},
    {"btnAll", TBarItemKind::Button, "Select All"},
    {"lbtnOpen", TBarItemKind::LargeButton, "Open", false},
    {"lbtnMove", TBarItemKind::LargeButton, "Move..."},
    {"lbtnUp", TBarItemKind::LargeButton, "Up"},
};

constexpr TBarLinkRow kLinks[] = {
    {"mainBar", "subFile"},     {"mainBar", "subEdit"},   {"subFile", "btnOpen"},
    {"subFile", kBarSeparator}, {"subFile", "btnMove"},   {"subEdit", "btnAll"},
    {"largeBar", "lbtnOpen"},   {"largeBar", "lbtnMove"}, {"largeBar", kBarGroupBreak},
    {"largeBar", "lbtnUp"},     {"pmList", "btnAll"},     {"pmList", kBarSeparator},
    {"pmList", kBarSeparator},  {"pmList", "btnMove"},    {"pmList", "btnOpen"},
};

class BarManagerTest : public ::testing::Test {
 protected:
  BarManagerTest() {
    Bars.Build(kItems, kLinks);
    Form.setMenuBar(&Bars.MenuBar(u"mainBar"_qs));
    Form.addToolBar(&Bars.ToolBar(u"largeBar"_qs));
    for (const QString& name : {u"btnOpen"_qs, u"btnMove"_qs, u"btnAll"_qs, u"lbtnOpen"_qs, u"lbtnMove"_qs})
      Bars.Button(name).OnClick = [this, name] { Clicked.append(name); };
  }

  void Show() {
    Form.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Form));
  }

  QToolButton& ToolButton(const QString& name) {
    return *qobject_cast<QToolButton*>(Bars.ToolBar(u"largeBar"_qs).widgetForAction(&Bars.Button(name)));
  }

  QMainWindow Form;
  TdxBarManager Bars{Form};
  QStringList Clicked;
};

// Captions in order, "-" for a line between groups.
QStringList Captions(const QWidget& bar) {
  QStringList captions;
  for (const QAction* action : bar.actions())
    captions.append(action->isSeparator() ? u"-"_qs : action->text());
  return captions;
}

}  // namespace

TEST_F(BarManagerTest, PlacesShowTheirItemsInOrder) {
  EXPECT_EQ(Captions(Bars.MenuBar(u"mainBar"_qs)), (QStringList{u"File(&F)"_qs, u"Edit(&E)"_qs}));
  EXPECT_EQ(Captions(Bars.SubItem(u"subFile"_qs)), (QStringList{u"Open"_qs, u"-"_qs, u"Move..."_qs}));
  EXPECT_EQ(Captions(Bars.ToolBar(u"largeBar"_qs)),
            (QStringList{u"Open"_qs, u"Move..."_qs, u"-"_qs, u"Up"_qs}));
  EXPECT_EQ(Captions(Bars.Popup(u"pmList"_qs)),
            (QStringList{u"Select All"_qs, u"-"_qs, u"-"_qs, u"Move..."_qs, u"Open"_qs}));
}

TEST_F(BarManagerTest, ComponentsCarryTheirNamesInTheOrderOfTheRows) {
  ASSERT_EQ(Bars.Components().size(), std::size(kItems));
  for (std::size_t i = 0; i < std::size(kItems); ++i)
    EXPECT_EQ(Bars.Components()[i]->objectName(), QLatin1String(kItems[i].Name));
}

TEST_F(BarManagerTest, AChangeOfAnItemShowsInAllItsPlaces) {
  TdxBarButton& all = Bars.Button(u"btnAll"_qs);
  all.SetCaption(u"Everything"_qs);
  all.SetEnabled(false);
  EXPECT_EQ(Captions(Bars.SubItem(u"subEdit"_qs)).first(), u"Everything");
  EXPECT_EQ(Captions(Bars.Popup(u"pmList"_qs)).first(), u"Everything");
  EXPECT_FALSE(Bars.Popup(u"pmList"_qs).actions().first()->isEnabled());
}

TEST_F(BarManagerTest, OnlyEnabledItemsClick) {
  Show();
  EXPECT_FALSE(Bars.Button(u"btnOpen"_qs).Enabled());
  Bars.Button(u"btnOpen"_qs).Click();
  QTest::mouseClick(&ToolButton(u"lbtnOpen"_qs), Qt::LeftButton);
  EXPECT_EQ(Clicked, QStringList());
  Bars.Button(u"btnOpen"_qs).SetEnabled(true);
  Bars.Button(u"lbtnOpen"_qs).SetEnabled(true);
  Bars.Button(u"btnOpen"_qs).Click();
  QTest::mouseClick(&ToolButton(u"lbtnOpen"_qs), Qt::LeftButton);
  EXPECT_EQ(Clicked, (QStringList{u"btnOpen"_qs, u"lbtnOpen"_qs}));
  Bars.Button(u"lbtnUp"_qs).Click();  // has no OnClick
}

TEST_F(BarManagerTest, MnemonicsOpenTheMenuAndKeysPickAnItem) {
  Show();
  QTest::keyClick(&Form, Qt::Key_F, Qt::AltModifier);
  TdxBarSubItem& file = Bars.SubItem(u"subFile"_qs);
  ASSERT_TRUE(QTest::qWaitFor([&] { return file.isVisible(); }));
  while (file.activeAction() != &Bars.Button(u"btnMove"_qs))
    QTest::keyClick(&file, Qt::Key_Down);
  QTest::keyClick(&file, Qt::Key_Return);
  EXPECT_EQ(Clicked, QStringList{u"btnMove"_qs});
}

TEST_F(BarManagerTest, LargeButtonsShowTheirWholeCaptionAndTakeKeys) {
  Show();
  QToolButton& move = ToolButton(u"lbtnMove"_qs);
  EXPECT_EQ(move.text(), u"Move...");
  EXPECT_EQ(move.toolButtonStyle(), Qt::ToolButtonTextUnderIcon);
  Bars.Button(u"lbtnMove"_qs).SetHint(u"Moves things"_qs);
  EXPECT_EQ(move.toolTip(), u"Moves things");
  QToolButton& up = ToolButton(u"lbtnUp"_qs);
  up.setFocus(Qt::TabFocusReason);
  QTest::keyClick(&up, Qt::Key_Tab);
  ASSERT_TRUE(move.hasFocus()) << "Tab goes round to the first enabled button";
  QTest::keyClick(&move, Qt::Key_Space);
  EXPECT_EQ(Clicked, QStringList{u"lbtnMove"_qs});
}

TEST_F(BarManagerTest, ThePopupShowsAtTheCursorAndPicksByMouse) {
  Show();
  QCursor::setPos(Form.geometry().topLeft() + QPoint(40, 30));
  TdxBarPopupMenu& popup = Bars.Popup(u"pmList"_qs);
  popup.PopupFromCursorPos();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&popup));
  EXPECT_EQ(popup.pos(), QCursor::pos());
  QTest::mouseClick(&popup, Qt::LeftButton, {}, popup.actionGeometry(&Bars.Button(u"btnMove"_qs)).center());
  EXPECT_EQ(Clicked, QStringList{u"btnMove"_qs});
  EXPECT_FALSE(popup.isVisible());
}

TEST(BarManagerDeathTest, AnUnknownNameEndsTheProgram) {
  QWidget form;
  TdxBarManager bars(form);
  bars.Build(kItems, {});
  qputenv("QT_FORCE_STDERR_LOGGING", "1");  // the message shall not go to the debugger
  EXPECT_DEATH((void)bars.Button(u"nobody"_qs), "nobody");
  EXPECT_DEATH((void)bars.Popup(u"btnOpen"_qs), "btnOpen");
}
