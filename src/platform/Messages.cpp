#include "platform/Messages.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEvent>
#include <QScopeGuard>
#include <QThread>

#include <condition_variable>

namespace {

const QEvent::Type kWake = static_cast<QEvent::Type>(QEvent::registerEventType());

}  // namespace

// Lets the sender wait until its message was handled, or dropped with its window.
class TMessageWindow::TReply {
 public:
  void Give() {
    const std::lock_guard lock(FGuard);
    FGiven = true;
    FChanged.notify_all();
  }

  void Await() {
    std::unique_lock lock(FGuard);
    FChanged.wait(lock, [this] { return FGiven; });
  }

 private:
  std::mutex FGuard;
  std::condition_variable FChanged;
  bool FGiven = false;
};

TMessageWindow::TMessageWindow(std::initializer_list<std::pair<const unsigned, THandler>> handlers)
    : FHandlers(handlers) {}

TMessageWindow::~TMessageWindow() {
  const std::lock_guard lock(FGuard);
  for (const TQueued& queued : FQueue)
    if (queued.Reply != nullptr) queued.Reply->Give();
}

// The lock hands the event over from its sender's thread, before a byte of it is read.
bool TMessageWindow::event(QEvent* event) {
  std::unique_lock lock(FGuard);
  const bool isWake = event->type() == kWake;
  lock.unlock();
  if (!isWake) return QObject::event(event);
  TakeOne();
  return true;
}

void TMessageWindow::Queue(const TMessage& message, TReply* reply) {
  auto* const wake = new QEvent(kWake);  // before the lock, which hands it over
  {
    const std::lock_guard lock(FGuard);
    FQueue.push_back({message, reply});
  }
  QCoreApplication::postEvent(this, wake);
}

void TMessageWindow::Dispatch(const TMessage& message) {
  if (const auto handler = FHandlers.find(message.Msg); handler != FHandlers.end()) handler->second(message);
}

// One wake event per message, so that an event loop inside a handler goes on with the next message. That
// loop must be told: an event dispatcher looks at posted events again only after a new one came.
void TMessageWindow::TakeOne() {
  TQueued next;
  bool isLast = true;
  {
    const std::lock_guard lock(FGuard);
    if (FQueue.empty()) return;
    next = FQueue.front();
    FQueue.pop_front();
    isLast = FQueue.empty();
  }
  if (!isLast) QAbstractEventDispatcher::instance()->wakeUp();
  const auto giveReply = qScopeGuard([&] {
    if (next.Reply != nullptr) next.Reply->Give();
  });
  Dispatch(next.Message);
}

void PostMessage(TMessageWindow* window, unsigned msg, quintptr wparam, qintptr lparam) {
  if (window != nullptr) window->Queue({msg, wparam, lparam}, nullptr);
}

void SendMessage(TMessageWindow* window, unsigned msg, quintptr wparam, qintptr lparam) {
  if (window == nullptr) return;
  if (window->thread() == QThread::currentThread()) {
    window->Dispatch({msg, wparam, lparam});
    return;
  }
  TMessageWindow::TReply reply;
  window->Queue({msg, wparam, lparam}, &reply);
  reply.Await();
}

void PumpMessages() {
  QCoreApplication::processEvents(QEventLoop::AllEvents);
}
