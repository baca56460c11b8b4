// The commands: whom they reach, and which are on.
#include "views/commands/Commands.h"

#include "fixtures/FormTest.h"

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

// The commands that an event leaves on, or off, whatever they were before.
struct TRule {
  const char* What;
  TTabIndex Tab;
  TTabEvent Event;
  bool Flag;
  const char* On;
  const char* Off;
};

constexpr const char* kGlobal =
    "btnDelete btnMove btnOFF btnOpen btnPPT lbtnBack lbtnDelete lbtnForward lbtnMove lbtnOpen lbtnProperty";
constexpr const char* kTopRow = "btnOFF btnOpen btnPPT lbtnOpen lbtnProperty mniLOFF mniLOpen mniLPPT";
constexpr const char* kTopFilesRow = "btnOFF btnOpen btnPPT lbtnOpen lbtnProperty mniTOFF mniTOpen mniTPPT";
constexpr const char* kContentsRow = "btnOFF btnOpen btnPPT lbtnOpen lbtnProperty mniCOFF mniCOpen mniCPPT";
constexpr const char* kTopFilesChecked = "btnDelete btnMove lbtnDelete lbtnMove mniTDel mniTMove";
constexpr const char* kContentsChecked = "btnDelete btnMove lbtnDelete lbtnMove mniCDelete mniCMove";
constexpr const char* kDownloadsChecked =
    "dxbrbtnDownloadFilesDelete dxbrbtnDownloadFilesMove lbtnDelete lbtnMove";
constexpr const char* kChecks = "btnDeSelAll btnInverSel btnSelAll";
constexpr const char* kAllLarge = "lbtnDelete lbtnMove lbtnOpen lbtnProperty";

using enum TTabEvent;

const TRule kRules[] = {
    {"Overview", kOverviewTab, Activated, false, "", "+global +checks lbtnUp mniLOFF mniLOpen mniLPPT"},
    {"Contents in a folder", kContentsTab, Activated, true, "+checks lbtnUp", "+global +mniC"},
    {"Contents at the computer", kContentsTab, Activated, false, "+checks", "+global +mniC lbtnUp"},
    {"Top 100 Files", kTopFilesTab, Activated, false, "+checks", "+global lbtnUp"},
    {"Download Directory", kDownloadsTab, Activated, false, "", ""},
    {"a largest row", kOverviewTab, RowSelected, true, kTopRow, ""},
    {"a row of a folder", kContentsTab, RowSelected, true, kContentsRow, ""},
    {"no row of a folder", kContentsTab, RowSelected, false, "", kContentsRow},
    {"boxes of a folder", kContentsTab, BoxesCounted, true, kContentsChecked, ""},
    {"a top file", kTopFilesTab, RowSelected, true, kTopFilesRow, ""},
    {"no top file", kTopFilesTab, RowSelected, false, "", kTopFilesRow},
    {"a click beside", kTopFilesTab, MouseUp, true, "", "mniTDel mniTMove"},
    {"boxes of top files", kTopFilesTab, BoxesCounted, true, kTopFilesChecked, ""},
    {"no box of top files", kTopFilesTab, BoxesCounted, false, "", kTopFilesChecked},
    {"all top files", kTopFilesTab, HeaderBox, true, "lbtnDelete lbtnMove", "lbtnOpen lbtnProperty"},
    {"no top files", kTopFilesTab, HeaderBox, false, "", kAllLarge},
    {"a delete of the Overview", kOverviewTab, DeleteStarts, false, "", "lbtnDelete lbtnMove"},
    {"a delete in a folder", kContentsTab, DeleteStarts, false, "", "lbtnDelete lbtnMove"},
    {"a delete of top files", kTopFilesTab, DeleteStarts, false, "", "lbtnDelete lbtnMove"},
    {"a delete of downloads", kDownloadsTab, DeleteStarts, false, "", "lbtnDelete lbtnMove"},
    {"reset", kTopFilesTab, Reset, false, "", "mniTDel mniTMove mniTOFF mniTOpen mniTPPT"},
    {"reset elsewhere", kOverviewTab, Reset, false, "", ""},
    {"a download", kDownloadsTab, RowSelected, true, "lbtnOpen lbtnProperty", ""},
    {"no download", kDownloadsTab, RowSelected, false, "", "lbtnOpen lbtnProperty"},
    {"a click on downloads", kDownloadsTab, MouseUp, true, "",
     "dxbrbtnDownloadFilesDelete dxbrbtnDownloadFilesMove"},
    {"boxes of downloads", kDownloadsTab, BoxesCounted, true, kDownloadsChecked, ""},
    {"all downloads", kDownloadsTab, HeaderBox, true, "lbtnDelete lbtnMove", "lbtnOpen lbtnProperty"},
    {"no downloads", kDownloadsTab, HeaderBox, false, "", kAllLarge},
};

QStringList Sorted(const char* names) {
  QString text = QLatin1String(names);
  text.replace(u"+global"_qs, QLatin1String(kGlobal));
  text.replace(u"+checks"_qs, QLatin1String(kChecks));
  text.replace(u"+mniC"_qs, u"mniCOpen mniCMove mniCDelete mniCOFF mniCPPT"_qs);
  QStringList sorted = text.split(u' ', Qt::SkipEmptyParts);
  sorted.sort();
  return sorted;
}

// The commands that the rule changes when all are the other way before.
QStringList Changed(const TRule& rule, bool before) {
  QMainWindow form;
  TMainCommands commands(form);
  const auto buttons = form.findChildren<QAction*>();
  for (QAction* each : buttons)
    each->setEnabled(before);
  ApplyEnableRules(commands, rule.Tab, rule.Event, rule.Flag);
  QStringList changed;
  for (const QAction* each : buttons)
    if (each->isEnabled() != before) changed += each->objectName();
  changed.sort();
  return changed;
}

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

TEST(EnableRules, EachEventSwitchesItsCommandsAndNoOthers) {
  for (const TRule& rule : kRules) {
    EXPECT_EQ(Changed(rule, false), Sorted(rule.On)) << rule.What;
    EXPECT_EQ(Changed(rule, true), Sorted(rule.Off)) << rule.What;
  }
}
