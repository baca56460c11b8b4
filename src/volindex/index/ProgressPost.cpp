#include "volindex/index/ProgressPost.h"

namespace volindex {

namespace {

constexpr int kLastPhase = 99;

}  // namespace

void TProgressPost::SetTarget(const TTallyscopeNotify* target, uint32_t message) {
  const std::lock_guard guard(FLock);
  FTarget = target;
  FMessage = message;
}

void TProgressPost::Restart() {
  const std::lock_guard guard(FLock);
  FPosted = 0;
}

void TProgressPost::Post(int percent) {
  const std::lock_guard guard(FLock);
  if (percent <= FPosted || percent > kLastPhase) return;
  FPosted = percent;
  if (FTarget != nullptr && FTarget->Post != nullptr) FTarget->Post(FTarget->Self, FMessage, 0, percent);
}

}  // namespace volindex
