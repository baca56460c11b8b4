#include "views/commands/EnableRules.h"

#include "views/commands/Commands.h"

namespace {

using enum TTabEvent;

enum class TSet { Off, On, AsFlag };

struct TEnableRow {
  TTabIndex Tab;
  TTabEvent Event;
  TSet Set;
  std::initializer_list<const char*> Commands;
};

using TNames = std::initializer_list<const char*>;

constexpr TNames kCheckCommands = {"btnSelAll", "btnDeSelAll", "btnInverSel"};
constexpr TNames kGlobalCommands = {"btnOpen",  "btnOFF",   "btnPPT",     "btnDelete",
                                    "btnMove",  "lbtnOpen", "lbtnDelete", "lbtnProperty",
                                    "lbtnMove", "lbtnBack", "lbtnForward"};

// Commands of the selected row.
constexpr TNames kTopRow = {"mniLOpen", "mniLOFF", "mniLPPT",  "btnOpen",
                            "btnOFF",   "btnPPT",  "lbtnOpen", "lbtnProperty"};
constexpr TNames kContentsRow = {"mniCOpen", "mniCPPT", "mniCOFF",  "btnOpen",
                                 "btnPPT",   "btnOFF",  "lbtnOpen", "lbtnProperty"};
constexpr TNames kTopFilesRow = {"mniTOpen",     "mniTOFF", "mniTPPT", "lbtnOpen",
                                 "lbtnProperty", "btnOFF",  "btnPPT",  "btnOpen"};
constexpr TNames kLargeRow = {"lbtnProperty", "lbtnOpen"};

// Commands of the checked rows.
constexpr TNames kContentsChecked = {"btnDelete", "btnMove",    "lbtnDelete",
                                     "lbtnMove",  "mniCDelete", "mniCMove"};
constexpr TNames kTopFilesChecked = {"lbtnDelete", "btnDelete", "lbtnMove", "btnMove", "mniTMove", "mniTDel"};
constexpr TNames kDownloadsChecked = {"lbtnDelete", "lbtnMove", "dxbrbtnDownloadFilesMove",
                                      "dxbrbtnDownloadFilesDelete"};
constexpr TNames kLargeChecked = {"lbtnDelete", "lbtnMove"};

constexpr TEnableRow kRules[] = {
    {kOverviewTab, Activated, TSet::Off, kCheckCommands},
    {kOverviewTab, Activated, TSet::Off, kGlobalCommands},
    {kOverviewTab, Activated, TSet::Off, {"lbtnUp", "mniLOpen", "mniLOFF", "mniLPPT"}},
    {kOverviewTab, RowSelected, TSet::On, kTopRow},
    {kOverviewTab, DeleteStarts, TSet::Off, kLargeChecked},

    {kContentsTab, Activated, TSet::On, kCheckCommands},
    {kContentsTab, Activated, TSet::Off, kGlobalCommands},
    {kContentsTab, Activated, TSet::AsFlag, {"lbtnUp"}},
    {kContentsTab, Activated, TSet::Off, {"mniCMove", "mniCDelete", "mniCOFF", "mniCPPT", "mniCOpen"}},
    {kContentsTab, RowSelected, TSet::AsFlag, kContentsRow},
    {kContentsTab, BoxesCounted, TSet::AsFlag, kContentsChecked},
    {kContentsTab, DeleteStarts, TSet::Off, kLargeChecked},

    {kTopFilesTab, Activated, TSet::On, kCheckCommands},
    {kTopFilesTab, Activated, TSet::Off, kGlobalCommands},
    {kTopFilesTab, Activated, TSet::Off, {"lbtnUp"}},
    {kTopFilesTab, RowSelected, TSet::AsFlag, kTopFilesRow},
    {kTopFilesTab, MouseUp, TSet::Off, {"mniTMove", "mniTDel"}},
    {kTopFilesTab, BoxesCounted, TSet::AsFlag, kTopFilesChecked},
    {kTopFilesTab, HeaderBox, TSet::AsFlag, kLargeChecked},
    {kTopFilesTab, HeaderBox, TSet::Off, kLargeRow},
    {kTopFilesTab, DeleteStarts, TSet::Off, kLargeChecked},
    {kTopFilesTab, Reset, TSet::Off, {"mniTOpen", "mniTPPT", "mniTDel", "mniTOFF", "mniTMove"}},

    {kDownloadsTab, RowSelected, TSet::AsFlag, kLargeRow},
    {kDownloadsTab, MouseUp, TSet::Off, {"dxbrbtnDownloadFilesMove", "dxbrbtnDownloadFilesDelete"}},
    {kDownloadsTab, BoxesCounted, TSet::AsFlag, kDownloadsChecked},
    {kDownloadsTab, HeaderBox, TSet::AsFlag, kLargeChecked},
    {kDownloadsTab, HeaderBox, TSet::Off, kLargeRow},
    {kDownloadsTab, DeleteStarts, TSet::Off, kLargeChecked},
};

}  // namespace

void ApplyEnableRules(TMainCommands& commands, TTabIndex tab, TTabEvent event, bool flag) {
  for (const TEnableRow& row : kRules)
    if (row.Tab == tab && row.Event == event)
      commands.SetEnabled(row.Commands, row.Set == TSet::AsFlag ? flag : row.Set == TSet::On);
}
