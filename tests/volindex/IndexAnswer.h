// What an index and the readers say of a tree, to be compared with what they have to say.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>

#include "volindex/Answer.h"
#include "volindex/TestSystem.h"
#include "volindex/index/VolumeScan.h"
#include "volindex/readers/folders/FoldersReader.h"
#include "volindex/system/ScanRoot.h"

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

// What lies in each folder adds up to what it holds beside the folders in it.
inline void ExpectKindsAddUp(const TVolumeIndex& index) {
  std::vector<uint64_t> below(index.FolderEnd(), 0);
  for (TFolderId id = 1; id < index.FolderEnd(); ++id)
    if (index.HasFolder(id)) below[index.FolderParent(id)] += index.FolderTotal(id);
  for (TFolderId id = 0; id < index.FolderEnd(); ++id) {
    for (const uint64_t bytes : index.FolderKinds(id)) {
      EXPECT_LE(bytes, index.FolderTotal(id)) << id;
      below[id] += bytes;
    }
    EXPECT_EQ(below[id], index.HasFolder(id) ? index.FolderTotal(id) : 0) << id;
  }
}

// By the reader of that name alone; an empty answer when it does not accept the path.
[[nodiscard]] inline TAnswer AnswerOfReader(const char* reader, const std::string& path) {
  const std::atomic<bool> goOn{false};
  SetVariable("TALLYSCOPE_READER", reader);
  const TVolumeIndex index = ScanVolume(path, {goOn, [](int) {}});
  SetVariable("TALLYSCOPE_READER", nullptr);
  return index.FileCount() == 0 ? TAnswer() : AnswerOf(index);
}

// What the folders reader makes of a folder.
inline constexpr unsigned kThreads = 4;
inline constexpr unsigned kPlenty = 64;

struct TReading {
  TReadResult Result;
  TVolumeIndex Index;
};

inline TReading Read(const std::filesystem::path& root, unsigned threads = kThreads,
                     unsigned openLimit = kPlenty) {
  const std::atomic<bool> stop{false};
  TFoldersReader reader(threads, openLimit);
  TIndexBuilder builder;
  const TReadResult result =
      reader.Read(DescribeScanRoot(root.string()).value(), builder, {stop, [](int) {}});
  return {result, builder.TakeIndex()};
}

inline TAnswer AnswerFor(const std::filesystem::path& root, unsigned threads = kThreads,
                         unsigned openLimit = kPlenty) {
  const TReading reading = Read(root, threads, openLimit);
  EXPECT_EQ(reading.Result, TReadResult::Done);
  return AnswerOf(reading.Index);
}

}  // namespace volindex
