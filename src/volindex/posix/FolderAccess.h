// Folders by descriptor: opened relative to another open folder, so that no path is ever too long.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace volindex {

enum class TAccess {
  Ok,
  Gone,        // it is not there any more, or is no folder any more
  Unreadable,  // not permitted, or a failing disk
};

// The mounted file system that something lies on. Two mounts of one device are two places.
struct TPlace {
  uint64_t Mount = 0;  // 0 where the system does not tell
  uint32_t Major = 0;
  uint32_t Minor = 0;

  bool operator==(const TPlace&) const = default;
};

struct TEntryFacts {
  bool IsFolder = false;
  uint64_t Size = 0;  // the length of a file or symbolic link, else 0
  uint32_t Links = 0;
  uint64_t Number = 0;  // inode
  TPlace Place;
};

// An open folder. May be used by several threads, but listed by one.
class TFolderHandle {
 public:
  TFolderHandle() = default;
  ~TFolderHandle() { Close(); }
  TFolderHandle(TFolderHandle&& other) noexcept;
  TFolderHandle& operator=(TFolderHandle&& other) noexcept;

  // `path` may have several components for as long as the system takes it in one go. A symbolic link in its
  // last component is not followed. Replaces what was open before. Waits a little when the system has no
  // descriptors left.
  [[nodiscard]] TAccess OpenRoot(const std::string& path);
  [[nodiscard]] TAccess OpenBelow(const TFolderHandle& parent, const std::string& path);

  [[nodiscard]] TAccess Facts(TEntryFacts& facts) const;
  // Of the entry `name` in the folder, NUL-terminated; no symbolic link is followed and nothing is mounted.
  // `listedAsFolder`: what is on disk need not be asked for, the place is enough.
  [[nodiscard]] TAccess EntryFacts(const char* name, bool listedAsFolder, TEntryFacts& facts) const;

 private:
  friend class TFolderListing;
  [[nodiscard]] TAccess OpenAt(int parent, const char* path);
  void Close();

  int FDescriptor = -1;
};

// Reads the entries of folders, one folder at a time. A bufferful of them comes in the order of their inode
// numbers: that is about where their facts lie on the disk, whereas the system often lists by hash.
class TFolderListing {
 public:
  TFolderListing();

  void Start(const TFolderHandle& folder);

  // The next entry but "." and "..": Ok, or Gone at the end, or Unreadable. The name is NUL-terminated and
  // lasts until the next call.
  [[nodiscard]] TAccess Next();
  [[nodiscard]] std::string_view Name() const { return FName; }
  [[nodiscard]] bool ListedAsFolder() const { return FListedAsFolder; }

  // Bytes of listings since the object was made.
  [[nodiscard]] uint64_t BytesRead() const { return FBytesRead; }

 private:
  struct TPlaceInBuffer {
    uint64_t Number;  // inode
    size_t Offset;
  };
  [[nodiscard]] TAccess Fill();
  void SortEntries(size_t filled);

  std::unique_ptr<char[]> FBuffer;
  int FDescriptor = -1;
  std::vector<TPlaceInBuffer> FEntries;
  size_t FNext = 0;
  std::string_view FName;
  bool FListedAsFolder = false;
  uint64_t FBytesRead = 0;
};

// How often the calling thread has waited for something so far, and that is a disk for who does nothing but
// read.
[[nodiscard]] uint64_t TimesWaited();

// How many folders the process may hold open for one scan, leaving enough for all others.
[[nodiscard]] unsigned OpenFolderLimit();

}  // namespace volindex
