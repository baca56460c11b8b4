#include "support/ShellRoutines.h"

#include "platform/Icons.h"
#include "platform/KnownFolders.h"
#include "platform/Shell.h"
#include "support/Korvel_Routine_New.h"

namespace {

// The program that runs a routine of a library: what it is to run stands behind its name and one character.
const QString kRunDll = u"RUNDLL32.EXE"_qs;
constexpr qsizetype kRunDllParameters = 255;

}  // namespace

QIcon GetFileIconHandle(const QString& path) {
  return FileIcon(ExtractCommandPath(path));
}

void OpenWithShell(const QString& target) {
  QString text = target;
  text.replace(u"%WINDOWS%"_qs, GetWindowsDir());
  text.replace(u"%SYSTEM%"_qs, GetSystemDir());
  text.replace(u"%APP%\\"_qs, ProgramFolder());
  text.replace(u"%APP%/"_qs, ProgramFolder());
  if (text.left(kRunDll.size()).toUpper() == kRunDll)
    StartProgram(u"RunDll32.exe"_qs, text.mid(kRunDll.size() + 1, kRunDllParameters));
  else
    OpenTarget(text);
}
