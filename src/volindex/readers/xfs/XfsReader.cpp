#include "volindex/readers/xfs/XfsReader.h"

#include "volindex/posix/XfsVolume.h"
#include "volindex/readers/folders/FoldersReader.h"
#include "volindex/system/ScanRoot.h"

#include <algorithm>

namespace volindex::xfs {

namespace {

// Four for each processor up to this, as each waits for the disk within its question.
constexpr unsigned kMostThreads = 16;

// The table and the folders take about as long as each other.
int FirstHalf(int percent) {
  return std::clamp(percent / 2, 1, 50);
}
int SecondHalf(int percent) {
  return std::clamp(50 + percent / 2, 50, 99);
}

}  // namespace

bool TXfsReader::Accepts(const TScanRoot& root) const {
  return OpenXfs(root) != nullptr;
}

TReadResult TXfsReader::Read(const TScanRoot& root, TIndexBuilder& builder, const TScanControl& control) {
  const auto source = OpenXfs(root);
  // Lengths are told as they are on the disk.
  if (!source || !FlushVolume(root.Path, control.Stop)) return TReadResult::HandedOver;
  TInodeTable table(*source, control.Stop);
  const auto post = [&control](int percent) { control.Progress(FirstHalf(percent)); };
  if (!table.Read(std::min(4 * ThreadsFor(root), kMostThreads), post))
    return control.Stop ? TReadResult::Stopped : TReadResult::HandedOver;
  const TScanControl rest{control.Stop, [&control](int percent) { control.Progress(SecondHalf(percent)); }};
  return TFoldersReader(table).Read(root, builder, rest);
}

}  // namespace volindex::xfs
