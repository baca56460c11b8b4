// Menus and tool bars, the status bar, and the row of tabs.
#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QTabBar>
#include <QTest>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

#include "controls/bars/BarManager.h"
#include "controls/bars/StatusBar.h"
#include "controls/bars/TabContainerDockSite.h"
#include "controls/picture/Pictures.h"

namespace {

constexpr TBarItemRow kItems[] = {{"mainBar", TBarItemKind::MenuBar, "Main menu"},
                                  {"largeBar", TBarItemKind::ToolBar, "Tools"},
                                  {"pmList", TBarItemKind::Popup},
                                  {"subFile", TBarItemKind::SubItem, "File(&F)"},
                                  {"subEdit", TBarItemKind::SubItem, "Edit(&E)"},
                                  {"btnOpen", TBarItemKind::Button, "Open", false},
                                  {"btnMove", TBarItemKind::Button, "Move..."},
                                  {"btnAll", TBarItemKind::Button, "Select All"},
                                  {"lbtnOpen", TBarItemKind::LargeButton, "Open", false},
                                  {"lbtnMove", TBarItemKind::LargeButton, "Move..."},
                                  {"lbtnUp", TBarItemKind::LargeButton, "Up"}};

constexpr TBarLinkRow kLinks[] = {
    {"mainBar", "subFile"},     {"mainBar", "subEdit"},   {"subFile", "btnOpen"},
    {"subFile", kBarSeparator}, {"subFile", "btnMove"},   {"subEdit", "btnAll"},
    {"largeBar", "lbtnOpen"},   {"largeBar", "lbtnMove"}, {"largeBar", kBarGroupBreak},
    {"largeBar", "lbtnUp"},     {"pmList", "btnAll"},     {"pmList", kBarSeparator},
    {"pmList", kBarSeparator},  {"pmList", "btnMove"},    {"pmList", "btnOpen"}};

class BarManagerTest : public ::testing::Test {
 protected:
  BarManagerTest() {
    Bars.Build(kItems, kLinks);
    Form.setMenuBar(&Bars.MenuBar(u"mainBar"_qs));
    Form.addToolBar(&Bars.ToolBar(u"largeBar"_qs));
    for (const QString& name : {u"btnOpen"_qs, u"btnMove"_qs, u"btnAll"_qs, u"lbtnOpen"_qs, u"lbtnMove"_qs})
      Bars.Button(name).OnClick = [this, name] { Clicked.append(name); };
    Form.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Form));
  }

  QToolButton& ToolButton(const QString& name) {
    return *qobject_cast<QToolButton*>(Bars.ToolBar(u"largeBar"_qs).widgetForAction(&Bars.Button(name)));
  }
  QString TakeClicked() { return std::exchange(Clicked, {}).join(u' '); }

  QMainWindow Form;
  TdxBarManager Bars{Form};
  QStringList Clicked;
};

// Captions in order, "-" for a line between groups.
QString Captions(const QWidget& bar) {
  QStringList captions;
  for (const QAction* action : bar.actions())
    captions.append(action->isSeparator() ? u"-"_qs : action->text());
  return captions.join(u' ');
}

class TabContainerTest : public ::testing::Test {
 protected:
  TabContainerTest() {
    for (const QString& caption : {u"One"_qs, u"Two"_qs, u"Three"_qs}) {
      Panels.push_back(new TdxDockPanel(Site));
      Panels.back()->SetCaption(caption);
    }
    Site.OnActiveChildChanged = [this] { Changes.append(Site.ActiveChildIndex()); };
    Site.resize(400, 200);
    Site.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Site));
  }

  void Press(Qt::Key key, Qt::KeyboardModifiers shift = {}) {
    QTest::keyClick(QApplication::focusWidget(), key, Qt::ControlModifier | shift);
  }
  QTabBar& Bar() { return *Site.findChild<QTabBar*>(); }

  TdxTabContainerDockSite Site;
  std::vector<TdxDockPanel*> Panels;
  QList<int> Changes;
};

}  // namespace

