#include "volindex/readers/ntfs/NtfsReader.h"

#include "volindex/readers/ntfs/NtfsScan.h"
#include "volindex/system/NtfsSource.h"
#include "volindex/system/ScanRoot.h"

namespace volindex::ntfs {

bool TNtfsReader::Accepts(const TScanRoot& root) const {
  const auto source = OpenNtfsSource(root);
  return source && TNtfsVolume::IsThere(*source);
}

TReadResult TNtfsReader::Read(const TScanRoot& root, TIndexBuilder& builder, const TScanControl& control) {
  const auto source = OpenNtfsSource(root);
  if (!source || !FlushVolume(root.Path, control.Stop)) return TReadResult::HandedOver;
  return ReadNtfs(*source, DriverOf(root), builder, control, ThreadsFor(root));
}

TReadResult ReadNtfs(const TByteSource& source, TDriver driver, TIndexBuilder& builder,
                     const TScanControl& control, unsigned threads) {
  const auto volume = TNtfsVolume::Open(source, control.Stop);
  if (!volume) return control.Stop ? TReadResult::Stopped : TReadResult::HandedOver;
  return TNtfsScan(*volume, driver, builder, control, threads).Run();
}

}  // namespace volindex::ntfs
