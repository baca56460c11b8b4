#include "support/ShellRoutines.h"

#include "platform/Icons.h"
#include "platform/KnownFolders.h"
#include "platform/Shell.h"
#include "support/Korvel_Routine_New.h"

QIcon GetFileIconHandle(const QString& path) {
  return FileIcon(ExtractCommandPath(path));
}

void OpenWithShell(const QString& target) {
  QString text = target;
  text.replace(u"%WINDOWS%"_qs, GetWindowsDir());
  text.replace(u"%SYSTEM%"_qs, GetSystemDir());
  text.replace(u"%APP%\\"_qs, ProgramFolder());
  text.replace(u"%APP%/"_qs, ProgramFolder());
  OpenTarget(text);
}
