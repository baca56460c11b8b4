// Threads that share the reads of a plan among themselves.
//
// A thread takes the next read of the plan, waits for it, handles it and goes on: so as many reads are under
// way as there are threads, mostly of neighbouring places. Whatever fails in one of them ends all at their
// next read.
#pragma once

#include <atomic>
#include <functional>
#include <span>

#include "volindex/readers/ByteSource.h"
#include "volindex/readers/Reader.h"
#include "volindex/readers/ext4/ReadPlan.h"

namespace volindex::ext4 {

struct TProgressRange {
  int From;  // percent
  int To;
};

class TReadCrew {
 public:
  // Handles what one read has brought, on one of the threads; false if it can't be understood.
  using THandler = std::function<bool(unsigned thread, const TReadBatch& batch, TBytes bytes)>;

  TReadCrew(const TByteSource& source, const TScanControl& control, unsigned threads);

  [[nodiscard]] unsigned Threads() const { return FThreads; }

  // Reads and handles all batches and returns when every thread has ended. Done if all of them were handled,
  // HandedOver if a read failed, a handler said false or memory ran out; a handler that sees the stop flag
  // may say what it likes.
  [[nodiscard]] TReadResult Run(std::span<const TReadBatch> batches, TProgressRange progress,
                                const THandler& handler);

 private:
  struct TRun;
  void Work(TRun& run, unsigned thread);
  void WorkToEnd(TRun& run, unsigned thread);

  const TByteSource& FSource;
  const TScanControl& FControl;
  unsigned FThreads;
};

}  // namespace volindex::ext4
