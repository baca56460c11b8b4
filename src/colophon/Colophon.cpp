#include "colophon/include/colophon.h"

#include <QApplication>
#include <QDesktopServices>
#include <QMessageBox>
#include <QUrl>

namespace {

const QString kHomePage = QStringLiteral(TALLYSCOPE_HOME_PAGE);

QString AboutText() {
  return QStringLiteral(
             "<h3>Tallyscope %1</h3>"
             "<p>Shows where the space on this computer's drives has gone.</p>"
             "<p><a href=\"%2\">%2</a></p>"
             "<p>Distributed under the MIT license. Built with Qt %3 and libpng.</p>")
      .arg(QStringLiteral(TALLYSCOPE_VERSION), kHomePage, QLatin1String(qVersion()));
}

}  // namespace

void ShowAbout(void* application) {
  const auto* program = static_cast<QApplication*>(application);
  QMessageBox box(QMessageBox::NoIcon, QStringLiteral("About Tallyscope"), AboutText(), QMessageBox::Ok,
                  program->activeWindow());
  box.setObjectName(QStringLiteral("FormAbout"));
  box.setIconPixmap(program->windowIcon().pixmap(64));
  box.setTextInteractionFlags(Qt::TextBrowserInteraction);
  box.exec();
}

void NavigateToHomePage() {
  QDesktopServices::openUrl(QUrl(kHomePage));
}
