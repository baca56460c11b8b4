#include "controls/bars/StatusBar.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QMainWindow>
#include <QTest>
#include <QVBoxLayout>

namespace {

class StatusBarTest : public ::testing::Test {
 protected:
  StatusBarTest() {
    Form.setStatusBar(&Bar);
    Form.resize(500, 200);
    Text.SetText(u"12 items"_qs);
    Detail.Container()->setLayout(new QVBoxLayout);
    auto* label = new QLabel(u"detail"_qs);
    label->setMinimumHeight(60);
    Detail.Container()->layout()->addWidget(label);
  }

  void Show() {
    Form.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&Form));
  }

  [[nodiscard]] bool IsTextShown() {
    for (const QLabel* label : Bar.findChildren<QLabel*>())
      if (label->text() == Text.Text()) return label->isVisible();
    return false;
  }

  QMainWindow Form;
  TdxStatusBar& Bar = *new TdxStatusBar;
  TdxStatusBarPanel& Text = Bar.AddTextPanel(200);
  TdxStatusBarPanel& Detail = Bar.AddContainerPanel();
};

}  // namespace

TEST_F(StatusBarTest, PanelsChangePlacesWithoutAJumpOfTheHeight) {
  Text.SetVisible(false);
  Show();
  const int height = Bar.height();
  EXPECT_GE(height, 60);
  EXPECT_FALSE(IsTextShown());
  EXPECT_TRUE(Detail.Container()->isVisible());

  Text.SetVisible(true);
  Detail.SetVisible(false);
  QTest::qWait(0);
  EXPECT_TRUE(IsTextShown());
  EXPECT_FALSE(Detail.Container()->isVisible());
  EXPECT_FALSE(Detail.Visible());
  EXPECT_EQ(Bar.height(), height);
}

TEST_F(StatusBarTest, ATextPanelKeepsItsWidthAndTheContainerTakesTheRest) {
  Show();
  EXPECT_EQ(Text.Width(), 200);
  EXPECT_GT(Detail.Container()->width(), 200);
  EXPECT_GE(Detail.Container()->x(), 200);
  Text.SetWidth(250);
  ASSERT_TRUE(QTest::qWaitFor([&] { return Detail.Container()->x() >= 250; }));
}
