#include "views/commands/Commands.h"

namespace {

using enum TBarItemKind;

// Bars and popups, then one row per command; which bar shows it stands below.
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

}  // namespace

std::span<const TBarItemRow> CommandItems() {
  return kItems;
}
std::span<const TBarLinkRow> CommandLinks() {
  return kLinks;
}
