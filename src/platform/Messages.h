// Numbered messages between threads: a background thread posts a number with two words to a window, and
// the window's handler for that number runs on the window's own thread.
#pragma once

#include <QObject>
#include <QString>

#include <array>
#include <atomic>
#include <deque>
#include <functional>
#include <initializer_list>
#include <map>
#include <mutex>
#include <utility>

struct TMessage {
  unsigned Msg = 0;
  quintptr WParam = 0;
  qintptr LParam = 0;
};

class TMessageLine;

// The receiving end of messages. A form owns one and declares its handlers in one table, number to
// handler; the address of the object is the form's window handle. Lives on the thread that made it. A number
// without a handler is dropped, and so is whatever comes after the window's end.
class TMessageWindow : public QObject {
 public:
  using THandler = std::function<void(const TMessage&)>;

  explicit TMessageWindow(std::initializer_list<std::pair<const unsigned, THandler>> handlers);
  ~TMessageWindow() override;

  bool event(QEvent* event) override;

 private:
  friend class TMessageLine;
  friend void PostMessage(TMessageWindow*, unsigned, quintptr, qintptr);
  friend void SendMessage(TMessageWindow*, unsigned, quintptr, qintptr);

  class TReply;
  struct TQueued {
    TMessage Message;
    TReply* Reply = nullptr;  // of the sender that waits, if one does
    const TMessageLine* Line = nullptr;
  };

  // False for a window that is null or gone.
  static bool QueueIfPresent(TMessageWindow* window, const TQueued& queued);
  [[nodiscard]] static bool IsOfThisThread(const TMessageWindow* window);
  void Queue(const TQueued& queued);
  void TakeBack(const TMessageLine& line);
  void Dispatch(const TMessage& message);
  void TakeOne();

  const std::map<unsigned, THandler> FHandlers;
  std::mutex FGuard;
  std::deque<TQueued> FQueue;  // under FGuard
};

// Queues the message and returns at once; messages of one sender arrive in order. A window that is null or
// gone drops it. Callable from any thread.
void PostMessage(TMessageWindow* window, unsigned msg, quintptr wparam, qintptr lparam);

// Runs the handler on the window's thread and returns after it has ended. Called on the window's own
// thread it is a plain call. A window that is null or gone drops it. Callable from any thread.
void SendMessage(TMessageWindow* window, unsigned msg, quintptr wparam, qintptr lparam);

// The way from a thread that nobody waits for to a window that may go before it.
class TMessageLine {
 public:
  explicit TMessageLine(TMessageWindow* window) : FWindow(window) {}
  TMessageLine(const TMessageLine&) = delete;
  TMessageLine& operator=(const TMessageLine&) = delete;

  // As the functions above, but nothing is sent once the line is closed. One Send at a time, and not from the
  // window's own thread.
  void Post(unsigned msg, quintptr wparam, qintptr lparam);
  void Send(unsigned msg, quintptr wparam, qintptr lparam);

  // Ends the line before its window goes: what was posted or sent and not handled yet never will be, and a
  // Send that waits returns. The window's thread; safe to call twice.
  void Close();

 private:
  std::mutex FGuard;
  TMessageWindow* FWindow;  // under FGuard; null once closed
};

// Handles the input and messages that wait for this thread, once, and returns. Main thread.
void PumpMessages();

// The fixed buffer in which a path text crosses threads: 260 UTF-16 units that the sender overwrites while
// a message that names the buffer may still be queued. Each unit is a relaxed atomic, so a torn text is
// a wrong text for a moment and never undefined behaviour.

class TPathText {
 public:
  static constexpr int kUnits = 260;

  // Stores the text, cut at 259 units, and zeroes the rest. The sender's thread.
  void Store(const QString& text);

  // The units up to the first NUL. Any thread; the text may mix two stores.
  [[nodiscard]] QString Load() const;

 private:
  std::array<std::atomic<char16_t>, kUnits> FUnits{};
};
