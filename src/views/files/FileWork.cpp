#include "views/files/FileWork.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QProgressDialog>
#include <QWindow>

#include <algorithm>

#include "platform/FileActions.h"
#include "platform/Messages.h"
#include "support/PLanguage.h"
#include "views/commands/Commands.h"

namespace {

constexpr int kMomentMs = 100;  // in which the window may stand still
// From one look at input and painting to the next, and from the begin of a move to the box that tells of it.
constexpr int kStepMs = 20;
constexpr int kTellAfterMs = 1000;
// The box counts in int, which the bytes of a file may exceed.
constexpr int kProgressSteps = 1000;

// What a user does. Moves of the mouse, paintings, timers and messages pass, so that the window looks alive.
bool IsInput(QEvent::Type type) {
  switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletRelease:
      return true;
    default:
      return false;
  }
}

}  // namespace

TFileWork::TFileWork(TMainCommands& commands, QWidget& window, const TLanguage& language)
    : FCommands(commands), FWindow(window), FLanguage(language) {
  FCommands.SetHeld(true);
}

TFileWork::~TFileWork() {
  FCommands.SetHeld(false);
  delete FProgressBox;
}

// Not before the user has answered: the question is a window of this program and needs its input.
void TFileWork::Begin() {
  FBegun = true;
  qApp->installEventFilter(this);
}

// A close is not held up: the window goes, and the walk ends behind the row at hand. All other input is
// dropped but for that of the box that tells of a copy, whose Cancel must work.
bool TFileWork::eventFilter(QObject* watched, QEvent* event) {
  // Only noted: the window decides by itself.
  if (watched == &FWindow && event->type() == QEvent::Close) FEnded = true;
  return FBegun && IsInput(event->type()) && !IsInProgressBox(watched);
}

// An event goes to the window of the system first and to the widget in it next.
bool TFileWork::IsInProgressBox(QObject* watched) const {
  if (FProgressBox == nullptr) return false;
  const auto* widget = qobject_cast<QWidget*>(watched);
  return watched == FProgressBox->windowHandle() || (widget != nullptr && widget->window() == FProgressBox);
}

// Nearly every move is a rename and over within the first moment, for which nothing is pumped: so the list
// can't change under a walk that needs no waiting. A longer one lets the window paint and answer in small
// steps.
bool TFileWork::Await(TFileMove& move, const QString& name) {
  QElapsedTimer waited;
  waited.start();
  if (!move.WaitFor(kMomentMs)) {
    while (!move.WaitFor(kStepMs)) {
      PumpMessages();
      if (FEnded) move.Progress().Stop = true;
      if (waited.elapsed() >= kTellAfterMs && !FEnded) ShowProgress(move, name);
    }
  }
  if (FProgressBox != nullptr) FProgressBox->hide();
  return move.Result();
}

void TFileWork::ShowProgress(TFileMove& move, const QString& name) {
  if (FProgressBox == nullptr) {
    FProgressBox = new QProgressDialog(&FWindow);
    FProgressBox->setObjectName(u"FileProgress"_qs);
    FProgressBox->setWindowTitle(FWindow.windowTitle());
    FProgressBox->setCancelButtonText(FLanguage.GetMessage(u"M_Cancel"_qs, u"Cancel"_qs));
    FProgressBox->setAutoClose(false);
    FProgressBox->setAutoReset(false);
    FProgressBox->setMinimumDuration(0);
    connect(FProgressBox, &QProgressDialog::canceled, this, [this] { FEnded = true; });
  }
  FProgressBox->setLabelText(
      FLanguage.GetMessage(u"M_Moving"_qs, u"Moving \"%s\""_qs).replace(u"%s"_qs, name));
  const qint64 total = move.Progress().Total;
  FProgressBox->setMaximum(total > 0 ? kProgressSteps : 0);  // 0 shows that something is going on
  if (total > 0)
    FProgressBox->setValue(
        static_cast<int>(kProgressSteps * std::min(1.0, static_cast<double>(move.Progress().Done) /
                                                            static_cast<double>(total))));
  FProgressBox->show();
}
