// The listings of a walk, fetched ahead of it: a crew of threads reads the folders about in the order in
// which the walk will need them, which is one direct subfolder of the root after the other, each
// breadth-first. The walk takes the listings strictly in its own order, so that it sees what a walk alone
// would see, entry by entry.
//
// What was read and not yet taken is bounded: the threads pause while it is too much. A folder that is longer
// than the room left is dropped again and read when the walk is at it, piece by piece as the walk takes it.
//
// A folder's way: Waiting; perhaps AskedFor, when the walk needs it and no thread has come to it; Begun by
// one thread; Whole when its last part is there. A folder that is dropped is Waiting again and read from its
// beginning, which is safe as the walk takes parts of no folder but the one it is at, and that one is never
// dropped.
//
// One lock, that of the listings, guards states, parts and the count of bytes; only the mark that there is no
// room left is read without it. It is never held while the crew is called.
#pragma once

#include "scan/FolderCrew.h"
#include "scan/ScanRecords.h"

#include <QString>

#include <atomic>
#include <memory>
#include <vector>

using TListedFolderPtr = std::shared_ptr<TListedFolder>;

// A piece of a folder's listing. The entries come in the order of the file system: a subfolder stands behind
// so many of the files.
struct TListingPart {
  struct TSubfolder {
    TListedFolderPtr Folder;
    int FilesBefore = 0;
  };
  TFileBlock Files;
  std::vector<TSubfolder> Subfolders;
  size_t Bytes = 0;  // of memory, about
};

// One folder of a walk and what of it was read and not yet taken.
struct TListedFolder {
  enum class TState { Waiting, AskedFor, Begun, Whole };

  ~TListedFolder();

  QString Path;        // with its delimiter
  quint32 Branch = 0;  // the number of its direct subfolder of the root, from 1 on
  quint32 Depth = 0;   // below the root
  // Under the lock of the listings:
  TState State = TState::Waiting;
  std::vector<TListingPart> Parts;
};

struct TReadAheadLimits {
  unsigned Threads = 0;             // 0: one per processor
  size_t Bytes = size_t{15} << 20;  // where the threads pause; each may go beyond it by one part
  int EntriesPerPart = 512;
};

// Made for one walk and owned by it, whose thread calls everything. `stop` outlives it.
class TReadAhead {
 public:
  // A file of the root with kAttributeSystem is left out, here only.
  TReadAhead(const QString& root, const std::atomic<bool>& stop, const TReadAheadLimits& limits = {});
  // Leaves a thread that hangs in a call of the system behind, see TFolderCrew.
  ~TReadAhead();
  TReadAhead(const TReadAhead&) = delete;
  TReadAhead& operator=(const TReadAhead&) = delete;

  [[nodiscard]] const TListedFolderPtr& Root() const { return FRoot; }

  // Waits for more of the folder's listing and takes all there is; false with the last of it. A folder that
  // can't be read has none. After a stop false at once, in any case within hundredths of a second.
  [[nodiscard]] bool Take(const TListedFolderPtr& folder, std::vector<TListingPart>& parts);

  // The most that was read and not yet taken, in bytes.
  [[nodiscard]] size_t MostAhead() const;

 private:
  class TListings;

  const std::atomic<bool>& FStop;
  const TListedFolderPtr FRoot;
  const std::shared_ptr<TListings> FListings;  // with the threads
  TFolderCrew FCrew;
};