TEST_F(BarManagerTest, PlacesShowTheirItemsInOrderAndEveryChange) {
  EXPECT_EQ(Captions(Bars.MenuBar(u"mainBar"_qs)), u"File(&F) Edit(&E)");
  EXPECT_EQ(Captions(Bars.SubItem(u"subFile"_qs)), u"Open - Move...");
  EXPECT_EQ(Captions(Bars.ToolBar(u"largeBar"_qs)), u"Open Move... - Up");
  EXPECT_EQ(Captions(Bars.Popup(u"pmList"_qs)), u"Select All - - Move... Open");
  ASSERT_EQ(Bars.Components().size(), std::size(kItems));
  for (std::size_t i = 0; i < std::size(kItems); ++i)
    EXPECT_EQ(Bars.Components()[i]->objectName(), QLatin1String(kItems[i].Name));
  TdxBarButton& all = Bars.Button(u"btnAll"_qs);
  all.SetCaption(u"Everything"_qs);
  all.SetEnabled(false);
  EXPECT_EQ(Captions(Bars.SubItem(u"subEdit"_qs)), u"Everything");
  EXPECT_EQ(Captions(Bars.Popup(u"pmList"_qs)), u"Everything - - Move... Open");
  EXPECT_FALSE(Bars.Popup(u"pmList"_qs).actions().first()->isEnabled());
}

TEST_F(BarManagerTest, OnlyEnabledItemsClick) {
  for (const bool enabled : {false, true}) {
    EXPECT_EQ(Bars.Button(u"btnOpen"_qs).Enabled(), enabled);
    Bars.Button(u"btnOpen"_qs).Click();
    QTest::mouseClick(&ToolButton(u"lbtnOpen"_qs), Qt::LeftButton);
    EXPECT_EQ(TakeClicked(), enabled ? u"btnOpen lbtnOpen"_qs : QString());
    Bars.Button(u"btnOpen"_qs).SetEnabled(true);
    Bars.Button(u"lbtnOpen"_qs).SetEnabled(true);
  }
  Bars.Button(u"lbtnUp"_qs).Click();  // has no OnClick
}

TEST_F(BarManagerTest, MnemonicsOpenTheMenuAndKeysPickAnItem) {
  QTest::keyClick(&Form, Qt::Key_F, Qt::AltModifier);
  TdxBarSubItem& file = Bars.SubItem(u"subFile"_qs);
  ASSERT_TRUE(QTest::qWaitFor([&] { return file.isVisible(); }));
  while (file.activeAction() != &Bars.Button(u"btnMove"_qs))
    QTest::keyClick(&file, Qt::Key_Down);
  QTest::keyClick(&file, Qt::Key_Return);
  EXPECT_EQ(TakeClicked(), u"btnMove");
}

TEST_F(BarManagerTest, LargeButtonsShowTheirWholeCaptionAndTakeKeys) {
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
  EXPECT_EQ(TakeClicked(), u"lbtnMove");
}

TEST_F(BarManagerTest, ThePopupShowsAtTheCursorAndPicksByMouse) {
  QCursor::setPos(Form.geometry().topLeft() + QPoint(40, 30));
  TdxBarPopupMenu& popup = Bars.Popup(u"pmList"_qs);
  popup.PopupFromCursorPos();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&popup));
  EXPECT_EQ(popup.pos(), QCursor::pos());
  QTest::mouseClick(&popup, Qt::LeftButton, {}, popup.actionGeometry(&Bars.Button(u"btnMove"_qs)).center());
  EXPECT_EQ(TakeClicked(), u"btnMove");
  EXPECT_FALSE(popup.isVisible());
}

