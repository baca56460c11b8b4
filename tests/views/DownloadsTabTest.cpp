// The Download Directory tab on its panel, between real commands and a real status bar.
#include "views/downloads/DownloadsTab.h"

#include "TabFixture.h"
#include "controls/list/rd/RdListView.h"

namespace {

class DownloadsTab : public TTabTest {
 protected:
  DownloadsTab() {
    FForm.setCentralWidget(&FPanel);
    FForm.resize(820, 400);
    FForm.show();
    FTab.FormShow();
  }
  ~DownloadsTab() override {
    FForm.takeCentralWidget();
    FList.Clear();
  }

  void Fill(int count) {
    TList<TFileInfoEx> records;
    for (int i = 0; i < count; ++i)
      records.Add({u"/d/"_qs, u"f%1.%2"_qs.arg(i).arg(i % 2 == 0 ? u"txt"_qs : u"zip"_qs),
                   static_cast<quint64>((i * 7) % 11)});
    FTab.FillRows(records, {u"/d/"_qs});
  }
  [[nodiscard]] QString Sizes() const {
    QString sizes;
    for (const TListItem* item : FList.Items())
      sizes += item->SubItems().Text(1).section(u' ', 0, 0) + u' ';
    return sizes.trimmed();
  }
  void Release(const QPoint& at) { QTest::mouseClick(FList.viewport(), Qt::LeftButton, {}, at); }

  QWidget FPanel;
  TDownloadsTab& FTab = *new TDownloadsTab(Parts(), FPanel);
  TRdListView& FList = *dynamic_cast<TRdListView*>(FPanel.findChild<QWidget*>(u"lvDownloadsFile"_qs));
  QCheckBox& FBox = *FPanel.findChild<QCheckBox*>(u"CheckBox_Downloads"_qs);
};

}  // namespace

TEST_F(DownloadsTab, TheBoxHasItsRoomInTheHeaderOnce) {
  FTab.FormShow();
  EXPECT_EQ(FList.Columns()[0].Caption(), QString(11, u' ') + u"Name"_qs);
  EXPECT_EQ(FBox.pos(), QPoint(6, 7) + FList.HeaderRect().topLeft() - QPoint(FList.HeaderRect().left(), 0));
}

TEST_F(DownloadsTab, AFillEndsWithTheLargestFirstAndAClickOnSizeTurnsIt) {
  Fill(4);
  EXPECT_EQ(Sizes(), u"10 7 3 0"_qs);
  EXPECT_EQ(FList.Columns()[2].ImageIndex(), 0);
  EXPECT_EQ(FList.SortColumnIndex(), 2);
  FList.OnColumnClick(&FList.Columns()[2]);
  EXPECT_EQ(Sizes(), u"0 3 7 10"_qs);
  EXPECT_EQ(FList.Columns()[2].ImageIndex(), 1);
  EXPECT_EQ(FList.MouseState().SortState, ssDown);
  FList.OnColumnClick(&FList.Columns()[0]);
  EXPECT_EQ(FList.Columns()[0].ImageIndex(), 0);
  EXPECT_EQ(FList.Columns()[2].ImageIndex(), -1);
  EXPECT_EQ(FList.Items()[0]->Caption(), u"f0.txt"_qs);
}

TEST_F(DownloadsTab, FiveHundredRowsInTheOrderOfTheRecordsAndEachItsIcon) {
  Fill(501);
  EXPECT_EQ(FTab.RowCount(), 500);
  EXPECT_EQ(FImages.cxmglstdownloadfiles.Count(), 502);
  for (const TListItem* item : FList.Items())
    ASSERT_NE(item->Caption(), u"f500.txt"_qs);
  Fill(2);
  EXPECT_EQ(FTab.RowCount(), 2);
  EXPECT_EQ(FImages.cxmglstdownloadfiles.Count(), 4) << "icons of the fill before have gone";
  EXPECT_EQ(FList.Items()[0]->ImageIndex(), 3) << "the second record is the larger one";
  TList<TFileInfoEx> twice;
  for (int i = 0; i < 2; ++i)
    twice.Add({u"/d/"_qs, u"a.txt"_qs, 1});
  FTab.FillRows(twice, {u"/d/"_qs});
  EXPECT_EQ(FImages.cxmglstdownloadfiles.Count(), 3) << "a path listed twice has one";
}

TEST_F(DownloadsTab, AnyClickCountsTheBoxes) {
  const QPoint beside(5, FList.viewport()->height() - 5);
  Release(beside);
  EXPECT_TRUE(FBox.isChecked()) << "of no rows, all are checked";
  EXPECT_FALSE(Enabled("dxbrbtnDownloadFilesDelete"));
  Fill(3);
  FList.Items()[1]->SetChecked(true);
  Release(beside);
  EXPECT_FALSE(FBox.isChecked());
  for (const char* on : {"lbtnDelete", "lbtnMove", "dxbrbtnDownloadFilesDelete", "dxbrbtnDownloadFilesMove"})
    EXPECT_TRUE(Enabled(on)) << on;
  EXPECT_FALSE(Enabled("btnDelete"));
  FList.SetItemFocused(FList.Items()[1]);
  QTest::keyClick(&FList, Qt::Key_Space);
  EXPECT_FALSE(Enabled("lbtnDelete")) << "the space bar is a click on the box";
}

TEST_F(DownloadsTab, TheHeaderBoxAndTheCommandsCheckEveryRow) {
  Fill(3);
  const auto checked = [this] {
    QString marks;
    for (const TListItem* item : FList.Items())
      marks += item->Checked() ? u'x' : u'-';
    return marks;
  };
  FBox.click();
  EXPECT_EQ(checked(), u"xxx"_qs);
  EXPECT_TRUE(Enabled("lbtnDelete"));
  FTab.DeselectAll();
  EXPECT_EQ(checked(), u"---"_qs);
  EXPECT_FALSE(FBox.isChecked());
  EXPECT_TRUE(Enabled("lbtnDelete")) << "only clicks count";
  FTab.SelectAll();
  EXPECT_TRUE(FBox.isChecked());
  FList.Items()[0]->SetChecked(false);
  FTab.InvertSelection();
  EXPECT_EQ(checked(), u"x--"_qs);
  EXPECT_FALSE(FBox.isChecked());
}

TEST_F(DownloadsTab, TheSelectedRowTurnsTheLargeButtonsOnAndAFailedOpenIsTold) {
  Fill(2);
  FTab.Open();
  EXPECT_TRUE(FDialogs.Said.isEmpty());
  FList.SetSelected(FList.Items()[0]);
  EXPECT_TRUE(Enabled("lbtnOpen"));
  FTab.Open();
  EXPECT_EQ(FDialogs.Said, QStringList{u"Open file failed"_qs});
  FList.SetSelected(nullptr);
  EXPECT_FALSE(Enabled("lbtnProperty"));
}
