#include "views/commands/Commands.h"

#include <gtest/gtest.h>

#include <QMainWindow>
#include <QMenu>
#include <QStringList>

#include "fixtures/QtPrinters.h"

namespace {

// Notes which handler ran.
class TNotingTab : public TResultTab {
 public:
  void FormShow() override {}
  void FormResize(int) override {}
  void FitColumns() override {}
  void Reset() override {}
  void Fill(const TTallyscopeScan&, const QStringList&) override {}
  void Activate() override {}
  void Open() override { Ran += u"Open"_qs; }
  void OpenFileFolder() override { Ran += u"OpenFileFolder"_qs; }
  void ShowProperties() override { Ran += u"ShowProperties"_qs; }
  void DeleteRows() override { Ran += u"DeleteRows"_qs; }
  void MoveRows() override { Ran += u"MoveRows"_qs; }
  void SelectAll() override { Ran += u"SelectAll"_qs; }
  void DeselectAll() override { Ran += u"DeselectAll"_qs; }
  void InvertSelection() override { Ran += u"InvertSelection"_qs; }

  QStringList Ran;
};

class Commands : public testing::Test {
 protected:
  Commands() {
    FCommands.DispatchTo({&FTabs[0], &FTabs[1], &FTabs[2], &FTabs[3]}, [this] { return FActive; });
  }

  QStringList RanBy(const char* command, int tab) {
    FActive = tab;
    for (TNotingTab& each : FTabs)
      each.Ran.clear();
    FCommands.Button(command).OnClick();
    QStringList ran;
    for (int index = 0; index < kTabCount; ++index)
      for (const QString& handler : FTabs[static_cast<size_t>(index)].Ran)
        ran += QString::number(index) + handler;
    return ran;
  }

  QMainWindow FForm;
  TMainCommands FCommands{FForm};
  std::array<TNotingTab, kTabCount> FTabs;
  int FActive = 0;
};

}  // namespace

TEST_F(Commands, GlobalCommandsReachTheActiveTabAlone) {
  for (int tab = 0; tab < kTabCount; ++tab) {
    const QString here = QString::number(tab);
    EXPECT_EQ(RanBy("btnOpen", tab), QStringList{here + u"Open"_qs});
    EXPECT_EQ(RanBy("lbtnProperty", tab), QStringList{here + u"ShowProperties"_qs});
    EXPECT_EQ(RanBy("lbtnDelete", tab), QStringList{here + u"DeleteRows"_qs});
  }
}

TEST_F(Commands, SomeCommandsStopShortOfSomeTabs) {
  for (const char* command : {"btnSelAll", "btnDeSelAll", "btnInverSel"}) {
    EXPECT_TRUE(RanBy(command, kOverviewTab).isEmpty()) << command;
    EXPECT_EQ(RanBy(command, kTopFilesTab).size(), 1) << command;
    EXPECT_TRUE(RanBy(command, kDownloadsTab).isEmpty()) << command;
  }
  EXPECT_EQ(RanBy("btnOFF", kContentsTab).size(), 1);
  EXPECT_TRUE(RanBy("btnOFF", kDownloadsTab).isEmpty());
}

TEST_F(Commands, PopupItemsRunTheirOwnTabWhateverIsActive) {
  EXPECT_EQ(RanBy("dxDownloadFileOpenFolder", kOverviewTab), QStringList{u"3OpenFileFolder"_qs});
  EXPECT_EQ(RanBy("dxDownloadFilesSelectAll", kTopFilesTab), QStringList{u"3SelectAll"_qs});
}

TEST_F(Commands, EnabledStatesAtStart) {
  for (const char* off : {"btnOpen", "btnDelete", "btnMove", "btnOFF", "btnPPT", "lbtnBack", "lbtnForward",
                          "lbtnUp", "lbtnOpen", "lbtnDelete", "lbtnMove", "lbtnProperty", "mniTOpen",
                          "mniTMove", "mniTDel", "mniTOFF", "mniTPPT"})
    EXPECT_FALSE(FCommands.Button(off).Enabled()) << off;
  for (const char* on : {"btnScan", "btnExit", "btnSelAll", "lbtnAnalyze", "mniLOpen", "mniCDelete",
                         "mniTSelAll", "dxbrbtnDownloadFilesDelete"})
    EXPECT_TRUE(FCommands.Button(on).Enabled()) << on;
}

TEST_F(Commands, MenusHoldTheirItemsInOrder) {
  const auto captions = [](const QMenu& menu) {
    QStringList texts;
    for (const QAction* action : menu.actions())
      texts += action->isSeparator() ? u"-"_qs : action->text();
    return texts.join(u' ');
  };
  EXPECT_EQ(captions(FCommands.Bars().SubItem(u"SubItemFile"_qs)),
            u"Analyze - Open Delete Move... - Exit"_qs);
  EXPECT_EQ(
      captions(FCommands.Bars().Popup(u"pmTop100"_qs)),
      u"Open - - Select All Deselect All Invert Selection - Move... New Separator - Open File Folder Properties"_qs)
      << "as the form stores it; every language gives the name of Delete";
}
