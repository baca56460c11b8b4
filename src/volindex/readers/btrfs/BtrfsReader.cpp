#include "volindex/readers/btrfs/BtrfsReader.h"

#include "volindex/posix/BtrfsVolume.h"
#include "volindex/readers/btrfs/SubvolumeScan.h"
#include "volindex/system/ScanRoot.h"

namespace volindex::btrfs {

bool TBtrfsReader::Accepts(const TScanRoot& root) const {
  return OpenBtrfs(root) != nullptr;
}

TReadResult TBtrfsReader::Read(const TScanRoot& root, TIndexBuilder& builder, const TScanControl& control) {
  // A search waits for the disk node by node; so many may wait at the same time, whatever the number of
  // processors.
  constexpr unsigned kThreads = 32;
  const auto source = OpenBtrfs(root);
  if (!source || !source->Flush(control.Stop)) return TReadResult::HandedOver;
  return TSubvolumeScan(*source, builder, control, ThreadsFor(root), kThreads).Run();
}

}  // namespace volindex::btrfs
