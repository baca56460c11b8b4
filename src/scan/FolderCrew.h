// Reads many folders at once: a crew of threads that share the work out among themselves. Which folders are
// read is the user's matter: what a folder holds is told to a visitor, and the visitor names the folders that
// it wants read too, each with its turn.
//
// A sum over a tree needs no order: it gives each level an earlier turn than the one above, which goes down
// first and keeps the waiting few. A walk, which needs the listings in its own order, gives turns in that
// order (scan/ReadAhead.h).
//
// All folders of one run lie on the file system of its root; on Linux any other counts as empty.
#pragma once

#include "platform/FileEnumeration.h"

#include <QString>

#include <memory>
#include <vector>

struct TListedFolder;

struct TFolderTask {
  // The turn of a folder that somebody waits for: it is read even where there is no room.
  static constexpr quint64 kAtOnce = 0;

  QString Path;                           // with its delimiter
  quint64 Turn = kAtOnce;                 // the least comes first, of equal ones the one that came first
  std::shared_ptr<TListedFolder> Folder;  // the visitor's own, if it keeps one
};

// What a run is for. The calls come from all threads of the crew at once, for one folder always from one
// thread, which has a number from 0 below TFolderCrew::Size().
class TFolderVisitor {
 public:
  virtual ~TFolderVisitor() = default;

  // Whether folders may be begun; if not, only those of turn kAtOnce are. Called with a lock of the crew
  // held.
  [[nodiscard]] virtual bool HasRoom() const { return true; }

  // Asked before a folder is opened; without it the folder is passed over, and no other call tells of it.
  [[nodiscard]] virtual bool FolderBegins(const TFolderTask&) { return true; }

  // The visitor may use the name of `found` up. Folders come without details, see SkipFolderDetails. False
  // ends the listing of this folder.
  [[nodiscard]] virtual bool EntryFound(unsigned thread, const TFolderTask& folder, TFoundFile& found) = 0;

  // The folder has been read, or can't be, or its listing was ended. What shall be read too goes into the
  // empty `next`.
  virtual void FolderRead(unsigned thread, const TFolderTask& folder, std::vector<TFolderTask>& next) = 0;
};

// Owned by its user, whose one thread calls everything but Stop and Add. Its threads sleep between runs.
class TFolderCrew {
 public:
  // So many threads; 0: one per processor.
  explicit TFolderCrew(unsigned threads = 0);
  // Stops, and waits a twentieth of a second at most: a thread that hangs in a call of the system, on a dead
  // network for example, keeps what it uses and ends by itself when that call returns.
  ~TFolderCrew();
  TFolderCrew(const TFolderCrew&) = delete;
  TFolderCrew& operator=(const TFolderCrew&) = delete;

  [[nodiscard]] static unsigned SizeFor(unsigned threads);
  [[nodiscard]] unsigned Size() const;

  // A new run with its first folder, the root. The one before has ended.
  void Begin(TFolderTask root, std::shared_ptr<TFolderVisitor> visitor);

  // One more folder within the run. Any thread.
  void Add(TFolderTask task);

  // Waits until the run is over: nothing waits and nothing is being read. False, and at once, if the crew is
  // stopped; its threads may then still be calling the visitor.
  [[nodiscard]] bool Finish();

  // Tells the crew that the visitor has room again. Any thread.
  void Wake();

  // Ends the run at once: each thread at its next entry, and no folder is begun. Holds for all later runs.
  // Any thread.
  void Stop();
  [[nodiscard]] bool Stopped() const;

 private:
  class TCore;
  const std::shared_ptr<TCore> FCore;  // with the threads
};
