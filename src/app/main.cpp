// The entry point: ends a second copy, makes the main form, then the wizard, joins them and runs the message
// loop.
#include <QIcon>

#include "app/FaultFilter.h"
#include "app/UniqueInstance.h"
#include "app/UnitScanWizard.h"
#include "platform/Process.h"
#include "scan/UnitScan.h"
#include "views/main/Dialogs.h"
#include "views/main/Looks.h"
#include "views/main/StartParameters.h"
#include "views/main/UnitMain.h"

#include <cstdio>

namespace {

// The program's own file pictures serve wherever the desktop's icon theme has none.
void UseOwnIconsAsFallback() {
  const QString own = u"tallyscope"_qs;
  QIcon::setFallbackThemeName(own);
  if (QIcon::themeName().isEmpty()) QIcon::setThemeName(own);
}

}  // namespace

int main(int argc, char** argv) {
  if (const QByteArray answer = ConsoleAnswer(ProgramParameters(argc, argv)); !answer.isEmpty()) {
    MakeOutputPlain();
    std::fwrite(answer.constData(), 1, static_cast<size_t>(answer.size()), stdout);
    return std::fflush(stdout) == 0 ? 0 : 1;
  }
  MakeProcessDpiAware();  // before any window, and before Qt asks the system for its screens
  TUniqueInstance instance;
  TGuardedApplication application(argc, argv);
  QApplication::setApplicationName(u"Tallyscope"_qs);
  QApplication::setApplicationDisplayName(u"Tallyscope"_qs);
  QApplication::setDesktopFileName(u"tallyscope"_qs);
  UseOwnIconsAsFallback();
  QApplication::setWindowIcon(ProgramIcon());

  const TStartParameters parameters(ProgramParameters(argc, argv));  // without what Qt took for itself
  TSystemDialogs dialogs;
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
