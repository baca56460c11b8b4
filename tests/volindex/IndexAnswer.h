// What an index says of a tree, to be compared with what it has to say.
#pragma once

#include "volindex/Answer.h"
#include "volindex/TestSystem.h"
#include "volindex/index/VolumeScan.h"

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

// By the reader of that name alone; an empty answer when it does not accept the path.
[[nodiscard]] inline TAnswer AnswerOfReader(const char* reader, const std::string& path) {
  const std::atomic<bool> goOn{false};
  SetVariable("TALLYSCOPE_READER", reader);
  const TVolumeIndex index = ScanVolume(path, {goOn, [](int) {}});
  SetVariable("TALLYSCOPE_READER", nullptr);
  return index.FileCount() == 0 ? TAnswer() : AnswerOf(index);
}

}  // namespace volindex
