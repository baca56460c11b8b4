// The entry point: ends a second copy, makes the main form, then the wizard, joins them and runs the message
// loop.
//
// The order matters: help and version need no screen, the second copy needs no application object, the forms
// need one, and the wizard needs the main form, which takes the wizard in turn before it is shown.
#include <QApplication>
#include <QIcon>
#include <QWidget>

#include <cstdio>

#include "app/FaultFilter.h"
#include "app/UnitScanWizard.h"
#include "platform/KnownFolders.h"
#include "platform/Paths.h"
#include "platform/Process.h"
#include "platform/Shell.h"
#include "platform/SingleInstance.h"
#include "scan/UnitScan.h"
#include "views/main/Dialogs.h"
#include "views/main/Looks.h"
#include "views/main/StartParameters.h"
#include "views/main/UnitMain.h"

namespace {

// The file name is part of it, so that a copy under another name is another program; in capitals, as some
// systems keep no case in names.
QString Identity() {
  return u"{4E752811-6443-4439-A8B4-F4CF890AB92B}"_qs + ExtractFileName(ProgramFile()).toUpper();
}

void BringToFront(QWidget* form, const QByteArray& token) {
  if (form != nullptr && form->isVisible()) ForceForeground(*form->windowHandle(), token);
}

// One copy of the program per logon: a second start wakes the first copy and ends before any form exists. A
// copy whose file has another name is another program. Made before the application object, lives to the end
// of the process.
class TUniqueInstance {
 public:
  // Ends the process with 0 where another copy runs. Nothing of this start reaches that one but the desktop's
  // leave to come to the front.
  TUniqueInstance() : FInstance(Identity()) {
    if (!FInstance.IsFirst()) EndProcess(0);
  }

  // From now on a later start restores and raises this form, and a modal one above it. The form lives as long
  // as the message loop.
  void Serve(QWidget& form) {
    FInstance.OnCall([&form](const QByteArray& token) {
      BringToFront(&form, token);
      BringToFront(QApplication::activeModalWidget(), token);
    });
  }

 private:
  TSingleInstance FInstance;
};

// The program's own file pictures serve wherever the desktop's icon theme has none.
void UseOwnIconsAsFallback() {
  const QString own = u"tallyscope"_qs;
  QIcon::setFallbackThemeName(own);
  if (QIcon::themeName().isEmpty()) QIcon::setThemeName(own);
}

}  // namespace

int main(int argc, char** argv) {
  // Before anything that needs a screen: help and version are printed on a machine without one.
  if (const QByteArray answer = ConsoleAnswer(ProgramParameters(argc, argv)); !answer.isEmpty()) {
    MakeOutputPlain();
    std::fwrite(answer.constData(), 1, static_cast<size_t>(answer.size()), stdout);
    return std::fflush(stdout) == 0 ? 0 : 1;
  }
  MakeProcessDpiAware();  // before any window, and before Qt asks the system for its screens
  // A second start ends here, before it has asked the desktop for anything.
  TUniqueInstance instance;
  TGuardedApplication application(argc, argv);
  QApplication::setApplicationName(u"Tallyscope"_qs);
  QApplication::setApplicationDisplayName(u"Tallyscope"_qs);
  QApplication::setDesktopFileName(u"tallyscope"_qs);
  UseOwnIconsAsFallback();
  QApplication::setWindowIcon(ProgramIcon());

  const TStartParameters parameters(ProgramParameters(argc, argv));  // without what Qt took for itself
  // Each of these uses those above it. None is destroyed: the process ends below with all of them.
  TSystemDialogs dialogs;
  // The window may have the system ask for consent to read whole volumes.
  AskForElevation = TALLYSCOPE_ASK_ON_DESKTOP;
  TFormMain formMain(parameters, dialogs);
  TFormWizard formWizard(formMain, formMain.StaticImages(), parameters);
  formMain.SetScanForm(formWizard);
  application.ReportOn(formMain, formMain.Language());
  instance.Serve(formMain);
  formMain.show();
  const int exitCode = QApplication::exec();
  EndProcess(exitCode);  // a scan that hangs on a dead mount must not keep the process
}
