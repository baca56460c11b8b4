// What the folders reader makes of a folder.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>

#include "volindex/IndexAnswer.h"
#include "volindex/readers/folders/FoldersReader.h"
#include "volindex/system/ScanRoot.h"

namespace volindex {

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
