// Runs one function on several threads.
#pragma once

#include <functional>

namespace volindex {

// Calls work(0) … work(count - 1), the first on the calling thread, and waits for all. When no more threads
// can be started, fewer calls are made, so the work has to be shared out by the callee. An exception that
// leaves any call is thrown here again when all have ended, the first one if there are several.
void RunThreads(unsigned count, const std::function<void(unsigned thread)>& work);

}  // namespace volindex
