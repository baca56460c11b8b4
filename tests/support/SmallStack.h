// Runs work on a thread whose stack has no room for a call per level or record.
#pragma once

#include <QThread>

#include <memory>
#include <mutex>

template <typename Work>
auto OnSmallStack(const Work& work) {
  std::mutex guard;
  decltype(work()) result{};
  const std::unique_ptr<QThread> thread(QThread::create([&] {
    const std::lock_guard lock(guard);
    result = work();
  }));
  thread->setStackSize(256 * 1024);
  thread->start();
  thread->wait();
  const std::lock_guard lock(guard);
  return result;
}
