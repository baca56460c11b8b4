#include "views/contents/Navigation.h"

#include "controls/shell/RzShellCombo.h"
#include "controls/shell/RzShellList.h"
#include "platform/Paths.h"
#include "views/commands/Commands.h"
#include "views/contents/ContentsFill.h"

namespace {

constexpr const char* kBack = "lbtnBack";
constexpr const char* kForward = "lbtnForward";
constexpr const char* kUp = "lbtnUp";

// A direct repeat is left out; case counts.
void Record(QStringList& history, const QString& path) {
  if (history.isEmpty() || history.last() != path) history.append(path);
}

// The folder above, the computer level above a volume.
QString FolderAbove(const QString& path) {
  const QString above = IsVolumeRoot(path) ? QString() : ExtractFileDir(path);
  return above != path ? above : QString();
}

}  // namespace

TNavigation::TNavigation(TRzShellList& list, TRzShellCombo& combo, TContentsFill& fill,
                         TMainCommands& commands)
    : FList(list), FCombo(combo), FFill(fill), FCommands(commands) {
  FCommands.OnClick(kBack, [this] { lbtnBackClick(); });
  FCommands.OnClick(kForward, [this] { lbtnForwardClick(); });
  FCommands.OnClick(kUp, [this] { lbtnUpClick(); });
}

void TNavigation::Enable(const char* command, bool enabled) {
  FCommands.SetEnabled({command}, enabled);
}

// A folder that has gone meanwhile is gone to all the same: the list shows that it can't be read, and
// Forward leads back.
void TNavigation::lbtnBackClick() {
  if (!FBackHistory.isEmpty()) {
    Record(FForwardHistory, FList.Path());
    FFill.Stop();
    FList.SetPath(FBackHistory.takeLast());
    Enable(kForward, !FForwardHistory.isEmpty());
    Enable(kBack, !FBackHistory.isEmpty());
  }
  Enable(kUp, !FList.Path().isEmpty());
}

void TNavigation::lbtnForwardClick() {
  if (FForwardHistory.isEmpty()) return;
  Record(FBackHistory, FList.Path());
  FFill.Stop();
  FList.SetPath(FForwardHistory.takeLast());
  Enable(kUp, !FList.Path().isEmpty());
  Enable(kBack, true);
  Enable(kForward, !FForwardHistory.isEmpty());
}

// The paths of Forward stay, to be of use again after a Back.
void TNavigation::lbtnUpClick() {
  const QString path = FList.Path();
  if (path.isEmpty()) return Enable(kUp, false);
  Record(FBackHistory, path);
  FFill.Stop();
  const QString above = FolderAbove(path);
  FList.SetPath(above);
  Enable(kUp, !above.isEmpty());
  Enable(kBack, !FBackHistory.isEmpty());
  Enable(kForward, false);
}

void TNavigation::RzShellCombo1Change() {
  const QString path = FList.Path();
  if (FBackHistory.isEmpty() || FBackHistory.last() != path) FBackHistory.append(FolderAbove(path));
  Enable(kForward, false);
  Enable(kBack, true);
  Enable(kUp, !FCombo.Path().isEmpty());
}

bool TNavigation::ShellListContentDblClick() {
  const TListItem* item = FList.Selected();
  if (item == nullptr || !TRzShellList::ShellData(*item).IsFolder()) return false;
  FFill.Stop();
  FBackHistory.append(FCombo.Path());
  EnableAfterEntering();
  return true;
}

void TNavigation::OpenFolder(const QString& path) {
  FCombo.SetPath(path);
  FBackHistory.append(FCombo.Path());
  EnableAfterEntering();
}

void TNavigation::EnableAfterEntering() {
  Enable(kForward, false);
  Enable(kBack, true);
  Enable(kUp, true);
}

void TNavigation::ClearHistory() {
  FBackHistory.clear();
  FForwardHistory.clear();
}
