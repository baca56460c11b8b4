// The list of the Download Directory tab as the form stores it.
#include "views/DownloadsTab.h"

#include <gtest/gtest.h>

#include <QCheckBox>

#include "controls/list/rd/RdListView.h"
#include "controls/picture/ImageList.h"
#include "views/Pictures.h"

TEST(TDownloadsTabTest, TheListIsAsStored) {
  const auto images = MakeDownloadImages();
  QWidget panel;
  TDownloadsTab tab(*images, panel);
  tab.FormShow();
  auto* const list = dynamic_cast<TRdListView*>(panel.findChild<QWidget*>(u"lvDownloadsFile"_qs));
  ASSERT_NE(list, nullptr);
  const std::pair<QString, int> columns[] = {
      {QString(11, u' ') + u"Name"_qs, 210}, {u"Location"_qs, 320}, {u"Size"_qs, 120}, {u"Type"_qs, 120}};
  ASSERT_EQ(list->Columns().Count(), std::ssize(columns));
  for (int column = 0; column < list->Columns().Count(); ++column) {
    EXPECT_EQ(list->Columns()[column].Caption(), columns[column].first);
    EXPECT_EQ(list->Columns()[column].Width(), columns[column].second);
  }
  EXPECT_TRUE(list->Options().CheckBoxes);
  EXPECT_FALSE(list->OpenOwnerDraw() || list->OpenGroupDraw());
  EXPECT_TRUE(list->Bars().ShowVertScroll() && list->Bars().ShowHorzScroll());
  EXPECT_EQ(list->SmallImages(), images.get());
  EXPECT_EQ(list->Skin().Header.GradientColorStart, clCream);
  EXPECT_FALSE(list->Skin().Header.HeaderBackGround.Empty());
  EXPECT_EQ(list->Items().Count(), 0);
}

TEST(TDownloadsTabTest, TheBoxInTheHeaderChecksEveryRow) {
  const auto images = MakeDownloadImages();
  QWidget panel;
  const TDownloadsTab tab(*images, panel);
  auto* const list = dynamic_cast<TRdListView*>(panel.findChild<QWidget*>(u"lvDownloadsFile"_qs));
  list->Items().BeginUpdate(5000);
  for (int row = 0; row < 3; ++row)
    list->Items().Add();
  list->Items().EndUpdate();
  panel.findChild<QCheckBox*>(u"CheckBox_Downloads"_qs)->click();
  EXPECT_TRUE(list->CheckAll());
  EXPECT_EQ(list->Model().Checks().CheckedTotal(), 3);
}
