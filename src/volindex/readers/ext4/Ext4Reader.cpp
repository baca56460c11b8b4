#include "volindex/readers/ext4/Ext4Reader.h"

#include <array>

#include "volindex/posix/Ext4Source.h"
#include "volindex/readers/ext4/VolumeScan.h"
#include "volindex/system/ScanRoot.h"

namespace volindex {

bool TExt4Reader::Accepts(const TScanRoot& root) const {
  const auto source = OpenExt4Device(root);
  std::array<std::byte, ext4::kSuperblockSize> bytes;
  return source && source->ReadAt(ext4::kSuperblockOffset, bytes);
}

TReadResult TExt4Reader::Read(const TScanRoot& root, TIndexBuilder& builder, const TScanControl& control) {
  const auto source = OpenExt4Device(root);
  if (!source || !FlushVolume(root.Path, control.Stop)) return TReadResult::HandedOver;
  return ext4::ReadVolume(*source, ext4::TVolumeState::Mounted, builder, control, ThreadsFor(root));
}

}  // namespace volindex
