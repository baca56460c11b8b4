#include <QCheckBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QLineEdit>
#include <QRadioButton>
#include <QTest>
#include <QTimer>

#include "FormsFixture.h"
#include "platform/KnownFolders.h"

namespace {

// A tree that no walk ends before the test has pressed a button. Under Wine it is on the drive of the build
// folder.
QString LargeTree() {
  const QFileInfo programs(u"/usr"_qs);
  return programs.exists() ? QDir::toNativeSeparators(programs.absoluteFilePath()) : GetWindowsFolder();
}

}  // namespace

class Wizard : public TFormsTest {
 protected:
  void StartLargeScan() {
    Open();
    ShowWizard();
    FWizard->PreselectFolder(LargeTree());
    Click(Button("btnAnalyze"));
    ASSERT_FALSE(OnFirstPage());
  }
};

TEST_F(Wizard, AFolderIsAnalysedAndShown) {
  Open();
  ShowWizard();
  FWizard->PreselectFolder(FTree.Path());
  Click(Button("btnAnalyze"));
  ASSERT_TRUE(WaitForResult());
  EXPECT_EQ(Captions("lvTop"), (QStringList{u"films"_qs, u"long.mkv"_qs, u"music"_qs, u"song.ogg"_qs,
                                            u"short.mkv"_qs, u"cover.jpg"_qs, u"root.bin"_qs}))
      << "largest first; the empty folder has no row";
  EXPECT_EQ(Captions("lvTopFile").size(), 5);
  EXPECT_EQ(Label("lblName"), FTree.Path());
  EXPECT_EQ(Label("lblFiles"), u"5"_qs);
  EXPECT_EQ(Label("lblFolders"), u"4"_qs);
  EXPECT_EQ(Label("lblSize"), u"3.84 MB"_qs);
  EXPECT_EQ(Label("lblUsed"), u"hidden"_qs);
  EXPECT_TRUE(FWizard->Targets().isEmpty());
}

TEST_F(Wizard, AnalyzeIsOnExactlyWhileThereIsSomethingToAnalyse) {
  Open();
  ShowWizard();
  EXPECT_TRUE(Button("btnAnalyze").isEnabled()) << "the system drive comes checked";
  for (TListItem* drive : List("lvDrive").Items())
    drive->SetChecked(false);
  EXPECT_FALSE(Button("btnAnalyze").isEnabled());
  List("lvDrive").Items()[0]->SetChecked(true);
  EXPECT_TRUE(Button("btnAnalyze").isEnabled());

  auto& folder = *FWizard->findChild<QLineEdit*>(u"edtBtnFolder"_qs);
  FWizard->findChild<QRadioButton*>(u"rbScanFolder"_qs)->click();
  EXPECT_TRUE(folder.isEnabled());
  EXPECT_FALSE(List("lvDrive").isEnabled());
  folder.setText(FTree.Path("no such folder"));
  EXPECT_FALSE(Button("btnAnalyze").isEnabled());
  folder.setText(FTree.Path("films"));
  EXPECT_TRUE(Button("btnAnalyze").isEnabled());
}

TEST_F(Wizard, BrowsePutsTheChosenFolderIntoTheEdit) {
  Open();
  ShowWizard();
  FWizard->findChild<QRadioButton*>(u"rbScanFolder"_qs)->click();
  auto& folder = *FWizard->findChild<QLineEdit*>(u"edtBtnFolder"_qs);
  const QString before = folder.text();
  Button("Button_Browse").click();
  EXPECT_EQ(folder.text(), before) << "cancelled";
  FDialogs.Folder = FTree.Path("music");
  Button("Button_Browse").click();
  EXPECT_EQ(folder.text(), FTree.Path("music"));
}

TEST_F(Wizard, StopBringsTheFirstPageBackWithoutResults) {
  StartLargeScan();
  EXPECT_EQ(Button("btnAnalyze").text(), u"Stop"_qs);
  Click(Button("btnAnalyze"));
  EXPECT_FALSE(Button("btnAnalyze").isEnabled());
  ASSERT_TRUE(WaitFor([this] { return OnFirstPage(); }));
  EXPECT_TRUE(Button("btnAnalyze").isEnabled());
  EXPECT_EQ(Button("btnAnalyze").text(), u"Analyze"_qs);
  EXPECT_TRUE(FWizard->Targets().isEmpty());
  EXPECT_EQ(List("lvTop").Items().Count(), 0);
}

