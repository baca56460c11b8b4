#include "Volumes.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

#include "volindex/IndexAnswer.h"

namespace volindex {

namespace fs = std::filesystem;

bool Try(const std::string& command, std::string& output) {
  const TTestTree scratch;
  const std::string log = scratch.Path("log");
  const bool succeeded =
      std::system(("PATH=$PATH:/usr/sbin:/sbin; { " + command + "; } >" + log + " 2>&1").c_str()) == 0;
  std::ostringstream said;
  said << std::ifstream(log).rdbuf();
  output = said.str();
  return succeeded;
}

bool Shell(const std::string& command) {
  std::string output;
  const bool succeeded = Try(command, output);
  EXPECT_TRUE(succeeded) << command << "\n" << output;
  return succeeded;
}

void WriteFile(const std::string& path, const std::string& content) {
  std::ofstream(path) << content;
}

void MakeVariedTree(const std::string& root, const std::string& kind) {
  Shell("\"$TALLYSCOPE_SOURCE_DIR\"/tests/volindex/varied_tree " + root + ' ' + kind);
}

TMountedVolume::TMountedVolume(const std::string& size, const std::string& make, const std::string& mount) {
  fs::create_directory(FRoot);
  if (!TryHere("truncate -s " + size + " $image && { " + make + "; }")) {
    ADD_FAILURE() << FRefusal;
  } else if (TryHere("losetup --find --show $image")) {
    FDevice = FRefusal.substr(0, FRefusal.find('\n'));
    if (TryHere(mount)) FRefusal.clear();
  }
}

TMountedVolume::~TMountedVolume() {
  if (FDevice.empty()) return;
  (void)TryHere("umount $root");
  (void)TryHere("losetup --detach $device");
}

bool TMountedVolume::TryHere(const std::string& command) {
  return Try("image=" + FImage + "; root=" + FRoot + "; device=" + FDevice + "; " + command, FRefusal);
}

void TMountedVolume::ExpectSame(const std::string& reader) const {
  const TAnswer truth = AnswerOfDisk(FRoot);
  for (const char* each : {"ext4", "xfs", "btrfs", "ntfs", "folders"})
    EXPECT_EQ(AnswerOfReader(each, FRoot),
              each == reader || each == std::string("folders") ? truth : TAnswer())
        << each;
}

}  // namespace volindex
