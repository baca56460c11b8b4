#include "platform/Messages.h"

#include <QCoreApplication>
#include <QEvent>
#include <QThread>

#include <condition_variable>

namespace {

const QEvent::Type kWake = static_cast<QEvent::Type>(QEvent::registerEventType());
const QEvent::Type kSend = static_cast<QEvent::Type>(QEvent::registerEventType());

// Lets the sender wait until its message was handled, or the event was dropped with its window.
struct TReply {
  std::mutex Guard;
  std::condition_variable Changed;
  bool Done = false;
};

class TSendEvent : public QEvent {
 public:
  TSendEvent(const TMessage& message, TReply& reply) : QEvent(kSend), Message(message), FReply(reply) {}
  ~TSendEvent() override {
    const std::lock_guard lock(FReply.Guard);
    FReply.Done = true;
    FReply.Changed.notify_all();
  }

  const TMessage Message;

 private:
  TReply& FReply;
};

}  // namespace

TMessageWindow::TMessageWindow(std::initializer_list<std::pair<const unsigned, THandler>> handlers)
    : FHandlers(handlers) {}

TMessageWindow::~TMessageWindow() = default;

bool TMessageWindow::event(QEvent* event) {
  if (event->type() == kWake) {
    TakeOne();
    return true;
  }
  if (event->type() == kSend) {
    Dispatch(static_cast<TSendEvent*>(event)->Message);
    return true;
  }
  return QObject::event(event);
}

void TMessageWindow::Dispatch(const TMessage& message) {
  if (const auto handler = FHandlers.find(message.Msg); handler != FHandlers.end()) handler->second(message);
}

// One wake event per message, so that a pump inside a handler goes on with the next message.
void TMessageWindow::TakeOne() {
  TMessage message;
  {
    const std::lock_guard lock(FGuard);
    if (FQueue.empty()) return;
    message = FQueue.front();
    FQueue.pop_front();
  }
  Dispatch(message);
}

void PostMessage(TMessageWindow* window, unsigned msg, quintptr wparam, qintptr lparam) {
  if (window == nullptr) return;
  {
    const std::lock_guard lock(window->FGuard);
    window->FQueue.push_back({msg, wparam, lparam});
  }
  QCoreApplication::postEvent(window, new QEvent(kWake));
}

void SendMessage(TMessageWindow* window, unsigned msg, quintptr wparam, qintptr lparam) {
  if (window == nullptr) return;
  if (window->thread() == QThread::currentThread()) {
    window->Dispatch({msg, wparam, lparam});
    return;
  }
  TReply reply;
  QCoreApplication::postEvent(window, new TSendEvent({msg, wparam, lparam}, reply));
  std::unique_lock lock(reply.Guard);
  reply.Changed.wait(lock, [&] { return reply.Done; });
}

void PumpMessages() { QCoreApplication::processEvents(QEventLoop::AllEvents); }
