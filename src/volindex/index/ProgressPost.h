// Passes progress on to the one who asked for it.
#pragma once

#include "volindex/include/volindex.h"

#include <cstdint>
#include <mutex>

namespace volindex {

// Any thread.
// The target is called with the lock held, so that values arrive in rising order; hence it must not call back
// here.
class TProgressPost {
 public:
  // Null for none.
  void SetTarget(const TTallyscopeNotify* target, uint32_t message);

  // A scan begins: any value is higher than the last.
  void Restart();

  // Posts values of 1 to 99 that are higher than all posted since Restart, drops others.
  void Post(int percent);

 private:
  std::mutex FLock;
  const TTallyscopeNotify* FTarget = nullptr;
  uint32_t FMessage = 0;
  int FPosted = 0;
};

}  // namespace volindex
