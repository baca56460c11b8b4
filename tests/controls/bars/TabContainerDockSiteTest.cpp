#include "controls/bars/TabContainerDockSite.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QLineEdit>
#include <QTabBar>
#include <QTest>
#include <QVBoxLayout>

#include "controls/picture/Picture.h"

namespace {

class TabContainerTest : public ::testing::Test {
 protected:
  TabContainerTest() {
    for (const QString& caption : {u"One"_qs, u"Two"_qs, u"Three"_qs}) {
      Panels.push_back(new TdxDockPanel(Site));
      Panels.back()->SetCaption(caption);
    }
    Site.OnActiveChildChanged = [this] { Changes.append(Site.ActiveChildIndex()); };
  }

  void Show() {
    Site.resize(400, 200);
    Site.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Site));
  }

  QTabBar& Bar() { return *Site.findChild<QTabBar*>(); }

  TdxTabContainerDockSite Site;
  std::vector<TdxDockPanel*> Panels;
  QList<int> Changes;
};

}  // namespace

TEST_F(TabContainerTest, SettingTheIndexFiresOnlyOnAChange) {
  EXPECT_EQ(Site.ChildCount(), 3);
  EXPECT_EQ(Site.ActiveChildIndex(), 0);
  for (const int index : {0, 2, 2, 3, -1, 99, 1})
    Site.SetActiveChildIndex(index);
  EXPECT_EQ(Changes, (QList{2, 1}));
  EXPECT_TRUE(Panels[1]->isVisibleTo(&Site));
  EXPECT_FALSE(Panels[2]->isVisibleTo(&Site));
  Site.OnActiveChildChanged = [this] { Site.SetActiveChildIndex(0); };
  Site.SetActiveChildIndex(2);
  EXPECT_EQ(Site.ActiveChildIndex(), 0) << "a handler's index stands";
  EXPECT_TRUE(Panels[0]->isVisibleTo(&Site));
}

TEST_F(TabContainerTest, AClickOnATabActivatesIt) {
  Show();
  QTest::mouseClick(&Bar(), Qt::LeftButton, {}, Bar().tabRect(1).center());
  QTest::mouseClick(&Bar(), Qt::LeftButton, {}, Bar().tabRect(1).center());
  EXPECT_EQ(Changes, QList{1});
}

TEST_F(TabContainerTest, KeysCycleRoundTheEndsFromInsideAPanel) {
  auto* edit = new QLineEdit(Panels[0]);
  Show();
  edit->setFocus();
  const std::tuple<Qt::Key, Qt::KeyboardModifiers, int> steps[] = {
      {Qt::Key_Tab, Qt::ControlModifier, 1},    {Qt::Key_PageDown, Qt::ControlModifier, 2},
      {Qt::Key_Tab, Qt::ControlModifier, 0},    {Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier, 2},
      {Qt::Key_PageUp, Qt::ControlModifier, 1}, {Qt::Key_Tab, Qt::ControlModifier | Qt::ShiftModifier, 0},
  };
  for (const auto& [key, modifiers, expected] : steps) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    EXPECT_EQ(Site.ActiveChildIndex(), expected) << key;
  }
  EXPECT_EQ(Changes.size(), 6) << "one change each";
}

TEST_F(TabContainerTest, TabsShowCaptionAndPicture) {
  QImage image(24, 24, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::red);
  Panels[1]->SetPicture(TPicture(image));
  EXPECT_EQ(Bar().tabText(1), u"Two");
  Show();
  const QImage tab = Bar().grab(Bar().tabRect(1)).toImage();
  int red = 0;
  for (int x = 0; x < tab.width(); ++x)
    red += tab.pixelColor(x, tab.height() / 2) == QColor(Qt::red) ? 1 : 0;
  EXPECT_EQ(red, 24);
}

TEST_F(TabContainerTest, KeysPassOverTabsThatAreOff) {
  Show();
  Panels[1]->SetTabEnabled(false);
  QTest::keyClick(&Site, Qt::Key_PageDown, Qt::ControlModifier);
  EXPECT_EQ(Site.ActiveChildIndex(), 2);
  QTest::keyClick(&Site, Qt::Key_PageUp, Qt::ControlModifier);
  EXPECT_EQ(Site.ActiveChildIndex(), 0);
  Panels[2]->SetTabEnabled(false);
  QTest::keyClick(&Site, Qt::Key_PageDown, Qt::ControlModifier);
  EXPECT_EQ(Changes, (QList{2, 0})) << "alone, a tab stays";
}
