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
    for (const int y : {0, kClosed, 2 * kClosed}) {
      auto* const panel = new TRdFoldPanel(&Form);
      panel->move(0, y);
      panel->OnOpened = panel->OnClosed = [this] { ++Steps; };
      panel->SetIsOpen(false);
      Panels.emplace_back(panel);
    }
    Form.show();
    Settle(3);
  }

  // Waits for that many panels to be all the way.
  void Settle(int steps) {
    ASSERT_TRUE(QTest::qWaitFor([&] { return Steps >= steps; }));
    Steps -= steps;
  }
  void Click(TRdFoldPanel& panel, int steps = 1) {
    panel.Header().Click();
    Settle(steps);
  }
  std::vector<int> Tops() { return {Panels[0]->y(), Panels[1]->y(), Panels[2]->y()}; }

  QWidget Form;
  std::vector<QPointer<TRdFoldPanel>> Panels;
  int Steps = 0;
};

}  // namespace

TEST_F(FoldPanelTest, AClickOpensInOneStepAndAnotherCloses) {
  TRdFoldPanel& panel = *Panels[0];
  int clicks = 0;
  panel.OnTopButtonClick = [&clicks] { ++clicks; };
  panel.Header().Click();
  EXPECT_EQ(panel.height(), kClosed) << "the step comes later";
  Settle(1);
  EXPECT_EQ(panel.height(), kOpen);
  EXPECT_EQ(panel.ExpandStep(), kOpen / 40);
  Click(panel);
  EXPECT_EQ(panel.OldHeight(), kOpen);
  EXPECT_EQ(panel.height(), kClosed);
  panel.SetCanExpand(false);
  panel.Header().Click();
  EXPECT_FALSE(panel.IsOpen());
  EXPECT_EQ(clicks, 3);
}

TEST_F(FoldPanelTest, PanelsBelowMoveAndComeBackInAnyOrder) {
  using TTops = std::vector<int>;
  const TTops closed{0, 25, 50};
  Click(*Panels[0]);
  EXPECT_EQ(Tops(), (TTops{0, 100, 125}));
  Click(*Panels[1]);
  EXPECT_EQ(Tops(), (TTops{0, 100, 200}));
  Click(*Panels[0], 2);  // the open one below closes along
  EXPECT_EQ(Tops(), closed);
  for (const int panel : {1, 0, 1})
    Click(*Panels[static_cast<std::size_t>(panel)]);
  EXPECT_EQ(Tops(), (TTops{0, 100, 125})) << "the lower one was opened first and closed first";
  Panels[0]->SetIsOpen(true);
  Settle(1);
  EXPECT_EQ(Tops(), (TTops{0, 100, 125})) << "it was open";
  Click(*Panels[0]);
  EXPECT_EQ(Tops(), closed);
}

TEST_F(FoldPanelTest, AFoldPanelGrowsWithTheOneOnIt) {
  std::vector<TRdFoldPanel*> inner;
  for (const int y : {30, 60}) {
    inner.push_back(new TRdFoldPanel(Panels[0]));
    inner.back()->OnOpened = inner.back()->OnClosed = [this] { ++Steps; };
    inner.back()->move(0, y);
    inner.back()->SetIsOpen(false);
  }
  Settle(2);
  Click(*inner[0]);  // while the outer one is closed
  Click(*Panels[0]);
  EXPECT_EQ(Panels[0]->height(), kOpen + 75);
  inner[1]->Header().Click();
  EXPECT_EQ(Panels[0]->height(), kOpen + 150) << "at once";
  Settle(1);
  EXPECT_EQ(inner[1]->ParentHeight(), kOpen + 75);
  EXPECT_EQ(Panels[1]->y(), kOpen + 150);
  Click(*Panels[0]);
  Click(*Panels[0]);
  EXPECT_EQ(Panels[0]->height(), kOpen + 150) << "opened again with the open ones";
  Click(*inner[0], 2);  // takes the one below along
  EXPECT_EQ(Panels[0]->height(), kOpen);
  EXPECT_EQ(Panels[1]->y(), kOpen);
}

TEST_F(FoldPanelTest, ToolsHearWhetherItIsOpenAndReachNothingInAClosedOne) {
  QLineEdit shown(Panels[0]);
  QLineEdit hidden(Panels[0]);
  shown.show();
  hidden.hide();
  Panels[0]->ButtonCaption = u"Details"_qs;
  Click(*Panels[0]);
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
    Click(*Panels[0]);
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
