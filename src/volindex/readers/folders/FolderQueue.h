// The folders that are to be read, and the open ones that they are reached from.
#pragma once

#include "volindex/index/FolderTable.h"
#include "volindex/index/WorkQueue.h"
#include "volindex/system/FolderAccess.h"

#include <atomic>
#include <memory>
#include <utility>

namespace volindex {

// An open folder that is kept for its subfolders to be opened from; counts itself in a number of open ones.
struct TKeptFolder {
  TKeptFolder(TFolderHandle handle, std::atomic<unsigned>& openCount)
      : Handle(std::move(handle)), OpenCount(openCount) {
    ++OpenCount;
  }
  ~TKeptFolder() { --OpenCount; }
  TKeptFolder(const TKeptFolder&) = delete;
  TKeptFolder& operator=(const TKeptFolder&) = delete;

  TFolderHandle Handle;
  std::atomic<unsigned>& OpenCount;
};

// A folder to be read.
struct TFolderTask {
  TFolderId Folder = kNoFolder;
  // Null when too many are open: the folder is then opened from the root.
  std::shared_ptr<TKeptFolder> Parent;
  double Share = 0;  // its part of the whole work as far as can be told, for the progress
};

using TFolderQueue = TWorkQueue<TFolderTask>;

}  // namespace volindex
