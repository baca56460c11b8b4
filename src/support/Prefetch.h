// A hint to the processor.
#pragma once

// Fetches the memory at the address ahead of its use; does nothing where the compiler cannot ask for that.
inline void Prefetch([[maybe_unused]] const void* address) {
#ifdef __has_builtin
#if __has_builtin(__builtin_prefetch)
  __builtin_prefetch(address);
#endif
#endif
}
