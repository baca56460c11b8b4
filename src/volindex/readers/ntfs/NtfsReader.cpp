#include "volindex/readers/ntfs/NtfsReader.h"

#include "volindex/posix/NtfsSource.h"
#include "volindex/posix/ScanRoot.h"
#include "volindex/readers/ntfs/NtfsScan.h"

namespace volindex::ntfs {

namespace {

// ntfs-3g shows a tag that it does not know as a link to nowhere; the other drivers show the file's data.
TForeignTags TagsOf(const TScanRoot& root) {
  return root.FileSystem == "fuseblk" ? TForeignTags::ShownAsLinks : TForeignTags::ShownAsData;
}

}  // namespace

bool TNtfsReader::Accepts(const TScanRoot& root) const {
  const auto source = OpenNtfsSource(root);
  return source && TNtfsVolume::Open(*source);
}

TReadResult TNtfsReader::Read(const TScanRoot& root, TIndexBuilder& builder, const TScanControl& control) {
  const auto source = OpenNtfsSource(root);
  if (!source || !FlushVolume(root.Path)) return TReadResult::HandedOver;
  return ReadNtfs(*source, TagsOf(root), builder, control, ThreadsFor(root));
}

TReadResult ReadNtfs(const TByteSource& source, TForeignTags tags, TIndexBuilder& builder,
                     const TScanControl& control, unsigned threads) {
  const auto volume = TNtfsVolume::Open(source);
  if (!volume) return TReadResult::HandedOver;
  return TNtfsScan(*volume, tags, builder, control, threads).Run();
}

}  // namespace volindex::ntfs