TEST_F(Wizard, StopIsOnHoweverTheScanBegan) {
  Open();
  ShowWizard();
  for (TListItem* drive : List("lvDrive").Items())
    drive->SetChecked(false);
  FWizard->reject();
  FWizard->AddTarget(LargeTree());
  FWizard->show();
  ASSERT_TRUE(WaitFor([this] { return !OnFirstPage(); }));
  EXPECT_TRUE(Button("btnAnalyze").isEnabled());
  FWizard->reject();
  EXPECT_TRUE(WaitFor([this] { return !FWizard->Scanning(); }));
}

TEST_F(Wizard, AFocusedButtonTakesEnter) {
  Open();
  ShowWizard();
  FWizard->findChild<QRadioButton*>(u"rbScanFolder"_qs)->click();
  FDialogs.Folder = FTree.Path("music");
  QTest::keyClick(&Button("Button_Browse"), Qt::Key_Return);
  EXPECT_EQ(FWizard->findChild<QLineEdit*>(u"edtBtnFolder"_qs)->text(), FTree.Path("music"));
  EXPECT_TRUE(OnFirstPage());
  QTest::keyClick(&Button("btnClose"), Qt::Key_Return);
  EXPECT_FALSE(FWizard->isVisible());
  EXPECT_TRUE(OnFirstPage());
}

TEST_F(Wizard, ClosingDuringAScanIsQuickAndLeavesTheMainFormAsItWas) {
  StartLargeScan();
  QElapsedTimer clock;
  clock.start();
  Click(Button("btnClose"));
  EXPECT_FALSE(FWizard->isVisible());
  EXPECT_LT(clock.elapsed(), 400);
  ASSERT_TRUE(WaitFor([this] { return !FWizard->Scanning(); }));
  QTest::qWait(50);
  EXPECT_EQ(List("lvTop").Items().Count(), 0);
  EXPECT_TRUE(List("lvOverview").isVisible());
  ShowWizard();
  EXPECT_TRUE(OnFirstPage());
}

// The final message of the scan that was given up must not take the new targets with it.
TEST_F(Wizard, ATargetNamedRightAfterAnAbandonedScanIsTheOneThatIsScanned) {
  StartLargeScan();
  FWizard->reject();
  FWizard->AddTarget(FTree.Path());
  FWizard->show();
  ASSERT_TRUE(WaitForResult());
  EXPECT_EQ(Label("lblName"), FTree.Path());
  EXPECT_EQ(Captions("lvTopFile").size(), 5);
}

TEST_F(Wizard, ScandriveScansTheNamedFolderAtOnceByTheDriveRoute) {
  Open({u"/scandrive"_qs, FTree.Path()});
  ShowWizard();
  ASSERT_TRUE(WaitForResult());
  EXPECT_EQ(Captions("lvTop").size(), 8) << "a volume's folders are listed at every depth";
  EXPECT_FALSE(AutoScan);
  ShowWizard();
  EXPECT_TRUE(OnFirstPage()) << "only the first show starts by itself";
}

TEST_F(Wizard, ScandriveWithoutAFolderWaitsOnTheFirstPage) {
  Open({u"/scandrive"_qs, FTree.Path("missing")});
  ShowWizard();
  EXPECT_TRUE(OnFirstPage());
  EXPECT_TRUE(FWizard->Targets().isEmpty());
}

TEST_F(Wizard, PreselectedDrivesReplaceTheFirstMark) {
  Open();
  FWizard->PreselectDrives({SystemVolumeRoot() + u"no such folder"_qs});
  const TListView& drives = List("lvDrive");
  EXPECT_TRUE(drives.Items()[0]->Checked());
  FWizard->PreselectDrives({});
  EXPECT_FALSE(drives.Items()[0]->Checked());
}
