// The index of a volume on its way through a pipe, from the process that may read the volume to the one that
// shows it.
//
// All numbers are little-endian, nothing is padded. First the eight bytes of kStreamMark, then frames, each
// with a letter first:
//
//   'P'  u8 percent                        progress; 0 says no more than that the sender lives
//   'D'  u32 parent, u64 bytes, u64 allocated, u32 files, u16 length, name
//                                          a folder and what lies directly in it: bytes and files beside
//                                          its 'F' frames, allocated with them
//   'F'  u32 folder, u64 bytes, u16 length, name
//                                          one of the largest files
//   'U'  u32 folder                        a folder that could not be read; by rising numbers
//   'E'  u64 bytes read                    the end; nothing follows
//
// 'K' u8 kind, u64 bytes: of the bytes of the folder in the 'D' frame before, so many are of this kind
// (index/ContentKinds.h), no kind twice; sent where the index keeps kinds, for all but the first kind.
//
// Folders are numbered as they come, each behind its parent; number 0 is the root, with an empty name and
// itself as parent. A sender that can't read the volume closes the pipe without an 'E'.
#pragma once

#include "volindex/index/IndexBuilder.h"
#include "volindex/readers/DiskBytes.h"

#include <functional>
#include <string_view>
#include <vector>

namespace volindex {

inline constexpr std::string_view kStreamMark{"TSVOL\0\0\2", 8};

// What the sending program gets behind its path where the index shall keep kinds.
inline constexpr std::string_view kKindsWord = "kinds";

// Takes the next bytes to be sent; false when the receiver is gone. May be called while another thread is in
// it.
using TStreamSink = std::function<bool(TBytes bytes)>;

[[nodiscard]] bool SendMark(const TStreamSink& sink);
[[nodiscard]] bool SendProgress(const TStreamSink& sink, int percent);
// Takes 24 bytes per folder while it runs, and 64 more where the index keeps kinds.
[[nodiscard]] bool SendIndex(const TStreamSink& sink, const TVolumeIndex& index);

enum class TStreamState { Reading, Done, Wrong };

// The receiving end, which trusts nothing that it gets: whatever the bytes, it keeps no more than
// `mostFolders` folders with their names, kTopCount files and one frame. Used by one thread.
class TStreamParser {
 public:
  // Begins the builder anew; `progress` gets 1 to 99.
  TStreamParser(TIndexBuilder& builder, uint64_t mostFolders, std::function<void(int percent)> progress);

  // The next bytes. Wrong and Done stay; bytes behind the end are wrong.
  TStreamState Feed(TBytes bytes);

  // Whether the mark has come: the sender has begun.
  [[nodiscard]] bool Begun() const { return FBegun; }

 private:
  // The length of the frame at the front of `bytes`, 0 if they don't hold it whole.
  [[nodiscard]] static size_t FrameLength(TBytes bytes);
  [[nodiscard]] bool Take(TBytes frame);
  [[nodiscard]] bool TakeFolder(TBytes frame);
  [[nodiscard]] bool TakeKind(TBytes frame);
  [[nodiscard]] bool TakeFile(TBytes frame);
  void AddFolderContent();
  [[nodiscard]] bool TakeUnreadable(TBytes frame);
  // Adds to a sum; false if it is more than any disk holds, so that no sum can overflow.
  [[nodiscard]] static bool Count(uint64_t bytes, uint64_t& sum);

  TIndexBuilder& FBuilder;
  const uint64_t FMostFolders;
  const std::function<void(int)> FProgress;
  std::vector<std::byte> FRest;  // the beginning of a frame
  TStreamState FState = TStreamState::Reading;
  bool FBegun = false;
  // What the folder of the last 'D' frame holds, which is added when its last 'K' frame has come.
  TFolderId FFolder = kNoFolder;
  TKindBytes FFolderBytes{};
  uint64_t FFolderAllocated = 0;
  uint32_t FFolderFiles = 0;
  uint64_t FFolders = 0;
  uint64_t FFiles = 0;
  uint64_t FBytes = 0;
  uint64_t FAllocated = 0;
  uint64_t FUnreadableEnd = 0;  // the number behind that of the last unreadable folder
};

}  // namespace volindex
