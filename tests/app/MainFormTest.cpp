// The main form: its tabs, commands and status bar over a result and without one, and the menu of help.
#include "FormsFixture.h"
#include "controls/bars/StatusBar.h"
#include "fixtures/UrlTaker.h"
#include "views/commands/Commands.h"

class MainForm : public TFormsTest {
 protected:
  // What the status bar shows: the text of panel 0, "|", the first line of panel 1.
  [[nodiscard]] QString Panels() {
    const auto& bar = *FForm->findChild<TdxStatusBar*>(u"dxstsbr1"_qs);
    return (bar.Panels(0).Visible() ? bar.Panels(0).Text() : QString()) + u'|' +
           (bar.Panels(1).Visible() ? Label("lblFileName") : QString());
  }
};

TEST_F(MainForm, StartsWithTheDrivesAndTheComputersSumsAndTellsOfASelectedDrive) {
  Open();
  FForm->show();
  const TDriveList& drives = FForm->Drives();
  EXPECT_EQ(List("lvOverview").Items().Count(), static_cast<int>(drives.Drives().size()));
  EXPECT_FALSE(List("lvTop").isVisible());
  EXPECT_EQ(Label("lblName"), u"My Computer"_qs);
  EXPECT_EQ(Label("lblSize"), SizeToText(drives.TotalSize()));
  EXPECT_EQ(Label("lblUsed"), SizeToText(drives.TotalSize() - drives.TotalFree()));
  EXPECT_EQ(Label("lblType"), u"hidden"_qs);
  EXPECT_EQ(Label("lblFiles"), u"hidden"_qs);
  EXPECT_EQ(Label("lblLarge"), FForm->Language().GetMessage(u"M_Tip"_qs, QString()));
  TListView& list = List("lvOverview");
  list.SetSelected(list.Items()[0]);
  EXPECT_EQ(Label("lblFileName"), list.Items()[0]->Caption());
  EXPECT_EQ(list.Hint(), u"Double click to analyze "_qs + list.Items()[0]->Caption());
  list.SetSelected(nullptr);
  EXPECT_EQ(Label("lblFileName"), u"My Computer"_qs);
  EXPECT_TRUE(list.Hint().isEmpty());
}

TEST_F(MainForm, ADoubleClickOnADriveAnalysesItAtOnce) {
  Open();
  ShowWizard();  // the first show takes targets from the command line only
  FWizard->reject();
  List("lvDrive").Items()[0]->SetChecked(false);
  Join();
  TListView& list = List("lvOverview");
  QStringList scanned;
  QTimer whileShowing;
  QObject::connect(&whileShowing, &QTimer::timeout, FWizard.get(), [&] {
    if (!FWizard->isVisible()) return;
    scanned = FWizard->Targets();
    FWizard->reject();
    whileShowing.stop();
  });
  whileShowing.start(0);
  QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, list.Layout().RowRect(0).center());
  EXPECT_EQ(scanned, QStringList{FForm->Drives().Drives()[0].Root});
  EXPECT_TRUE(WaitFor([this] { return !FWizard->Scanning(); }));
}

TEST_F(MainForm, SelectingAResultRowTellsOfItAndTurnsItsCommandsOn) {
  Analyse();
  ActivateTab(kOverviewTab);
  TListView& list = List("lvTop");
  EXPECT_FALSE(Enabled("lbtnOpen"));
  list.SetSelected(list.Items()[1]);
  EXPECT_EQ(Label("lblFileName"), u"long.mkv"_qs);
  EXPECT_EQ(Label("lblFileSize"), u"Size: 3.81 MB"_qs);
  for (const char* on : {"lbtnOpen", "lbtnProperty", "mniLOpen", "btnPPT"})
    EXPECT_TRUE(Enabled(on)) << on;
  for (const char* off : {"lbtnDelete", "lbtnMove"})
    EXPECT_FALSE(Enabled(off)) << off;
}

