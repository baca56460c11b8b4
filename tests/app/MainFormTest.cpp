#include <QTest>
#include <QTimer>

#include "FormsFixture.h"
#include "controls/bars/BarItems.h"
#include "controls/bars/StatusBar.h"
#include "controls/bars/TabContainerDockSite.h"
#include "platform/KnownFolders.h"
#include "scan/ScanMessages.h"
#include "support/Korvel_Routine_New.h"
#include "views/Commands.h"

class MainForm : public TFormsTest {
 protected:
  void Analyse() {
    Open();
    ShowWizard();
    FWizard->PreselectFolder(FTree.Path());
    Click(Button("btnAnalyze"));
    ASSERT_TRUE(WaitForResult());
    Join();
  }

  // From here on commands reach the wizard; the first activation, which opens it, is over by then.
  void Join() {
    ASSERT_TRUE(WaitFor([this] { return FForm->Activated(); }));
    FForm->SetScanForm(*FWizard);
  }

  [[nodiscard]] bool Enabled(const char* command) {
    return FForm->findChild<TdxBarButton*>(QLatin1String(command))->Enabled();
  }
  void ActivateTab(int index) {
    FForm->findChild<TdxTabContainerDockSite*>(u"dxTabContainerDockSite1"_qs)->SetActiveChildIndex(index);
  }
  [[nodiscard]] QPoint CellOf(TListView& list, int row) { return list.Layout().RowRect(row).center(); }
};

TEST_F(MainForm, StartsWithTheDrivesAndTheComputersSums) {
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
}

TEST_F(MainForm, SelectingADriveTellsOfItAndDeselectingOfTheComputer) {
  Open();
  FForm->show();
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
  QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, CellOf(list, 0));
  EXPECT_EQ(scanned, QStringList{FForm->Drives().Drives()[0].Root});
  EXPECT_TRUE(WaitFor([this] { return FWizard->ScanThread().Suspended(); }));
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

TEST_F(MainForm, ResetBringsTheDrivesBack) {
  Analyse();
  QTimer::singleShot(100, FWizard.get(), [this] { FWizard->reject(); });
  FForm->findChild<TdxBarButton*>(u"btnScan"_qs)->Click();
  EXPECT_EQ(List("lvTop").Items().Count(), 0);
  EXPECT_EQ(List("lvTopFile").Items().Count(), 0);
  EXPECT_TRUE(List("lvOverview").isVisible());
  EXPECT_EQ(Label("lblLarge"), FForm->Language().GetMessage(u"M_Tip"_qs, QString()));
  EXPECT_EQ(Label("lblFiles"), u"hidden"_qs);
}

TEST_F(MainForm, ResetEndsSelectionsAndTheirCommands) {
  Analyse();
  QTimer closer;
  QObject::connect(&closer, &QTimer::timeout, FWizard.get(), [this] { FWizard->reject(); });
  closer.start(20);
  List("lvTop").SetSelected(List("lvTop").Items()[0]);
  ASSERT_TRUE(Enabled("btnOpen"));
  FForm->findChild<TdxBarButton*>(u"btnScan"_qs)->Click();
  for (const char* off : {"btnOpen", "btnOFF", "btnPPT", "lbtnOpen", "lbtnProperty", "mniLOpen"})
    EXPECT_FALSE(Enabled(off)) << off;

  List("lvOverview").SetSelected(List("lvOverview").Items()[0]);
  FForm->findChild<TdxBarButton*>(u"btnScan"_qs)->Click();
  EXPECT_EQ(List("lvOverview").Selected(), nullptr);
  EXPECT_EQ(Label("lblFileName"), u"My Computer"_qs);
}

TEST_F(MainForm, OpensInItsSizeAndHoldsTheLeastOne) {
  Open();
  FForm->show();
  EXPECT_EQ(FForm->size(), QSize(812, 572));
  FForm->resize(100, 100);
  const QSize frame = FForm->frameGeometry().size() - FForm->size();
  EXPECT_EQ(FForm->size(), (QSize(820, 599) - frame).boundedTo(QSize(812, 572)));
}

TEST_F(MainForm, ResizingSpreadsTheResultColumns) {
  Analyse();
  const int before = List("lvTop").Columns()[1].Width();
  FForm->resize(FForm->width() + 200, FForm->height());
  EXPECT_EQ(List("lvTop").Columns()[1].Width(), before + 140);
}

TEST_F(MainForm, TheCheckBoxesOfTheTopFilesDriveDeleteAndTheHeaderBox) {
  Analyse();
  ActivateTab(kTopFilesTab);
  TListView& list = List("lvTopFile");
  const auto clickBox = [&](int row) {
    for (int x = 0; x < 40; ++x) {
      const QPoint at(x, CellOf(list, row).y());
      if ((list.GetHitTestInfoAt(at.x(), at.y()) & htOnStateIcon) == 0) continue;
      QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, at + QPoint(3, 0));
      return;
    }
    ADD_FAILURE() << "no check box";
  };
  clickBox(0);
  EXPECT_TRUE(list.Items()[0]->Checked());
  EXPECT_TRUE(Enabled("lbtnDelete"));
  clickBox(0);
  EXPECT_FALSE(Enabled("lbtnDelete"));
}
