// The entry point: makes the main form, then the wizard, joins them and runs the message loop.
#include <QApplication>
#include <QIcon>

#include "app/UnitScanWizard.h"
#include "platform/Process.h"
#include "views/StartParameters.h"
#include "views/UnitMain.h"

namespace {

QIcon ProgramIcon() {
  QIcon icon;
  for (const int side : {16, 32, 48, 64, 128, 256})
    icon.addFile(u":/art/tallyscope%1.png"_qs.arg(side), QSize(side, side));
  return icon;
}

// The program's own file pictures serve wherever the desktop's icon theme has none.
void UseOwnIconsAsFallback() {
  const QString own = u"tallyscope"_qs;
  QIcon::setFallbackThemeName(own);
  if (QIcon::themeName().isEmpty()) QIcon::setThemeName(own);
}

}  // namespace

int main(int argc, char** argv) {
  MakeProcessDpiAware();  // before any window, and before Qt asks the system for its screens
  QApplication application(argc, argv);
  QApplication::setApplicationName(u"Tallyscope"_qs);
  QApplication::setApplicationDisplayName(u"Tallyscope"_qs);
  QApplication::setDesktopFileName(u"tallyscope"_qs);
  UseOwnIconsAsFallback();
  QApplication::setWindowIcon(ProgramIcon());

  const TStartParameters parameters(ProgramParameters(argc, argv));  // without what Qt took for itself
  TFormMain formMain(parameters);
  TFormWizard formWizard(formMain, formMain.StaticImages(), parameters);
  formMain.SetScanForm(formWizard);
  formMain.show();
  return QApplication::exec();
}
