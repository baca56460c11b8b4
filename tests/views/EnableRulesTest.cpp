
#include <gtest/gtest.h>

#include <QMainWindow>

#include "fixtures/QtPrinters.h"
#include "views/commands/Commands.h"

namespace {

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

TEST(EnableRules, EachEventSwitchesItsCommandsAndNoOthers) {
  for (const TRule& rule : kRules) {
    EXPECT_EQ(Changed(rule, false), Sorted(rule.On)) << rule.What;
    EXPECT_EQ(Changed(rule, true), Sorted(rule.Off)) << rule.What;
  }
}
