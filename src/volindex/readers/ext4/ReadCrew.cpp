#include "volindex/readers/ext4/ReadCrew.h"

#include <algorithm>
#include <exception>

#include "volindex/index/RunThreads.h"

namespace volindex::ext4 {

struct TReadCrew::TRun {
  std::span<const TReadBatch> Batches;
  TProgressRange Progress;
  const THandler& Handler;
  std::atomic<std::size_t> Next{0};
  std::atomic<bool> Failed{false};
};

TReadCrew::TReadCrew(const TByteSource& source, const TScanControl& control, unsigned threads)
    : FSource(source), FControl(control), FThreads(threads) {}

TReadResult TReadCrew::Run(std::span<const TReadBatch> batches, TProgressRange progress,
                           const THandler& handler) {
  TRun run{.Batches = batches, .Progress = progress, .Handler = handler};
  const std::size_t threads = std::clamp<std::size_t>(batches.size(), 1, FThreads);
  RunThreads(static_cast<unsigned>(threads), [&](unsigned thread) { Work(run, thread); });
  if (FControl.Stop) return TReadResult::Stopped;
  return run.Failed ? TReadResult::HandedOver : TReadResult::Done;
}

void TReadCrew::Work(TRun& run, unsigned thread) {
  try {
    WorkToEnd(run, thread);
  } catch (const std::exception&) {
    run.Failed = true;
  }
}

void TReadCrew::WorkToEnd(TRun& run, unsigned thread) {
  std::vector<std::byte> buffer;
  while (!FControl.Stop && !run.Failed) {
    const std::size_t index = run.Next.fetch_add(1, std::memory_order_relaxed);
    if (index >= run.Batches.size()) return;
    const TReadBatch& batch = run.Batches[index];
    if (buffer.size() < batch.Length) buffer.resize(batch.Length);
    const auto bytes = std::span(buffer).first(batch.Length);
    if (!FSource.ReadAt(batch.Offset, bytes) || !run.Handler(thread, batch, bytes)) run.Failed = true;
    if (thread == 0 && FControl.Progress) {
      const auto range = static_cast<std::size_t>(run.Progress.To - run.Progress.From);
      FControl.Progress(run.Progress.From + static_cast<int>(range * index / run.Batches.size()));
    }
  }
}

}  // namespace volindex::ext4
