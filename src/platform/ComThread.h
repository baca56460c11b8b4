// The component model of Windows, which serves one thread at a time. Linux has none: nothing happens there.
#pragma once

// While one of these lives, its thread may use components. They nest. Made and destroyed on the same thread.
class TComThread {
 public:
  TComThread();
  ~TComThread();
  TComThread(const TComThread&) = delete;
  TComThread& operator=(const TComThread&) = delete;

 private:
  [[maybe_unused]] bool FJoined = false;  // Windows only
};
