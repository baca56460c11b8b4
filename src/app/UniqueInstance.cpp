#include "app/UniqueInstance.h"

#include <QApplication>
#include <QWidget>

#include "platform/Foreground.h"
#include "platform/KnownFolders.h"
#include "platform/Paths.h"
#include "platform/Process.h"

namespace {

QString Identity() {
  return u"{4E752811-6443-4439-A8B4-F4CF890AB92B}"_qs + ExtractFileName(ProgramFile()).toUpper();
}

void BringToFront(QWidget* form, const QByteArray& token) {
  if (form != nullptr && form->isVisible()) ForceForeground(*form->windowHandle(), token);
}

}  // namespace

TUniqueInstance::TUniqueInstance() : FInstance(Identity()) {
  if (!FInstance.IsFirst()) EndProcess(0);
}

void TUniqueInstance::Serve(QWidget& form) {
  FInstance.OnCall([&form](const QByteArray& token) {
    BringToFront(&form, token);
    BringToFront(QApplication::activeModalWidget(), token);
  });
}
