// The finished index of one volume: two record sets, largest first, the counts and every folder's total.
// Read by one thread.
#pragma once

#include "volindex/index/ContentKinds.h"
#include "volindex/index/FolderTable.h"
#include "volindex/index/TopFiles.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace volindex {

class TVolumeIndex {
 public:
  [[nodiscard]] uint64_t FileCount() const { return FFileCount; }
  [[nodiscard]] uint64_t FolderCount() const { return FFolderCount; }
  // For the trace line.
  [[nodiscard]] uint64_t BytesRead() const { return FBytesRead; }

  // The folders that could not be read, or not wholly, by rising full path.
  [[nodiscard]] const std::vector<TFolderId>& Unreadable() const { return FUnreadable; }

  // What the volume says is used of it, in bytes; none when the root of the scan is not that of a volume. Set
  // by who has asked it.
  [[nodiscard]] std::optional<uint64_t> VolumeUsed() const { return FVolumeUsed; }
  void SetVolumeUsed(std::optional<uint64_t> bytes) { FVolumeUsed = bytes; }

  // At most kTopCount each, by falling size, files or folders of one size by rising full path. The root
  // is not among the folders.
  [[nodiscard]] const std::vector<TFileRecord>& TopFiles() const { return FTopFiles; }
  [[nodiscard]] const std::vector<TFolderId>& TopFolders() const { return FTopFolders; }

  // Every folder has an id below this one, and not every such id has a folder.
  [[nodiscard]] TFolderId FolderEnd() const { return static_cast<TFolderId>(FCounted.size()); }
  [[nodiscard]] bool HasFolder(TFolderId id) const { return FCounted[id]; }

  [[nodiscard]] std::string_view FolderName(TFolderId id) const { return FFolders->Name(id); }
  [[nodiscard]] TFolderId FolderParent(TFolderId id) const { return FFolders->Parent(id); }
  [[nodiscard]] uint64_t FolderTotal(TFolderId id) const { return FFolders->Size(id); }
  // What the files below it occupy on the volume.
  [[nodiscard]] uint64_t FolderAllocated(TFolderId id) const { return FFolders->Allocated(id); }
  // Those that lie directly in it.
  [[nodiscard]] uint32_t FolderFiles(TFolderId id) const { return FFolders->Files(id); }
  // The bytes of the files that lie directly in it, by kind; where these were not kept there are none.
  [[nodiscard]] bool KeepsKinds() const { return FKinds != nullptr; }
  [[nodiscard]] TKindBytes FolderKinds(TFolderId id) const {
    return KeepsKinds() ? FKinds->Of(id) : TKindBytes{};
  }
  // The path relative to the root, a '/' at its end unless it is the root's own, empty one.
  [[nodiscard]] std::string FolderPath(TFolderId id) const { return FFolders->Path(id); }
  // False when it is longer than `limit` bytes.
  [[nodiscard]] bool FolderPathWithin(TFolderId id, size_t limit, std::string& path) const {
    return FFolders->PathWithin(id, limit, path);
  }

  // The folder at a relative path; the empty path is the root. Delimiters before, after and doubled are
  // ignored. None when it is no folder of this index, or left out, or there is no index.
  [[nodiscard]] std::optional<TFolderId> FindFolder(std::string_view relative) const;

 private:
  friend class TIndexBuilder;
  [[nodiscard]] std::optional<TFolderId> FindChild(TFolderId parent, std::string_view name) const;

  std::unique_ptr<TFolderTable> FFolders;
  std::unique_ptr<TFolderKinds> FKinds;  // may be null
  std::vector<TNameArena> FNames;
  std::vector<bool> FCounted;  // per folder: not left out
  std::vector<TFileRecord> FTopFiles;
  std::vector<TFolderId> FTopFolders;
  uint64_t FFileCount = 0;
  uint64_t FFolderCount = 0;
  std::vector<TFolderId> FUnreadable;
  uint64_t FBytesRead = 0;
  std::optional<uint64_t> FVolumeUsed;
};

}  // namespace volindex