TEST_F(MainForm, ResetBringsTheDrivesBackAndEndsSelectionsAndTheirCommands) {
  Analyse();
  QTimer closer;
  QObject::connect(&closer, &QTimer::timeout, FWizard.get(), [this] { FWizard->reject(); });
  closer.start(20);
  List("lvTop").SetSelected(List("lvTop").Items()[0]);
  ASSERT_TRUE(Enabled("btnOpen"));
  Command("btnScan").Click();
  for (const char* off : {"btnOpen", "btnOFF", "btnPPT", "lbtnOpen", "lbtnProperty", "mniLOpen"})
    EXPECT_FALSE(Enabled(off)) << off;
  EXPECT_EQ(List("lvTop").Items().Count() + List("lvTopFile").Items().Count(), 0);
  EXPECT_TRUE(List("lvOverview").isVisible());
  EXPECT_EQ(Label("lblLarge"), FForm->Language().GetMessage(u"M_Tip"_qs, QString()));
  EXPECT_EQ(Label("lblFiles"), u"hidden"_qs);

  List("lvOverview").SetSelected(List("lvOverview").Items()[0]);
  Command("btnScan").Click();
  EXPECT_EQ(List("lvOverview").Selected(), nullptr);
  EXPECT_EQ(Label("lblFileName"), u"My Computer"_qs);
}

TEST_F(MainForm, OpensInItsSizeHoldsTheLeastOneAndSpreadsTheResultColumns) {
  Analyse();
  EXPECT_EQ(FForm->size(), QSize(812, 572));
  const int before = List("lvTop").Columns()[1].Width();
  FForm->resize(FForm->width() + 200, FForm->height());
  EXPECT_EQ(List("lvTop").Columns()[1].Width(), before + 140);
  FForm->resize(100, 100);
  const QSize frame = FForm->frameGeometry().size() - FForm->size();
  EXPECT_EQ(FForm->size(), (QSize(820, 599) - frame).boundedTo(QSize(812, 572)));
}

TEST_F(MainForm, TheCheckBoxesOfTheTopFilesDriveDeleteAndTheHeaderBox) {
  Analyse();
  ActivateTab(kTopFilesTab);
  TListView& list = List("lvTopFile");
  auto& all = *FForm->findChild<QCheckBox*>(u"CheckBox_All"_qs);
  ClickBox(list, 0);
  EXPECT_TRUE(list.Items()[0]->Checked());
  EXPECT_TRUE(Enabled("btnDelete") && Enabled("mniTDel"));
  QTest::mouseClick(list.viewport(), Qt::RightButton, {}, list.Layout().RowRect(2).center());
  EXPECT_TRUE(Enabled("btnDelete"));
  EXPECT_FALSE(Enabled("mniTDel")) << "a click beside the boxes";
  ClickBox(list, 0);
  EXPECT_FALSE(Enabled("lbtnDelete"));

  all.click();
  EXPECT_TRUE(list.Items()[4]->Checked());
  EXPECT_TRUE(Enabled("lbtnDelete"));
  EXPECT_FALSE(Enabled("btnDelete"));
  ClickBox(list, 1);
  EXPECT_FALSE(all.isChecked());
  ClickBox(list, 1);
  EXPECT_TRUE(all.isChecked());

  Command("btnDeSelAll").Click();
  EXPECT_FALSE(list.Items()[4]->Checked() || all.isChecked());
  EXPECT_TRUE(Enabled("lbtnDelete")) << "only clicks count";
  list.SetItemFocused(list.Items()[1]);
  QTest::keyClick(&list, Qt::Key_Space);
  QTest::keyClick(&list, Qt::Key_Space);
  EXPECT_FALSE(Enabled("lbtnDelete")) << "the space bar is a click on the box";
}

