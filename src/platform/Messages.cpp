// A post puts the message into the window's own queue and a wake event into Qt's; the event's arrival takes
// one message (TakeOne) and runs its handler. A send does the same and waits for a reply.
//
// The order of locks: the list of windows (Windows().Guard) or a line's FGuard, then a window's FGuard, then
// a reply's. No handler ever runs under one of them. A window takes itself off the list before anything of it
// goes, so whoever finds it there under that lock may use it until the lock is given back.
#include "platform/Messages.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEvent>
#include <QScopeGuard>
#include <QThread>

#include <algorithm>
#include <condition_variable>
#include <set>
#include <utility>

namespace {

const QEvent::Type kWake = static_cast<QEvent::Type>(QEvent::registerEventType());

// The windows that are there. Never destroyed itself: a thread may still post while the process ends.
struct TWindows {
  std::mutex Guard;
  std::set<const TMessageWindow*> Present;  // under Guard, which also keeps them there
};

TWindows& Windows() {
  static auto* const windows = new TWindows;
  return *windows;
}

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
    : FHandlers(handlers) {
  const std::lock_guard lock(Windows().Guard);
  Windows().Present.insert(this);
}

TMessageWindow::~TMessageWindow() {
  {
    const std::lock_guard lock(Windows().Guard);
    Windows().Present.erase(this);
  }
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

bool TMessageWindow::QueueIfPresent(TMessageWindow* window, const TQueued& queued) {
  const std::lock_guard lock(Windows().Guard);
  const bool isPresent = Windows().Present.contains(window);
  if (isPresent) window->Queue(queued);
  return isPresent;
}

void TMessageWindow::Queue(const TQueued& queued) {
  auto* const wake = new QEvent(kWake);  // before the lock, which hands it over
  {
    const std::lock_guard lock(FGuard);
    FQueue.push_back(queued);
  }
  QCoreApplication::postEvent(this, wake);
}

// The wake events of these messages find less in the queue than they were posted for, which does no harm.
void TMessageWindow::TakeBack(const TMessageLine& line) {
  const std::lock_guard lock(FGuard);
  std::erase_if(FQueue, [&](const TQueued& queued) {
    if (queued.Line != &line) return false;
    if (queued.Reply != nullptr) queued.Reply->Give();
    return true;
  });
}

bool TMessageWindow::IsOfThisThread(const TMessageWindow* window) {
  const std::lock_guard lock(Windows().Guard);
  return Windows().Present.contains(window) && window->thread() == QThread::currentThread();
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
  TMessageWindow::QueueIfPresent(window, {{msg, wparam, lparam}});
}

void SendMessage(TMessageWindow* window, unsigned msg, quintptr wparam, qintptr lparam) {
  if (TMessageWindow::IsOfThisThread(window)) {
    window->Dispatch({msg, wparam, lparam});
    return;
  }
  TMessageWindow::TReply reply;
  if (TMessageWindow::QueueIfPresent(window, {{msg, wparam, lparam}, &reply})) reply.Await();
}

// The guard is held while the message is put into the window's queue, so that the window is there, and not
// while it is waited for, so that the window's thread can close the line.
void TMessageLine::Post(unsigned msg, quintptr wparam, qintptr lparam) {
  const std::lock_guard lock(FGuard);
  if (FWindow != nullptr) FWindow->Queue({{msg, wparam, lparam}, nullptr, this});
}

void TMessageLine::Send(unsigned msg, quintptr wparam, qintptr lparam) {
  TMessageWindow::TReply reply;
  {
    const std::lock_guard lock(FGuard);
    if (FWindow == nullptr) return;
    FWindow->Queue({{msg, wparam, lparam}, &reply, this});
  }
  reply.Await();
}

void TMessageLine::Close() {
  const std::lock_guard lock(FGuard);
  if (TMessageWindow* const window = std::exchange(FWindow, nullptr)) window->TakeBack(*this);
}

void PumpMessages() {
  QCoreApplication::processEvents(QEventLoop::AllEvents);
}

void TPathText::Store(const QString& text) {
  const auto length = std::min<qsizetype>(text.size(), kUnits - 1);
  const auto* units = reinterpret_cast<const char16_t*>(text.utf16());
  for (int i = 0; i < kUnits; ++i)
    FUnits[static_cast<size_t>(i)].store(i < length ? units[i] : u'\0', std::memory_order_relaxed);
}

QString TPathText::Load() const {
  std::array<char16_t, kUnits> units;
  int length = 0;
  while (length < kUnits) {
    units[static_cast<size_t>(length)] = FUnits[static_cast<size_t>(length)].load(std::memory_order_relaxed);
    if (units[static_cast<size_t>(length)] == u'\0') break;
    ++length;
  }
  return QString::fromUtf16(units.data(), length);
}
