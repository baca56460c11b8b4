// One way to read a volume. The readers are tried in the order of MakeReaders; a reader that does not accept
// the root, or hands over, leaves it to the next one.
//
// A reader never decides what a volume holds by half: what it does not wholly understand it hands over, and
// the next reader begins with an empty builder. So a disk reader may be strict; the folders reader, the last
// one, takes anything.
#pragma once

#include "volindex/index/IndexBuilder.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace volindex {

// The folder to be read, and the mounted volume that it is the root of, if it is one.
struct TScanRoot {
  std::string Path;  // bytes, absolute, without a delimiter at its end except for "/"
  uint32_t DeviceMajor = 0;
  uint32_t DeviceMinor = 0;

  // False when Path is no mount point, or a bind mount of a part of its volume: FileSystem and Device are
  // then empty.
  bool IsVolumeRoot = false;
  std::string FileSystem;  // the system's type name: "ext4", "ntfs3", "fuseblk" …
  std::string Device;      // path of the block device, "/dev/…"; empty when there is none
  // Mount points below Path, relative to it ("home/a"). The builder has them already as covered paths; a
  // reader needs not look at them.
  std::vector<std::string> MountsBelow;
};

struct TScanControl {
  // Read often enough to return within 100 ms.
  const std::atomic<bool>& Stop;
  // Reports 1 to 99; any thread. A value that is not higher than all before is dropped by the receiver.
  std::function<void(int percent)> Progress;
  // Whether the index shall tell folders' bytes by kind of content; the builder has been told.
  bool KeepKinds = false;
};

enum class TReadResult {
  Done,        // Finish answered Done
  Stopped,     // the stop flag was seen
  HandedOver,  // the source cannot be read or is not wholly understood; the builder's contents are void
};

class TReader {
 public:
  virtual ~TReader() = default;

  // The name in TALLYSCOPE_READER and in the trace line.
  [[nodiscard]] virtual const char* Name() const = 0;

  // Whether Read is worth trying. Quick: at most opens the source and looks at its first bytes.
  [[nodiscard]] virtual bool Accepts(const TScanRoot& root) const = 0;

  // Reads the whole volume into the builder: calls Begin first and Finish last. Blocks; may start threads and
  // joins them all before it returns.
  [[nodiscard]] virtual TReadResult Read(const TScanRoot& root, TIndexBuilder& builder,
                                         const TScanControl& control) = 0;
};

// The readers in the order in which they are tried.
[[nodiscard]] std::vector<std::unique_ptr<TReader>> MakeReaders();

}  // namespace volindex
