// What the program does to other people's files: deleting and moving. Nothing here shows anything; a call
// says whether it did its work, and what it could not do has left everything as it was.
//
// An entry is named by the open folder that holds it and its name there, so that an action meets the entry
// that was meant, whatever is put in the place of a folder above it. An entry that is a link (Windows: also a
// junction) is acted on itself, never what it leads to, and is no folder. A name that is not one of exactly
// one entry ("", ".", "a/b") is that of none, and every call refuses it.
//
// All calls block on the file system and may be made on any thread.
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

// The system's side of an open folder.
struct TFolderHandle;

// A folder held open; copies share it. Windows: nobody can rename or remove it meanwhile, nor any folder
// above it up to the one from which it was reached.
class TOpenFolder {
 public:
  TOpenFolder() = default;  // not open
  explicit TOpenFolder(std::shared_ptr<const TFolderHandle> handle) : FHandle(std::move(handle)) {}

  // A folder that the user named. Links on the way are followed.
  [[nodiscard]] static TOpenFolder Open(const QString& path);

  // What lies at a path from this folder on, the folder itself for an empty one. Not open if any component
  // is a link, "." or "..", or no folder.
  [[nodiscard]] TOpenFolder Below(const QString& path) const;

  [[nodiscard]] bool IsOpen() const { return FHandle != nullptr; }
  // Both are open and hold one folder, whatever its path is by now.
  [[nodiscard]] bool IsSame(const TOpenFolder& other) const;
  // Null if not open.
  [[nodiscard]] const TFolderHandle* Handle() const { return FHandle.get(); }

 private:
  std::shared_ptr<const TFolderHandle> FHandle;
};

// For the rows of a result: the folder at a path that lies at or below a scanned root. Links are followed on
// the way to the root and refused below it. Not open either if the folder does not lie there.
[[nodiscard]] TOpenFolder OpenBelowRoot(const QString& root, const QString& folder);

// A scanned root as it was when this was made: the folder to which its path led then. Whatever is put in its
// place, or in the place of a folder above it, a link included, is not taken for it.
class TKnownRoot {
 public:
  // Follows the links on the way. Blocks on the file system.
  explicit TKnownRoot(const QString& root);

  // As OpenBelowRoot, for a folder whose path begins with the text of the root.
  [[nodiscard]] TOpenFolder Open(const QString& folder) const;

 private:
  QString FRoot;
  QString FReal;  // without a link; empty if that could not be told, when the path alone counts
};

enum class TEntryKind { None, File, Folder };  // a link is a file

[[nodiscard]] TEntryKind KindOfEntry(const TOpenFolder& folder, const QString& name);

// Each of the three stages of deleting a file. False for a folder.
//
// The plain delete.
[[nodiscard]] bool DeletePlain(const TOpenFolder& folder, const QString& name);
// Lifts what keeps the user from deleting, as far as he may: Linux, his own folder's lack of his rights,
// which it gets for the moment only; Windows, what the shell's delete lifts.
[[nodiscard]] bool ShellDeleteSilent(const TOpenFolder& folder, const QString& name);
// Has the system delete it when it starts next. Linux: systemd does so, where this user may tell it.
[[nodiscard]] bool ScheduleDelete(const TOpenFolder& folder, const QString& name);

// The stages in their order until one succeeds: that one, or Failed.
enum class TDeleteStage { Plain, Silent, Scheduled, Failed };
[[nodiscard]] TDeleteStage DeleteOneFile(const TOpenFolder& folder, const QString& name);

// Puts a folder where the user can take it back from. Refused leaves it where it is: for what is no folder
// now, a volume root, a mount point or what holds one, the home folder or what holds it, and where there is
// no trash. Linux: the trash of the desktops; a folder whose own path is over 4,095 bytes is refused.
// Windows: the shell's delete, which may ask the user itself; the title is for its progress.
enum class TActionResult { Done, Failed, Refused };
[[nodiscard]] TActionResult DeleteFolderWithUndo(const TOpenFolder& parent, const QString& name,
                                                 const QString& title);

// How far a long action is, and the request to end it. Any thread.
struct TActionProgress {
  std::atomic<qint64> Done{0};   // bytes
  std::atomic<qint64> Total{0};  // bytes; 0: not known
  std::atomic<bool> Stop{false};
};

// Moves an entry into another folder under its own name; never in the place of something. Within a volume it
// is renamed. A file goes to another volume, a folder does not. On the way there it has the name
// ".tallyscope-" with 16 digits and ".part", and the source that for the last moment: after a crash, what
// bears this name may be deleted once the file is found whole at its source or target, and it is whole at one
// of them or under this name beside it. Linux: Stop ends a copy and leaves the source; Windows copies to the
// end.
[[nodiscard]] bool MoveEntry(const TOpenFolder& from, const QString& name, const TOpenFolder& to,
                             TActionProgress& progress);

// One MoveEntry on a thread of its own, so that the caller's window stays alive. Used by one thread; its
// destructor stops the move and waits for it.
class TFileMove {
 public:
  TFileMove(TOpenFolder from, QString name, TOpenFolder to);
  ~TFileMove();
  TFileMove(const TFileMove&) = delete;
  TFileMove& operator=(const TFileMove&) = delete;

  // Waits so long at most; true when the move has ended.
  [[nodiscard]] bool WaitFor(int milliseconds);
  // Waits for the end; true if the entry was moved.
  [[nodiscard]] bool Result();

  [[nodiscard]] TActionProgress& Progress() { return FProgress; }

 private:
  TActionProgress FProgress;
  std::mutex FGuard;
  std::condition_variable FEnd;
  bool FEnded = false;  // under FGuard
  bool FMoved = false;  // under FGuard
  std::thread FThread;
};

// What a window of properties tells of an entry.
struct TFileFacts {
  unsigned Attributes = 0;  // bits of TFileAttribute
  qint64 Size = 0;          // bytes
  qint64 SizeOnDisk = 0;    // bytes
  QDateTime Created;        // invalid where the file system does not keep it
  QDateTime Modified;
  QDateTime Accessed;
  QString Owner;  // names, or numbers that have none
  QString Group;
  unsigned Mode = 0;  // the twelve permission bits
  quint64 Links = 0;
  QString LeadsTo;  // of a link
};

// Nothing if there is no such entry. Windows, whose shell has a window of its own for it: always nothing.
[[nodiscard]] std::optional<TFileFacts> GetFileFacts(const TOpenFolder& folder, const QString& name);

// The SHA-256 of a regular file, 64 hexadecimal digits; nothing if it can't be read to its end or was
// stopped.
[[nodiscard]] std::optional<QByteArray> FileChecksum(const TOpenFolder& folder, const QString& name,
                                                     TActionProgress& progress);
