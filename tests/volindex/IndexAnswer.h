// What an index says of a tree, to be compared with what it has to say.
#pragma once

#include "volindex/Answer.h"
#include "volindex/index/VolumeIndex.h"

namespace volindex {

[[nodiscard]] inline TAnswer AnswerOf(const TVolumeIndex& index) {
  TAnswer answer;
  for (const TFileRecord& file : index.TopFiles())
    answer.Files.push_back({file.Size, index.FolderPath(file.Folder) + file.Name});
  for (const TFolderId folder : index.TopFolders()) {
    answer.Folders.push_back({index.FolderTotal(folder), index.FolderPath(folder)});
    answer.Folders.back().Path.pop_back();  // the delimiter
  }
  answer.FileCount = index.FileCount();
  answer.FolderCount = index.FolderCount();
  answer.Total = index.FolderTotal(kRootFolder);
  return answer;
}

}  // namespace volindex
