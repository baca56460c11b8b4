#include "Images.h"

#include <gtest/gtest.h>

#include <fstream>

namespace volindex::ext4 {

bool MakeImage(const std::string& image, const std::string& size, const std::string& options,
               const std::string& tree) {
  return Shell("truncate -s " + size + " " + image + " && mke2fs -q -F " + options + " -d " + tree + " " +
               image);
}

std::vector<std::byte> LoadFile(const std::string& path) {
  std::vector<std::byte> bytes(std::filesystem::file_size(path));
  std::ifstream(path, std::ios::binary)
      .read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  return bytes;
}

TOutcome Scan(const TByteSource& source) {
  const std::atomic<bool> stop{false};
  TIndexBuilder builder;
  TOutcome outcome;
  outcome.Result = ReadVolume(source, TVolumeState::AtRest, builder, {stop, {}}, 2);
  if (outcome.Result == TReadResult::Done) outcome.Index = builder.TakeIndex();
  return outcome;
}

TOutcome ScanImage(const std::string& image) {
  const auto source = OpenByteSource(image);
  EXPECT_NE(source, nullptr) << image;
  return source ? Scan(*source) : TOutcome();
}

}  // namespace volindex::ext4
