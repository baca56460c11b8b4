// Sums the folders of a queue in the background, one after the other, and hands each size to a window. A sum
// is that of all files below the folder, whatever their attributes, each name of a file counting; no other
// volume that is mounted below it counts. What can't be read adds nothing.
//
// Linux: links are files of their own length. Windows: a folder behind a link counts too, wherever it lies,
// but none twice in one sum.
#pragma once

#include "platform/Messages.h"

#include <QString>

#include <memory>

class TFolderCrew;

// Sent, with the thread's tag as WPARAM and the address of a TFolderSizeInfo as LPARAM: one folder has been
// summed. The record belongs to the thread; the receiver copies what it keeps.
inline constexpr unsigned WM_FOLDERSIZE = 2339;

struct TFolderSizeInfo {
  quint64 Size = 0;  // bytes
  QString Path;      // as it stood in the queue
};

// The sum of one folder, with all threads of the crew. Blocks; 0 if the crew is stopped.
[[nodiscard]] quint64 GetFolderSize(const QString& path, TFolderCrew& crew);

// Owned by the form, whose thread calls everything. Made suspended: the thread works while the queue holds
// folders and waits otherwise.
class TGetFolderSizeThread {
 public:
  // The window receives WM_FOLDERSIZE and must outlive this object.
  explicit TGetFolderSizeThread(TMessageWindow* window);
  // Terminates, and waits a tenth of a second at most: a thread that hangs in a call of the system, on a dead
  // network for example, ends by itself when that call returns.
  ~TGetFolderSizeThread();
  TGetFolderSizeThread(const TGetFolderSizeThread&) = delete;
  TGetFolderSizeThread& operator=(const TGetFolderSizeThread&) = delete;

  // Behind the others. A folder that is there already is summed once more.
  void AddFolder(const QString& path);

  // Ends the sum in progress and the thread, and answers no folder any more. Returns at once, also while an
  // answer waits for this thread to take it.
  void Terminate();

 private:
  class TWork;
  const std::shared_ptr<TWork> FWork;  // with the thread itself
};