TEST(StatusBar, PanelsChangePlacesWithoutAJumpOfTheHeightAndTheContainerTakesTheRest) {
  QMainWindow form;
  TdxStatusBar& bar = *new TdxStatusBar;
  TdxStatusBarPanel& text = bar.AddTextPanel(200);
  TdxStatusBarPanel& detail = bar.AddContainerPanel();
  form.setStatusBar(&bar);
  form.resize(500, 200);
  text.SetText(u"12 items"_qs);
  detail.Container()->setLayout(new QVBoxLayout);
  auto* const label = new QLabel(u"detail"_qs);
  label->setMinimumHeight(60);
  detail.Container()->layout()->addWidget(label);
  text.SetVisible(false);
  form.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&form));
  const int height = bar.height();
  EXPECT_GE(height, 60);
  for (const bool texts : {false, true}) {
    text.SetVisible(texts);
    detail.SetVisible(!texts);
    QTest::qWait(0);
    const auto isText = [](const QLabel* each) { return each->text() == u"12 items" && each->isVisible(); };
    EXPECT_EQ(std::ranges::any_of(bar.findChildren<QLabel*>(), isText), texts);
    EXPECT_EQ(detail.Container()->isVisible(), !texts);
    EXPECT_EQ(detail.Visible(), !texts);
    EXPECT_EQ(bar.height(), height);
  }
  detail.SetVisible(true);
  for (const int width : {200, 250}) {
    text.SetWidth(width);
    EXPECT_EQ(text.Width(), width);
    ASSERT_TRUE(QTest::qWaitFor([&] { return detail.Container()->x() >= width; }));
    EXPECT_GT(detail.Container()->width(), 200);
  }
}

TEST_F(TabContainerTest, SettingTheIndexFiresOnlyOnAChange) {
  EXPECT_EQ(Site.ChildCount(), 3);
  for (const int index : {0, 2, 2, 3, -1, 99, 1})
    Site.SetActiveChildIndex(index);
  EXPECT_EQ(Changes, (QList{2, 1}));
  EXPECT_TRUE(Panels[1]->isVisibleTo(&Site) && !Panels[2]->isVisibleTo(&Site));
  for (int click = 0; click < 2; ++click)
    QTest::mouseClick(&Bar(), Qt::LeftButton, {}, Bar().tabRect(2).center());
  EXPECT_EQ(Changes, (QList{2, 1, 2}));
  Site.OnActiveChildChanged = [this] { Site.SetActiveChildIndex(0); };
  Site.SetActiveChildIndex(1);
  EXPECT_EQ(Site.ActiveChildIndex(), 0) << "a handler's index stands";
  EXPECT_TRUE(Panels[0]->isVisibleTo(&Site));
}

TEST_F(TabContainerTest, KeysCycleRoundTheEndsFromInsideAPanelAndPassOverTabsThatAreOff) {
  QLineEdit edit(Panels[0]);
  edit.show();
  edit.setFocus();
  const std::tuple<Qt::Key, Qt::KeyboardModifiers, int> steps[] = {
      {Qt::Key_Tab, {}, 1},    {Qt::Key_PageDown, {}, 2},
      {Qt::Key_Tab, {}, 0},    {Qt::Key_Backtab, Qt::ShiftModifier, 2},
      {Qt::Key_PageUp, {}, 1}, {Qt::Key_Tab, Qt::ShiftModifier, 0}};
  for (const auto& [key, shift, expected] : steps) {
    Press(key, shift);
    EXPECT_EQ(Site.ActiveChildIndex(), expected) << key;
  }
  EXPECT_EQ(std::exchange(Changes, {}).size(), 6) << "one change each";
  Panels[1]->SetTabEnabled(false);
  Press(Qt::Key_PageDown);
  Press(Qt::Key_PageUp);
  Panels[2]->SetTabEnabled(false);
  Press(Qt::Key_PageDown);
  EXPECT_EQ(Changes, (QList{2, 0})) << "alone, a tab stays";
}

TEST_F(TabContainerTest, TabsShowCaptionAndPicture) {
  Panels[1]->SetPicture(PictureOf({24, 24}, Qt::red));
  EXPECT_EQ(Bar().tabText(1), u"Two");
  const QImage tab = Bar().grab(Bar().tabRect(1)).toImage();
  int red = 0;
  for (int x = 0; x < tab.width(); ++x)
    red += tab.pixelColor(x, tab.height() / 2) == QColor(Qt::red) ? 1 : 0;
  EXPECT_EQ(red, 24);
}
