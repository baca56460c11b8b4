#include "volindex/readers/ext4/VolumeScan.h"

#include <algorithm>
#include <array>

#include "volindex/readers/ext4/FolderEntries.h"

namespace volindex::ext4 {
namespace {

// Percent of the whole. The last range is for the second look at the folders, which most volumes need not
// have.
constexpr TProgressRange kInodeProgress{1, 50};
constexpr TProgressRange kFolderProgress{50, 98};
constexpr TProgressRange kAgainProgress{98, 99};

using TUse = TInodeTable::TUse;

[[nodiscard]] std::optional<TSuperblock> ReadSuperblock(const TByteSource& source) {
  std::array<std::byte, kSuperblockSize> bytes;
  if (!source.ReadAt(kSuperblockOffset, bytes)) return std::nullopt;
  return ParseSuperblock(bytes, source.Size());
}

// A mounted volume may be caught between a change and the new checksum; a damaged one stays so.
template <class TRead>
[[nodiscard]] auto Repeat(TVolumeState state, TRead&& read) {
  auto result = read();
  for (int again = 0; !result && state == TVolumeState::Mounted && again < 3; ++again)
    result = read();
  return result;
}

}  // namespace

TVolumeScan::TVolumeScan(const TByteSource& source, const TSuperblock& super, std::vector<TGroup> groups,
                         TIndexBuilder& builder, const TScanControl& control, unsigned threads)
    : FSource(source),
      FSuper(super),
      FBuilder(builder),
      FControl(control),
      FCrew(source, control, threads),
      FInodes(super, std::move(groups)),
      FFolderBlocks(source, super, control.Stop),
      FFound(FCrew.Threads()) {}

TReadResult TVolumeScan::Run() {
  FBuilder.Begin(FCrew.Threads(), TFolderOrder::Any);
  TReadResult result = ReadInodes();
  if (result != TReadResult::Done) return result;
  if (!FRootSeen) return TReadResult::HandedOver;
  if (!SortRuns()) return TReadResult::Stopped;
  result = ReadFolders(kFolderProgress);
  if (result != TReadResult::Done) return result;
  if (!UnnamedFoldersAreGone()) return GivenUp();
  TFinish finish = FBuilder.Finish(FControl.Stop);
  if (finish == TFinish::TopListAgain) {
    FFilesOnly = true;
    result = ReadFolders(kAgainProgress);
    if (result != TReadResult::Done) return result;
    finish = FBuilder.Finish(FControl.Stop);
  }
  return finish == TFinish::Done ? TReadResult::Done : TReadResult::Stopped;
}

TReadResult TVolumeScan::GivenUp() const {
  return FControl.Stop ? TReadResult::Stopped : TReadResult::HandedOver;
}

TReadResult TVolumeScan::ReadInodes() {
  const auto pieces = FInodes.Pieces(FControl.Stop);
  if (!pieces) return GivenUp();
  const auto reads = PlanReads(std::span(*pieces), [](const TTablePiece& piece) {
    return std::pair<std::uint64_t, std::uint64_t>(piece.Offset, piece.Length);
  });
  return FCrew.Run(reads, kInodeProgress, [&](unsigned thread, const TReadBatch& batch, TBytes bytes) {
    FBuilder.Shard(thread).CountBytesRead(batch.Length);
    return std::ranges::all_of(
        std::span(*pieces).subspan(batch.First, batch.Count), [&](const TTablePiece& piece) {
          return HandlePiece(thread, piece, bytes.subspan(piece.Offset - batch.Offset, piece.Length));
        });
  });
}

bool TVolumeScan::HandlePiece(unsigned thread, const TTablePiece& piece, TBytes bytes) {
  TFound& found = FFound[thread];
  found.Entries.assign(piece.Inodes, {});
  found.Sizes.clear();
  for (std::uint32_t i = 0; i < piece.Inodes; ++i) {
    const std::size_t at = std::size_t{i} * FSuper.InodeSize;
    if (!HandleInode(found, piece.FirstInode + i, piece.Offset + at, bytes.subspan(at, FSuper.InodeSize),
                     found.Entries[i]))
      return false;
  }
  FInodes.Store(piece, found.Entries, found.Sizes);
  return true;
}

// The file system's own inodes are passed over: the journal, the one for resizing and their like have no name
// in any folder, and what they occupy is no file's.
bool TVolumeScan::HandleInode(TFound& found, std::uint32_t number, std::uint64_t offset, TBytes bytes,
                              TInodeTable::TEntry& entry) {
  if (number < FSuper.FirstInode && number != kRootInode) return true;
  const auto inode = ParseInode(bytes, FSuper);
  if (!inode) return false;
  if (inode->Kind == TInodeKind::File) entry = FInodes.EntryFor(*inode, found.Sizes);
  if (inode->Kind != TInodeKind::Folder) return true;
  if (number == kRootInode) FRootSeen = true;
  const TFolderId folder = number == kRootInode ? kRootFolder : FBuilder.ReserveFolder();
  FFolderCount.fetch_add(1, std::memory_order_relaxed);
  entry = {TUse::Folder, folder};
  return HandleFolder(found, offset, *inode, bytes, folder);
}

bool TVolumeScan::HandleFolder(TFound& found, std::uint64_t offset, const TInode& inode, TBytes bytes,
                               TFolderId folder) {
  if (inode.Layout == TFolderLayout::Inline) {
    found.Runs.push_back({offset, 0, folder});
    return true;
  }
  if (!FFolderBlocks.Find(inode, MapOf(bytes), found.Scratch)) return false;
  const std::uint64_t most = kLargestRead / FSuper.BlockSize;
  for (TBlockRun run : found.Scratch) {
    if (FControl.Stop) return false;
    for (; run.Count > 0;
         run = {run.First + std::min(run.Count, most), run.Count - std::min(run.Count, most)})
      found.Runs.push_back({run.First, static_cast<std::uint32_t>(std::min(run.Count, most)), folder});
  }
  return true;
}

std::pair<std::uint64_t, std::uint64_t> TVolumeScan::PlaceOf(const TFolderRun& run) const {
  if (run.Blocks == 0) return {run.First, FSuper.InodeSize};
  return {run.First * FSuper.BlockSize, std::uint64_t{run.Blocks} * FSuper.BlockSize};
}

// 16 bytes a run, of which a folder has mostly one. Sorted by place so that the disk is crossed once,
// whatever tree the folders make.
bool TVolumeScan::SortRuns() {
  std::size_t count = 0;
  for (const TFound& found : FFound)
    count += found.Runs.size();
  FRuns.reserve(count);
  for (TFound& found : FFound) {
    FRuns.insert(FRuns.end(), found.Runs.begin(), found.Runs.end());
    found = {};
  }
  const auto offset = [this](const TFolderRun& run) { return PlaceOf(run).first; };
  if (!SortUnlessStopped(FRuns, offset, FControl.Stop)) return false;
  FFolderReads =
      PlanReads(std::span<const TFolderRun>(FRuns), [this](const TFolderRun& run) { return PlaceOf(run); });
  FNamed = std::make_unique<std::atomic<bool>[]>(FFolderCount + 1);
  return true;
}

TReadResult TVolumeScan::ReadFolders(TProgressRange progress) {
  return FCrew.Run(FFolderReads, progress, [&](unsigned thread, const TReadBatch& batch, TBytes bytes) {
    FBuilder.Shard(thread).CountBytesRead(batch.Length);
    return std::ranges::all_of(std::span(FRuns).subspan(batch.First, batch.Count),
                               [&](const TFolderRun& run) {
                                 const auto [offset, length] = PlaceOf(run);
                                 return HandleRun(thread, run, bytes.subspan(offset - batch.Offset, length));
                               });
  });
}

bool TVolumeScan::HandleRun(unsigned thread, const TFolderRun& run, TBytes bytes) {
  if (FControl.Stop) return false;
  if (run.Blocks == 0) {
    // The first four bytes stand for ".." and "." has no entry at all.
    const auto rest = InlineRest(bytes);
    return rest && HandleEntries(thread, run.Folder, MapOf(bytes).subspan(4)) &&
           HandleEntries(thread, run.Folder, *rest);
  }
  for (std::size_t at = 0; at < bytes.size(); at += FSuper.BlockSize)
    if (!HandleEntries(thread, run.Folder, bytes.subspan(at, FSuper.BlockSize))) return false;
  return true;
}

bool TVolumeScan::HandleEntries(unsigned thread, TFolderId folder, TBytes bytes) {
  TIndexShard& shard = FBuilder.Shard(thread);
  return ForEachEntry(bytes, [&](std::uint32_t number, std::string_view name) {
    return HandleEntry(shard, folder, number, name);
  });
}

// An inode number beyond the volume, or a name that no path can hold, is damage and not a change in the
// meantime: the volume is handed over.
bool TVolumeScan::HandleEntry(TIndexShard& shard, TFolderId parent, std::uint32_t number,
                              std::string_view name) {
  if (number > FSuper.InodeCount || name.find('/') != name.npos || name.find('\0') != name.npos) return false;
  const TInodeTable::TKnown known = FInodes.Find(number);
  switch (known.Use) {
    case TUse::None:
      return IsPassedOver(number);
    case TUse::File:
      shard.AddFile(parent, name, known.Size.Length, known.Size.Allocated);
      return true;
    case TUse::LinkedFile:
      shard.AddLinkedFile(parent, name, known.Size.Length, {.File = number}, known.Size.Allocated);
      return true;
    case TUse::Folder:
      return NameFolder(shard, known.Folder, parent, name);
  }
  return false;
}

// An entry without an inode was made, or its file deleted, after the inode was read. Where no inode was
// looked at, since none was ever used there, one may be all the same if the group tells wrong; not if it has
// been used since.
bool TVolumeScan::IsPassedOver(std::uint32_t number) const {
  const std::uint32_t index = FInodes.GroupOf(number);
  if (FInodes.IsInUsedPart(number, FInodes.Group(index))) return true;
  const auto group = Repeat(TVolumeState::Mounted, [&] { return ReadGroup(FSource, FSuper, index); });
  return group && FInodes.IsInUsedPart(number, *group);
}

// A folder that gets a second name makes SetFolder answer false, which hands the volume over: there is a ring
// or a double link, or it was moved from a folder read already to one read later. Then too the next reader
// knows better.
bool TVolumeScan::NameFolder(TIndexShard& shard, TFolderId folder, TFolderId parent, std::string_view name) {
  if (FFilesOnly) return true;
  FNamed[folder].store(true, std::memory_order_relaxed);
  FNamedCount.fetch_add(1, std::memory_order_relaxed);
  return shard.SetFolder(folder, parent, name);
}

// A folder without a name was deleted in the meantime, or moved from a place not yet read to one read
// already.
bool TVolumeScan::UnnamedFoldersAreGone() const {
  if (FNamedCount + 1 == FFolderCount) return true;
  return FInodes.ForEachFolder([&](std::uint32_t number, TFolderId folder) {
    if (FControl.Stop) return false;
    return folder == kRootFolder || FNamed[folder].load(std::memory_order_relaxed) || !IsStillFolder(number);
  });
}

bool TVolumeScan::IsStillFolder(std::uint32_t number) const {
  // What can't be read or makes no sense counts as a folder that is still there, so that the volume is handed
  // over.
  std::vector<std::byte> bytes(FSuper.InodeSize);
  if (!FSource.ReadAt(FInodes.OffsetOf(number), bytes)) return true;
  const auto inode = ParseInode(bytes, FSuper);
  return !inode || inode->Kind == TInodeKind::Folder;
}

TReadResult ReadVolume(const TByteSource& source, TVolumeState state, TIndexBuilder& builder,
                       const TScanControl& control, unsigned threads) {
  const auto super = Repeat(state, [&] { return ReadSuperblock(source); });
  if (!super || (super->NeedsRecovery && state == TVolumeState::AtRest)) return TReadResult::HandedOver;
  auto groups = Repeat(state, [&] { return ReadGroups(source, *super, control.Stop); });
  if (!groups) return control.Stop ? TReadResult::Stopped : TReadResult::HandedOver;
  return TVolumeScan(source, *super, std::move(*groups), builder, control, threads).Run();
}

}  // namespace volindex::ext4
