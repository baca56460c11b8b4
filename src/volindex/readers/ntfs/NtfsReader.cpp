#include "volindex/readers/ntfs/NtfsReader.h"

#include "volindex/readers/ntfs/NtfsScan.h"
#include "volindex/system/NtfsSource.h"
#include "volindex/system/ScanRoot.h"

namespace volindex::ntfs {

bool TNtfsReader::Accepts(const TScanRoot& root) const {
  const auto source = OpenNtfsSource(root);
  return source && TNtfsVolume::Open(*source);
}

TReadResult TNtfsReader::Read(const TScanRoot& root, TIndexBuilder& builder, const TScanControl& control) {
  const auto source = OpenNtfsSource(root);
  if (!source || !FlushVolume(root.Path, control.Stop)) return TReadResult::HandedOver;
  return ReadNtfs(*source, DriverOf(root), builder, control, ThreadsFor(root));
}

TReadResult ReadNtfs(const TByteSource& source, TDriver driver, TIndexBuilder& builder,
                     const TScanControl& control, unsigned threads) {
  const auto volume = TNtfsVolume::Open(source);
  if (!volume) return TReadResult::HandedOver;
  return TNtfsScan(*volume, driver, builder, control, threads).Run();
}

}  // namespace volindex::ntfs
