// One running copy of a program per logon: a second copy finds the first and calls it.
#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>

// Windows: a named mutex, and a registered message that goes to every window. Linux: a lock on a file and a
// socket beside it in the user's runtime folder (XDG_RUNTIME_DIR). Where that is missing, or not this user's
// alone, there is no guard and every copy is the first. Main thread.
class TSingleInstance {
 public:
  // Copies with this text find each other. A copy that is not the first has called the first when this
  // returns, or has given up after kCallMs; it needs no application object for that.
  explicit TSingleInstance(const QString& identity);
  ~TSingleInstance();
  TSingleInstance(const TSingleInstance&) = delete;
  TSingleInstance& operator=(const TSingleInstance&) = delete;

  [[nodiscard]] bool IsFirst() const { return FIsFirst; }

  // From now on each call of a later copy runs this in the event loop, with the token by which the desktop
  // lets a window come to the front; empty if it gave the caller none. Calls since the making are not lost.
  // Needs the application object and goes before it.
  void OnCall(std::function<void(const QByteArray& token)> called);

  // Milliseconds that a first copy which takes no calls delays a later one at most.
  static constexpr int kCallMs = 2000;

 private:
  struct TGuard;

  std::unique_ptr<TGuard> FGuard;
  bool FIsFirst = true;
};