TEST_F(MainForm, EachTabHasItsPanelOfTheStatusBar) {
  Analyse();
  TListView& list = List("lvTopFile");
  const std::pair<int, QString> rows[] = {{kTopFilesTab, u"5 items|"_qs},
                                          {kOverviewTab, u"|My Computer"_qs},
                                          {kDownloadsTab, u"0 items|"_qs},
                                          {kContentsTab, u"|My Computer"_qs}};
  for (const auto& [tab, shown] : rows) {
    List("lvTop").SetSelected(List("lvTop").Items()[0]);
    list.SetSelected(list.Items()[0]);
    ActivateTab(tab);
    EXPECT_EQ(Panels(), shown) << tab;
  }
  EXPECT_EQ(Label("lblFileType"), u"0 items"_qs);
  EXPECT_EQ(Label("lblFileSize"), u"hidden"_qs);
  ActivateTab(kOverviewTab);
  EXPECT_TRUE(Label("lblFileSize").startsWith(u"Used Space: "_qs));
  EXPECT_EQ(List("lvTop").Selected(), nullptr);

  ActivateTab(kTopFilesTab);
  list.SetSelected(list.Items()[0]);
  EXPECT_EQ(Panels(), u"|long.mkv"_qs);
  EXPECT_TRUE(Enabled("mniTOpen"));
  list.SetSelected(nullptr);
  EXPECT_EQ(Panels(), u"5 items|"_qs);
  EXPECT_FALSE(Enabled("mniTOpen"));
}

// The rows of a refill have the order of the result and no size to sort by.
TEST_F(MainForm, TopFilesWithoutRowsShowTheResultOnceMore) {
  Analyse();
  ActivateTab(kTopFilesTab);
  const QStringList files = Captions("lvTopFile");
  ActivateTab(kOverviewTab);
  List("lvTopFile").Clear();
  ActivateTab(kTopFilesTab);
  EXPECT_EQ(Captions("lvTopFile"), files);
  EXPECT_EQ(Panels(), u"5 items|"_qs);
  EXPECT_EQ(List("lvTopFile").Items()[0]->Data(), nullptr);
  EXPECT_EQ(List("lvTopFile").Items()[4]->ImageIndex(), 7) << "the icons of before have gone";
  List("lvTopFile").OnColumnClick(&List("lvTopFile").Columns()[2]);
  EXPECT_EQ(Captions("lvTopFile"), files);
}

TEST_F(MainForm, TopFilesStayEmptyBeforeAResultAndAfterAStop) {
  Open();
  ShowWizard();
  Join();
  ActivateTab(kTopFilesTab);
  EXPECT_EQ(Panels(), u"0 items|"_qs);
  StartScan(FTree.Path());
  FWizard->reject();
  ASSERT_TRUE(WaitFor([this] { return !FWizard->Scanning(); }));
  EXPECT_EQ(FWizard->Result(), nullptr);
  ActivateTab(kOverviewTab);
  ActivateTab(kTopFilesTab);
  EXPECT_EQ(Panels(), u"0 items|"_qs);
}

TEST_F(MainForm, WithoutTheWizardTopFilesGiveWayToTheOverview) {
  Open();
  FForm->show();
  ASSERT_TRUE(WaitFor([this] { return FForm->Activated(); }));
  ActivateTab(kTopFilesTab);
  EXPECT_EQ(Tabs().ActiveChildIndex(), kOverviewTab);
  ActivateTab(kDownloadsTab);
  EXPECT_EQ(Tabs().ActiveChildIndex(), kDownloadsTab);
}

TEST_F(MainForm, AboutShowsTheBoxOfItsLibrary) {
  Open();
  FForm->show();
  QString shown;
  QTimer::singleShot(300, [&shown] {
    if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
      shown = box->text();
      box->accept();
    }
  });
  Command("btnAbout").Click();
  EXPECT_TRUE(shown.contains(u"Tallyscope"_qs)) << qPrintable(shown);
}

TEST_F(MainForm, HomepageAndHelpGoToTheBrowserAndWithoutTheLibraryOnlyHelpDoes) {
  Open();
  TUrlTaker browser(u"https"_qs);
  Command("btnHome").Click();
  EXPECT_EQ(browser.Opened.size(), 1);
  browser.Opened.clear();
  if (!HasDrives()) {  // where paths have drives, addresses go to the system's shell, past Qt
    Command("btnHelp").Click();
    ASSERT_EQ(browser.Opened.size(), 1);
    EXPECT_EQ(browser.Opened[0].path() + u'?' + browser.Opened[0].query(), u"/forumdisplay.php?f=41"_qs);
    browser.Opened.clear();
  }

  btnAboutClick(FTree.Path("nothing"));
  btnHomeClick(FTree.Path("nothing"));
  EXPECT_TRUE(browser.Opened.isEmpty());
}
