// Fold panels: what a click does at once, what follows with the next step, and their neighbours.
#include "controls/fold/RdFoldPanel.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QLineEdit>
#include <QTest>

namespace {

constexpr int kOpen = 100;
constexpr int kClosed = 25;

// Three panels, one beneath the other, all closed.
class FoldPanelTest : public ::testing::Test {
 protected:
  FoldPanelTest() {
    Form.resize(200, 600);
    for (int i = 0; i < 3; ++i) {
      auto* const panel = new TRdFoldPanel(&Form);
      panel->move(0, i * kClosed);
      panel->OnClosed = [this, i] { Told += u"c%1"_qs.arg(i); };
      panel->OnOpened = [this, i] { Told += u"o%1"_qs.arg(i); };
      panel->SetIsOpen(false);
      Panels.emplace_back(panel);
    }
    Form.show();
    Settle(6);
    Told.clear();
  }

  // Waits until that much has been told.
  void Settle(int length) {
    ASSERT_TRUE(QTest::qWaitFor([&] { return Told.size() >= length; }));
  }
  void Click(int panel) {
    const int told = static_cast<int>(Told.size());
    Panels[static_cast<std::size_t>(panel)]->Header().Click();
    Settle(told + 2);
  }
  std::vector<int> Tops() { return {Panels[0]->y(), Panels[1]->y(), Panels[2]->y()}; }

  QWidget Form;
  std::vector<QPointer<TRdFoldPanel>> Panels;
  QString Told;
};

}  // namespace

TEST_F(FoldPanelTest, AClickOpensInOneStepAndAnotherCloses) {
  TRdFoldPanel& panel = *Panels[0];
  panel.OnTopButtonClick = [this] { Told += u"t0"_qs; };
  EXPECT_EQ(panel.height(), kClosed);
  panel.Header().Click();
  EXPECT_TRUE(panel.IsOpen());
  EXPECT_TRUE(panel.Header().Expand);
  EXPECT_EQ(panel.height(), kClosed) << "the step comes later";
  Settle(4);
  EXPECT_EQ(Told, u"t0o0");
  EXPECT_EQ(panel.height(), kOpen);
  EXPECT_EQ(panel.ExpandStep(), kOpen / 40);
  panel.OnTopButtonClick = {};
  panel.SetMaxHeight(80);
  Click(0);
  EXPECT_EQ(panel.OldHeight(), 80);
  EXPECT_EQ(panel.height(), kClosed);
  panel.SetCanExpand(false);
  panel.Header().Click();
  EXPECT_FALSE(panel.IsOpen());
}

TEST_F(FoldPanelTest, PanelsBelowMoveAndComeBackInAnyOrder) {
  using TTops = std::vector<int>;
  const TTops closed{0, 25, 50};
  EXPECT_EQ(Tops(), closed);
  Click(0);
  EXPECT_EQ(Tops(), (TTops{0, 100, 125}));
  Click(1);
  EXPECT_EQ(Tops(), (TTops{0, 100, 200}));
  Told.clear();
  Panels[0]->Header().Click();
  Settle(4);
  EXPECT_EQ(Told.size(), 4) << "the open one below closes along";
  EXPECT_EQ(Tops(), closed);
  Click(1);
  Click(0);
  Click(1);
  EXPECT_EQ(Tops(), (TTops{0, 100, 125})) << "the lower one was opened first and closed first";
  Panels[0]->SetIsOpen(true);
  Settle(static_cast<int>(Told.size()) + 2);
  Click(0);
  EXPECT_EQ(Tops(), closed);
}

TEST_F(FoldPanelTest, AFoldPanelGrowsWithTheOneOnIt) {
  std::vector<TRdFoldPanel*> inner;
  for (const int y : {30, 60}) {
    inner.push_back(new TRdFoldPanel(Panels[0]));
    inner.back()->OnOpened = inner.back()->OnClosed = [this] { Told += u"ii"_qs; };
    inner.back()->move(0, y);
    inner.back()->SetIsOpen(false);
  }
  Settle(4);
  inner[0]->Header().Click();  // while the outer one is closed
  Settle(6);
  Click(0);
  EXPECT_EQ(Panels[0]->height(), kOpen + 75);
  inner[1]->Header().Click();
  EXPECT_EQ(Panels[0]->height(), kOpen + 150) << "at once";
  Settle(static_cast<int>(Told.size()) + 2);
  EXPECT_EQ(inner[1]->ParentHeight(), kOpen + 75);
  EXPECT_EQ(Panels[1]->y(), kOpen + 150);
  Click(0);
  Click(0);
  EXPECT_EQ(Panels[0]->height(), kOpen + 150) << "opened again with the open ones";
  inner[0]->Header().Click();  // takes the one below along
  Settle(static_cast<int>(Told.size()) + 4);
  EXPECT_EQ(Panels[0]->height(), kOpen);
  EXPECT_EQ(Panels[1]->y(), kOpen);
}

TEST_F(FoldPanelTest, ToolsHearWhetherItIsOpenAndReachNothingInAClosedOne) {
  QLineEdit shown(Panels[0]);
  QLineEdit hidden(Panels[0]);
  shown.show();
  hidden.hide();
  Panels[0]->ButtonCaption = u"Details"_qs;
  Click(0);
  for (const bool open : {true, false, true}) {
    EXPECT_EQ(shown.isVisible(), open);
    EXPECT_FALSE(hidden.isVisible());
    for (QWidget* const widget : std::initializer_list<QWidget*>{Panels[0], &Panels[0]->Header()}) {
      QAccessibleInterface* const told = QAccessible::queryAccessibleInterface(widget);
      ASSERT_NE(told, nullptr);
      EXPECT_EQ(told->text(QAccessible::Name), u"Details");
      EXPECT_EQ(told->state().expanded, open);
      EXPECT_EQ(told->state().collapsed, !open);
    }
    Click(0);
  }
}

TEST_F(FoldPanelTest, AnyHandlerMayDeleteThePanel) {
  TButtonEvent TRdFoldPanel::*const events[] = {&TRdFoldPanel::OnTopButtonClick, &TRdFoldPanel::OnOpened,
                                                &TRdFoldPanel::OnClosed};
  for (std::size_t i = 0; i < Panels.size(); ++i) {
    QPointer<TRdFoldPanel>& panel = Panels[i];
    panel.data()->*events[i] = [&panel] { delete panel.data(); };
    if (i == 2)
      panel->SetIsOpen(false);
    else
      QTest::mouseClick(&panel->Header(), Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&panel] { return panel.isNull(); })) << i;
  }
}
