// Five tables, from what there is to when it is on: kItems (every menu, bar, popup and command), kLinks (what
// shows it, in order), kDispatch (the commands that run the handler of a tab), kForwards (large buttons that
// do what a menu item does) and kRules (what goes on and off with which event of which tab).
// A new command is a row of kItems, one of kLinks for each place, its texts in the language files under the
// name of its component, and its work: a row of kDispatch with a handler in TResultTab, or an OnClick where
// the form or a part of it wires its own (views/main/UnitMain.cpp, views/contents/Navigation.cpp). If it is
// not always on, the rules of the tabs name it.

#include "views/commands/Commands.h"

#include <QApplication>
#include <QLibrary>

#include "platform/KnownFolders.h"
#include "support/ShellRoutines.h"

namespace {

using enum TBarItemKind;

// Bars and popups, then one row per command; which bar shows it stands below.
//
// The names are those of the language files, the tests and the names for screen readers. The captions are the
// stored English ones, mniTDel's too, which every language file replaces.
constexpr TBarItemRow kItems[] = {
    {"dxbrManager1Bar", MenuBar},
    {"dxbrManager1Bar1", ToolBar},
    {"SubItemFile", SubItem, "File(&F)"},
    {"SubItemEdit", SubItem, "Edit(&E)"},
    {"SubItemHelp", SubItem, "Help(&H)"},
    {"pmTop10", Popup},
    {"pmContent", Popup},
    {"pmTop100", Popup},
    {"pmDownloadFiles", Popup},

    {"btnScan", Button, "Analyze", true, "analyze16"},
    {"btnOpen", Button, "Open", false, "open16"},
    {"btnDelete", Button, "Delete", false, "delete16"},
    {"btnMove", Button, "Move...", false, "move16"},
    {"btnExit", Button, "Exit", true, "exit16"},
    {"btnSelAll", Button, "Select All", true, "selectall16"},
    {"btnDeSelAll", Button, "Deselect All", true, "deselectall16"},
    {"btnInverSel", Button, "Invert Selection", true, "invert16"},
    {"btnOFF", Button, "Open File Folder", false, "openfolder16"},
    {"btnPPT", Button, "Properties", false, "properties16"},
    {"btnHelp", Button, "Help", true, "help16"},
    {"btnHome", Button, "Homepage", true, "home16"},
    {"btnAbout", Button, "About", true, "about16"},

    {"lbtnAnalyze", LargeButton, "Analyze", true, "analyze32"},
    {"lbtnBack", LargeButton, "Back", false, "back32"},
    {"lbtnForward", LargeButton, "Forward", false, "forward32"},
    {"lbtnUp", LargeButton, "Up", false, "up32"},
    {"lbtnOpen", LargeButton, "Open", false, "open32"},
    {"lbtnDelete", LargeButton, "Delete", false, "delete32"},
    {"lbtnMove", LargeButton, "Move...", false, "move32"},
    {"lbtnProperty", LargeButton, "Properties", false, "properties32"},

    {"mniLOpen", Button, "Open", true, "open16"},
    {"mniLOFF", Button, "Open File Folder", true, "openfolder16"},
    {"mniLPPT", Button, "Properties", true, "properties16"},

    {"mniCOpen", Button, "Open", true, "open16"},
    {"mniCSelectAll", Button, "Select All", true, "selectall16"},
    {"mniCDeselAll", Button, "Deselect All", true, "deselectall16"},
    {"mniCInvSelAll", Button, "Invert Selection", true, "invert16"},
    {"mniCMove", Button, "Move...", true, "move16"},
    {"mniCDelete", Button, "Delete", true, "delete16"},
    {"mniCOFF", Button, "Open File Folder", true, "openfolder16"},
    {"mniCPPT", Button, "Properties", true, "properties16"},

    {"mniTOpen", Button, "Open", false, "open16"},
    {"mniTSelAll", Button, "Select All", true, "selectall16"},
    {"mniTDeselAll", Button, "Deselect All", true, "deselectall16"},
    {"mniTInvSel", Button, "Invert Selection", true, "invert16"},
    {"mniTMove", Button, "Move...", false, "move16"},
    {"mniTDel", Button, "New Separator", false, "delete16"},
    {"mniTOFF", Button, "Open File Folder", false, "openfolder16"},
    {"mniTPPT", Button, "Properties", false, "properties16"},

    {"dxbrbtnDownloadFilesOpen", Button, "Open", true, "open16"},
    {"dxDownloadFilesSelectAll", Button, "Select All", true, "selectall16"},
    {"dxDownloadFilesDeselectAll", Button, "Deselect All", true, "deselectall16"},
    {"dxDownloadFilesInvertSelection", Button, "Invert Selection", true, "invert16"},
    {"dxbrbtnDownloadFilesMove", Button, "Move", true, "move16"},
    {"dxbrbtnDownloadFilesDelete", Button, "Delete", true, "delete16"},
    {"dxDownloadFileOpenFolder", Button, "Open File Folder", true, "openfolder16"},
    {"dxDownloadFilesPro", Button, "Properties", true, "properties16"},
};

// Who shows what, in order from left to right or top to bottom.
constexpr TBarLinkRow kLinks[] = {
    {"dxbrManager1Bar", "SubItemFile"},
    {"dxbrManager1Bar", "SubItemEdit"},
    {"dxbrManager1Bar", "SubItemHelp"},

    {"SubItemFile", "btnScan"},
    {"SubItemFile", kBarSeparator},
    {"SubItemFile", "btnOpen"},
    {"SubItemFile", "btnDelete"},
    {"SubItemFile", "btnMove"},
    {"SubItemFile", kBarSeparator},
    {"SubItemFile", "btnExit"},

    {"SubItemEdit", "btnSelAll"},
    {"SubItemEdit", "btnDeSelAll"},
    {"SubItemEdit", "btnInverSel"},
    {"SubItemEdit", kBarGroupBreak},
    {"SubItemEdit", "btnOFF"},
    {"SubItemEdit", "btnPPT"},

    {"SubItemHelp", "btnHelp"},
    {"SubItemHelp", "btnHome"},
    {"SubItemHelp", kBarGroupBreak},
    {"SubItemHelp", "btnAbout"},

    {"dxbrManager1Bar1", "lbtnAnalyze"},
    {"dxbrManager1Bar1", kBarGroupBreak},
    {"dxbrManager1Bar1", "lbtnBack"},
    {"dxbrManager1Bar1", "lbtnForward"},
    {"dxbrManager1Bar1", "lbtnUp"},
    {"dxbrManager1Bar1", kBarGroupBreak},
    {"dxbrManager1Bar1", "lbtnOpen"},
    {"dxbrManager1Bar1", "lbtnDelete"},
    {"dxbrManager1Bar1", "lbtnMove"},
    {"dxbrManager1Bar1", "lbtnProperty"},

    {"pmTop10", "mniLOpen"},
    {"pmTop10", kBarSeparator},
    {"pmTop10", "mniLOFF"},
    {"pmTop10", "mniLPPT"},

    {"pmContent", "mniCOpen"},
    {"pmContent", kBarSeparator},
    {"pmContent", "mniCSelectAll"},
    {"pmContent", "mniCDeselAll"},
    {"pmContent", "mniCInvSelAll"},
    {"pmContent", kBarSeparator},
    {"pmContent", "mniCMove"},
    {"pmContent", "mniCDelete"},
    {"pmContent", kBarSeparator},
    {"pmContent", "mniCOFF"},
    {"pmContent", "mniCPPT"},

    {"pmTop100", "mniTOpen"},
    {"pmTop100", kBarSeparator},
    {"pmTop100", kBarSeparator},
    {"pmTop100", "mniTSelAll"},
    {"pmTop100", "mniTDeselAll"},
    {"pmTop100", "mniTInvSel"},
    {"pmTop100", kBarSeparator},
    {"pmTop100", "mniTMove"},
    {"pmTop100", "mniTDel"},
    {"pmTop100", kBarSeparator},
    {"pmTop100", "mniTOFF"},
    {"pmTop100", "mniTPPT"},

    {"pmDownloadFiles", "dxbrbtnDownloadFilesOpen"},
    {"pmDownloadFiles", kBarSeparator},
    {"pmDownloadFiles", "dxDownloadFilesSelectAll"},
    {"pmDownloadFiles", "dxDownloadFilesDeselectAll"},
    {"pmDownloadFiles", "dxDownloadFilesInvertSelection"},
    {"pmDownloadFiles", kBarSeparator},
    {"pmDownloadFiles", "dxbrbtnDownloadFilesMove"},
    {"pmDownloadFiles", "dxbrbtnDownloadFilesDelete"},
    {"pmDownloadFiles", kBarSeparator},
    {"pmDownloadFiles", "dxDownloadFileOpenFolder"},
    {"pmDownloadFiles", "dxDownloadFilesPro"},
};

using THandler = void (TResultTab::*)();

// A global command, the tabs that it reaches, and the popup item of each tab that does the same.
struct TDispatchRow {
  const char* Command;
  THandler Handler;
  std::array<bool, kTabCount> Reaches;
  std::array<const char*, kTabCount> PopupItem;
};

// By TTabIndex. Where a global command does not reach, it may be on and does nothing.
constexpr std::array<bool, kTabCount> kEverywhere = {true, true, true, true};
constexpr std::array<bool, kTabCount> kNotOnDownloads = {true, true, true, false};
constexpr std::array<bool, kTabCount> kChecksOnly = {false, true, true, false};

constexpr TDispatchRow kDispatch[] = {
    {"btnOpen",
     &TResultTab::Open,
     kEverywhere,
     {"mniLOpen", "mniCOpen", "mniTOpen", "dxbrbtnDownloadFilesOpen"}},
    {"btnDelete",
     &TResultTab::DeleteRows,
     kEverywhere,
     {nullptr, "mniCDelete", "mniTDel", "dxbrbtnDownloadFilesDelete"}},
    {"btnMove",
     &TResultTab::MoveRows,
     kEverywhere,
     {nullptr, "mniCMove", "mniTMove", "dxbrbtnDownloadFilesMove"}},
    {"btnPPT",
     &TResultTab::ShowProperties,
     kEverywhere,
     {"mniLPPT", "mniCPPT", "mniTPPT", "dxDownloadFilesPro"}},
    {"btnOFF",
     &TResultTab::OpenFileFolder,
     kNotOnDownloads,
     {"mniLOFF", "mniCOFF", "mniTOFF", "dxDownloadFileOpenFolder"}},
    {"btnSelAll",
     &TResultTab::SelectAll,
     kChecksOnly,
     {nullptr, "mniCSelectAll", "mniTSelAll", "dxDownloadFilesSelectAll"}},
    {"btnDeSelAll",
     &TResultTab::DeselectAll,
     kChecksOnly,
     {nullptr, "mniCDeselAll", "mniTDeselAll", "dxDownloadFilesDeselectAll"}},
    {"btnInverSel",
     &TResultTab::InvertSelection,
     kChecksOnly,
     {nullptr, "mniCInvSelAll", "mniTInvSel", "dxDownloadFilesInvertSelection"}},
};

// Large buttons that do what a menu item does.
constexpr std::array<std::array<const char*, 2>, 5> kForwards = {{{"lbtnOpen", "btnOpen"},
                                                                  {"lbtnDelete", "btnDelete"},
                                                                  {"lbtnMove", "btnMove"},
                                                                  {"lbtnProperty", "btnPPT"},
                                                                  {"lbtnAnalyze", "btnScan"}}};

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

// The lists below hold what one event switches together, on the tab that has them. Rules of one event run in
// their order, so that a later row has the last word on a command that two name.
//
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

std::span<const TBarItemRow> CommandItems() {
  return kItems;
}
std::span<const TBarLinkRow> CommandLinks() {
  return kLinks;
}

TMainCommands::TMainCommands(QWidget& form) : FBars(form) {
  FBars.Build(CommandItems(), CommandLinks());
  // A large button does its own work even while the menu item of the same name is off.
  for (const auto& [large, menu] : kForwards)
    Button(large).OnClick = [&item = Button(menu)] {
      if (item.OnClick) item.OnClick();
    };
}

TdxBarButton& TMainCommands::Button(const char* name) {
  return FBars.Button(QLatin1String(name));
}

void TMainCommands::OnClick(const char* name, std::function<void()> handler) {
  Button(name).OnClick = [this, handler = std::move(handler)] {
    if (!FHeld) handler();
  };
}

void TMainCommands::SetEnabled(std::initializer_list<const char*> names, bool enabled) {
  for (const char* name : names)
    Button(name).SetEnabled(enabled);
}

void TMainCommands::CopyCaptions() {
  for (const TDispatchRow& row : kDispatch)
    Button(row.PopupItem[kDownloadsTab]).SetCaption(Button(row.PopupItem[kTopFilesTab]).Caption());
}

// The tabs live as long as the form, whose children the commands are; the table is static. So the handlers
// may hold both.
void TMainCommands::DispatchTo(const std::array<TResultTab*, kTabCount>& tabs,
                               std::function<int()> activeIndex) {
  for (const TDispatchRow& row : kDispatch) {
    OnClick(row.Command, [&row, tabs, activeIndex] {
      const auto index = static_cast<size_t>(activeIndex());
      if (index < tabs.size() && row.Reaches[index]) (tabs[index]->*row.Handler)();
    });
    for (size_t index = 0; index < tabs.size(); ++index)
      if (const char* item = row.PopupItem[index]; item != nullptr)
        OnClick(item, [&row, tab = tabs[index]] { (tab->*row.Handler)(); });
  }
}

// The Help menu.

QString ColophonLibrary() {
  return ProgramFolder() + u"Colophon"_qs;
}

// Stays loaded: the box may have left objects behind.
void btnAboutClick(const QString& library) {
  QLibrary colophon(library);
  if (const auto showAbout = reinterpret_cast<void (*)(void*)>(colophon.resolve("ShowAbout")))
    showAbout(qApp);
}

void btnHomeClick(const QString& library) {
  QLibrary colophon(library);
  if (const auto navigate = reinterpret_cast<void (*)()>(colophon.resolve("NavigateToHomePage"))) navigate();
  colophon.unload();
}

void btnHelpClick() {
  OpenWithShell(QStringLiteral(TALLYSCOPE_FORUM) + u"forumdisplay.php?f=41"_qs);
}

// Each name is looked up among some sixty components, which costs little at the pace of a user. Nothing calls
// this per row.
void ApplyEnableRules(TMainCommands& commands, TTabIndex tab, TTabEvent event, bool flag) {
  for (const TEnableRow& row : kRules)
    if (row.Tab == tab && row.Event == event)
      commands.SetEnabled(row.Commands, row.Set == TSet::AsFlag ? flag : row.Set == TSet::On);
}
