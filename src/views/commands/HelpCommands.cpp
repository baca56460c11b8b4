#include "views/commands/HelpCommands.h"

#include <QApplication>
#include <QLibrary>

#include "platform/KnownFolders.h"
#include "support/ShellRoutines.h"

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
