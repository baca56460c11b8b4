// The wizard: its two pages, and the ways in which a scan begins and ends.
#include "FormsFixture.h"
#include "app/ScanProgressPage.h"
#include "controls/notes/Labels.h"
#include "controls/progress/PImageProgress.h"
#include "platform/KnownFolders.h"
#include "scan/ScanMessages.h"

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
    StartScan(LargeTree());
    ASSERT_FALSE(OnFirstPage());
  }
};

TEST_F(Wizard, AFolderIsAnalysedAndShown) {
  Analyse();
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

TEST_F(Wizard, BrowsePutsTheChosenFolderIntoTheEditAndAFocusedButtonTakesEnter) {
  Open();
  ShowWizard();
  FWizard->findChild<QRadioButton*>(u"rbScanFolder"_qs)->click();
  auto& folder = *FWizard->findChild<QLineEdit*>(u"edtBtnFolder"_qs);
  const QString before = folder.text();
  Button("Button_Browse").click();
  EXPECT_EQ(folder.text(), before) << "cancelled";
  FDialogs.Folder = FTree.Path("music");
  QTest::keyClick(&Button("Button_Browse"), Qt::Key_Return);
  EXPECT_EQ(folder.text(), FTree.Path("music"));
  EXPECT_TRUE(OnFirstPage());
  QTest::keyClick(&Button("btnClose"), Qt::Key_Return);
  EXPECT_TRUE(OnFirstPage() && !FWizard->isVisible());
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

TEST_F(Wizard, ScandriveWithoutAFolderWaitsAndPreselectedDrivesReplaceTheFirstMark) {
  Open({u"/scandrive"_qs, FTree.Path("missing")});
  ShowWizard();
  EXPECT_TRUE(OnFirstPage() && FWizard->Targets().isEmpty());
  for (const QStringList& drives : {QStringList{SystemVolumeRoot() + u"no such folder"_qs}, QStringList()}) {
    FWizard->PreselectDrives(drives);
    EXPECT_EQ(List("lvDrive").Items()[0]->Checked(), !drives.isEmpty());
  }
}

class ScanProgressPage : public TFormsTest {
 protected:
  ScanProgressPage() {
    Open();
    FPage = std::make_unique<TScanProgressPage>(*FForm, FForm->StaticImages(), nullptr);
    FPage->resize(595, 330);
    FPage->show();
    FPage->Begin({{u"one"_qs, 0}, {u"two"_qs, 1}, {u"three"_qs, 2}});
    FRows = FPage->findChild<TListView*>(u"lvAnalyze"_qs);
    FBar = FPage->findChild<TImageProgress*>(u"imgPgBar"_qs);
  }

  [[nodiscard]] QString Marks() const {
    QString marks;
    for (const TListItem* row : FRows->Items())
      marks += QString::number(row->StateIndex()) + row->SubItems().Text(0) + u';';
    return marks;
  }

  std::unique_ptr<TScanProgressPage> FPage;
  TListView* FRows;
  TImageProgress* FBar;
};

TEST_F(ScanProgressPage, TheRunningRowAndTheFinishedOneAreMarked) {
  FPage->ShowRow(0);
  EXPECT_EQ(Marks(), u"4Analyzing...;-1;-1;"_qs);
  FPage->ShowRow(1);
  EXPECT_EQ(Marks(), u"3Completed;4Analyzing...;-1;"_qs);
  EXPECT_EQ(FRows->ItemIndex(), 1);
  FRows->Items()[0]->SetStateIndex(-1);
  FPage->ShowRow(1);
  EXPECT_EQ(FRows->Items()[0]->StateIndex(), -1) << "the same row again changes nothing";
  FPage->ClearMarks();
  EXPECT_EQ(Marks(), u"-1Completed;-1Analyzing...;-1;"_qs);
  FPage->ShowRow(3);
  EXPECT_EQ(Marks(), u"-1Completed;-1Analyzing...;3Completed;"_qs)
      << "one that is not there finishes the one before";
}

TEST_F(ScanProgressPage, StepsAndPhasesMoveTheBar) {
  const TScanProgressPage fresh(*FForm, FForm->StaticImages(), nullptr);
  const auto* bar = fresh.findChild<TImageProgress*>(u"imgPgBar"_qs);
  EXPECT_EQ(bar->Max(), 99);
  EXPECT_EQ(bar->Position(), 100);
  EXPECT_EQ(FBar->width(), 559);
  EXPECT_EQ(FBar->Position(), 0) << "a scan that begins empties it";
  FPage->ShowProgress(ScanStepWord(5, 1), 0);
  EXPECT_EQ(FBar->Max(), 1500);
  EXPECT_EQ(FBar->Position(), 300);
  FPage->ShowProgress(0, 150);
  EXPECT_EQ(FBar->Position(), 450);
  FPage->ShowProgress(ScanStepWord(5, 4), 300);
  EXPECT_EQ(FBar->Position(), 1500);
  FPage->ShowProgress(ScanStepWord(1, 0), 300);
  FPage->ShowProgress(ScanStepWord(1, 1), 0);
  FPage->ShowProgress(0, 120);
  EXPECT_EQ(FBar->Position(), 300) << "phases past the end are dropped";
  FPage->ShowPath(u"/usr/lib/"_qs);
  EXPECT_EQ(FPage->findChild<TEllipsisLabel*>(u"lblCurPath"_qs)->Caption(), u"Analyzing: /usr/lib/"_qs);
}

// The download pass as the wizard shows it: a row of its own behind the paths, and steps of the bar.
class DownloadRow : public TFormsTest {
 protected:
  // A browser that downloads into the folder of the films.
  DownloadRow() {
    const QString films = FTree.Path("films").replace(u"\\"_qs, u"\\\\"_qs);
    FUser.Home.WriteFile(TTestUser::Firefox + "/profiles.ini", "[Profile0]\nPath=p\n");
    FUser.Home.WriteFile(TTestUser::Firefox + "/p/prefs.js",
                         "user_pref(\"browser.download.dir\", \"" + NameToBytes(films) + "\");\n");
    Open();
  }

  TTestUser FUser;
};

TEST_F(DownloadRow, FollowsThePathsAndItsFoldersAreStepsOfTheBar) {
  ShowWizard();  // the first show takes targets from the command line only
  FWizard->reject();
  FWizard->AddTarget(FTree.Path("films"));
  FWizard->AddTarget(FTree.Path("music"));
  ShowWizard();
  ASSERT_TRUE(WaitForResult());
  const TListView& rows = List("lvAnalyze");
  ASSERT_EQ(rows.Items().Count(), 3);
  EXPECT_EQ(rows.Items()[1]->SubItems().Text(0), u"Completed"_qs);
  EXPECT_EQ(rows.Items()[2]->Caption(), u"Download Directory"_qs);
  EXPECT_EQ(rows.Items()[2]->SubItems().Text(0), u"Analyzing..."_qs);
  const auto* bar = FWizard->findChild<TImageProgress*>(u"imgPgBar"_qs);
  EXPECT_EQ(bar->Max(), 900);
  EXPECT_EQ(bar->Position(), 900);
  EXPECT_EQ(FWizard->Result()->DownloadFiles().Count(), 2);
}
