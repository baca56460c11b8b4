#include "volindex/index/VolumeScan.h"

#include "volindex/system/ScanRoot.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace volindex {

namespace {

using TClock = std::chrono::steady_clock;

std::string_view Environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string_view() : value;
}

void Trace(const std::string& path, const char* reader, const TVolumeIndex& index, TClock::time_point start) {
  if (Environment("TALLYSCOPE_TRACE") != "1") return;
  const auto took = std::chrono::duration_cast<std::chrono::milliseconds>(TClock::now() - start).count();
  const std::string text =
      "volindex: " + path + ": " + reader + ", " + std::to_string(index.FileCount() + index.FolderCount()) +
      " entries, " + std::to_string(index.Unreadable().size()) + " unreadable folders, " +
      std::to_string(took) + " ms, " + std::to_string(index.BytesRead()) + " bytes read\n";
  std::fputs(text.c_str(), stderr);
}

// One that throws, for want of memory or whatever, can't read the root, and that is no matter for the next
// one.
TReadResult ReadWith(TReader& reader, const TScanRoot& root, TIndexBuilder& builder,
                     const TScanControl& control) {
  try {
    return reader.Accepts(root) ? reader.Read(root, builder, control) : TReadResult::HandedOver;
  } catch (...) {
    return TReadResult::HandedOver;
  }
}

// The reader that has read the root; null when none has, and after a stop.
const TReader* ReadWithFirst(const TReaders& readers, const TScanRoot& root, TIndexBuilder& builder,
                             const TScanControl& control) {
  for (const auto& reader : readers) {
    const TReadResult result = ReadWith(*reader, root, builder, control);
    if (result == TReadResult::Done) return reader.get();
    if (result == TReadResult::Stopped || control.Stop.load()) return nullptr;
  }
  return nullptr;
}

}  // namespace

TReaders ReadersInUse() {
  TReaders readers = MakeReaders();
  const std::string_view forced = Environment("TALLYSCOPE_READER");
  if (!forced.empty())
    std::erase_if(readers, [forced](const auto& reader) { return reader->Name() != forced; });
  return readers;
}

// As the folders reader accepts every root, this is false for what can't be described, or when a reader is
// forced that declines.
bool CanScan(const std::string& path) {
  const std::optional<TScanRoot> root = DescribeScanRoot(path);
  const auto readers = ReadersInUse();
  return root && std::any_of(readers.begin(), readers.end(),
                             [&root](const auto& reader) { return reader->Accepts(*root); });
}

TVolumeIndex ScanVolume(const std::string& path, const TScanControl& control, const TReaders& readers) {
  const TClock::time_point start = TClock::now();
  TVolumeIndex index;
  const TReader* reader = nullptr;
  if (const std::optional<TScanRoot> root = DescribeScanRoot(path)) {
    TIndexBuilder builder;
    builder.KeepKinds(control.KeepKinds);
    for (const std::string& mount : root->MountsBelow)
      builder.CoverPath(mount);
    // The covered paths outlive a reader that hands over: each Begin keeps them.
    reader = ReadWithFirst(readers, *root, builder, control);
    if (reader != nullptr) index = builder.TakeIndex();
    if (reader != nullptr && root->IsVolumeRoot) index.SetVolumeUsed(UsedOnVolume(*root));
  }
  const char* ending = control.Stop.load() ? "stopped" : "no reader";
  Trace(path, reader != nullptr ? reader->Name() : ending, index, start);
  return index;
}

}  // namespace volindex
