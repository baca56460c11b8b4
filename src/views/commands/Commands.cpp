#include "views/commands/Commands.h"

#include <QApplication>
#include <QLibrary>

#include "platform/KnownFolders.h"
#include "support/ShellRoutines.h"

namespace {

using THandler = void (TResultTab::*)();

// A global command, the tabs that it reaches, and the popup item of each tab that does the same.
struct TDispatchRow {
  const char* Command;
  THandler Handler;
  std::array<bool, kTabCount> Reaches;
  std::array<const char*, kTabCount> PopupItem;
};

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

}  // namespace

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
