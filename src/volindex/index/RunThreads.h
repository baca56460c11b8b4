// Runs one function on several threads, or on one that need not be waited for.
#pragma once

#include <atomic>
#include <functional>

namespace volindex {

// Calls work(0) … work(count - 1), the first on the calling thread, and waits for all. When no more threads
// can be started, fewer calls are made, so the work has to be shared out by the callee. An exception that
// leaves any call is thrown here again when all have ended, the first one if there are several.
void RunThreads(unsigned count, const std::function<void(unsigned thread)>& work);

// Has a thread of its own do the work and answers as it does, or with false as soon as `stop` is set. The
// work then goes on by itself, so it owns all that it needs; the end of the process does not wait for it.
// Throws when no thread can be started.
[[nodiscard]] bool RunAbandonable(const std::atomic<bool>& stop, std::function<bool()> work);

}  // namespace volindex
