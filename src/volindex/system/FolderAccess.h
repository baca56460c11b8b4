// Folders by handle: opened relative to another open folder, so that no path is ever too long.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace volindex {

enum class TAccess {
  Ok,
  Gone,        // it is not there any more, or is no folder any more
  Unreadable,  // not permitted, or a failing disk
};

// The mounted file system that something lies on. Two mounts of one device are two places. All the same where
// nothing but a reparse point, which is not entered, leads to another file system.
struct TPlace {
  uint64_t Mount = 0;  // 0 where the system does not tell
  uint32_t Major = 0;
  uint32_t Minor = 0;

  bool operator==(const TPlace&) const = default;
};

struct TEntryFacts {
  bool IsFolder = false;
  uint64_t Size = 0;       // the length of a file or symbolic link, else 0
  uint64_t Allocated = 0;  // bytes that it occupies
  uint32_t Links = 0;      // how many names it has; 0 where the system does not tell with the rest
  uint64_t Number = 0;     // inode or file id
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
  // last component is not followed, nor one before it below a parent where the system can say so.
  // Replaces what was open before. Waits a little when the system has no handles left.
  [[nodiscard]] TAccess OpenRoot(const std::string& path);
  [[nodiscard]] TAccess OpenBelow(const TFolderHandle& parent, const std::string& path);
  // The same folder once more, to be listed by another thread.
  [[nodiscard]] TAccess OpenAgain(const TFolderHandle& other);

  // IsFolder and Place.
  [[nodiscard]] TAccess Facts(TEntryFacts& facts) const;

 private:
  friend class TFolderListing;
  void Close();

  intptr_t FHandle = -1;
};

// Bytes of path that OpenBelow surely takes in one go. Whether a link to another file system was on the way
// shows in the Place of what is open then; or no more than one component is taken.
extern const size_t kPathPiece;

// Reads the entries of folders, one folder at a time.
class TFolderListing {
 public:
  TFolderListing();
  ~TFolderListing();

  // The folder must stay open until the end of its listing.
  void Start(const TFolderHandle& folder);

  // The next entry but "." and "..": Ok, or Gone at the end, or Unreadable. The name lasts until the next
  // call.
  [[nodiscard]] TAccess Next();
  [[nodiscard]] std::string_view Name() const { return FName; }

  // Number and IsFolder of the entry, as far as the listing tells them: false when it does not.
  [[nodiscard]] bool Listed(TEntryFacts& facts) const;
  // Of the entry; no symbolic link is followed and nothing is mounted.
  [[nodiscard]] TAccess Facts(TEntryFacts& facts) const;
  // Fills in the entry's Links where Facts has not; they stay 0 if it can't be asked for.
  void CountLinks(TEntryFacts& facts) const;

  // Bytes of listings since the object was made.
  [[nodiscard]] uint64_t BytesRead() const { return FBytesRead; }

 private:
  struct TBatch;

  std::unique_ptr<TBatch> FBatch;  // what the system has listed in one go
  std::string_view FName;
  uint64_t FBytesRead = 0;
};

// How often the calling thread has waited for something so far, and that is a disk for who does nothing but
// read.
[[nodiscard]] uint64_t TimesWaited();

// How many folders the process may hold open for one scan, leaving enough for all others.
[[nodiscard]] unsigned OpenFolderLimit();

}  // namespace volindex
