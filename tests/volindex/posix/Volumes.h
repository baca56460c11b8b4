// Varied trees, and volumes in image files made by the file systems' own tools and mounted by loop devices.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

#include "volindex/IndexAnswer.h"
#include "volindex/TestTree.h"

namespace volindex {

// Runs a shell command and takes what it writes; true if it succeeds.
inline bool Try(const std::string& command, std::string& output) {
  const TTestTree scratch;
  const std::string log = scratch.Path("log");
  const bool succeeded =
      std::system(("PATH=$PATH:/usr/sbin:/sbin; { " + command + "; } >" + log + " 2>&1").c_str()) == 0;
  std::ostringstream said;
  said << std::ifstream(log).rdbuf();
  output = said.str();
  return succeeded;
}

// The same; a command that fails is a failure of the test.
inline bool Shell(const std::string& command) {
  std::string output;
  const bool succeeded = Try(command, output);
  EXPECT_TRUE(succeeded) << command << "\n" << output;
  return succeeded;
}

inline void WriteFile(const std::string& path, const std::string& content) {
  std::ofstream(path) << content;
}

// The tree of the script varied_tree, for a volume of that kind.
inline void MakeVariedTree(const std::string& root, const std::string& kind) {
  Shell("\"$TALLYSCOPE_SOURCE_DIR\"/tests/volindex/varied_tree " + root + ' ' + kind);
}

class TMountedVolume {
 public:
  // Commands that find $image of that size (as truncate takes it), its $device and the mount point $root.
  TMountedVolume(const std::string& size, const std::string& make,
                 const std::string& mount = "mount $device $root") {
    std::filesystem::create_directory(FRoot);
    if (!TryHere("truncate -s " + size + " $image && { " + make + "; }")) {
      ADD_FAILURE() << FRefusal;
    } else if (TryHere("losetup --find --show $image")) {
      FDevice = FRefusal.substr(0, FRefusal.find('\n'));
      if (TryHere(mount)) FRefusal.clear();
    }
  }
  ~TMountedVolume() {
    if (!FDevice.empty()) (void)TryHere("umount $root; losetup --detach $device");
  }
  TMountedVolume(const TMountedVolume&) = delete;
  TMountedVolume& operator=(const TMountedVolume&) = delete;

  // What the system said if it does not let this user mount the volume; else empty.
  [[nodiscard]] const std::string& Refusal() const { return FRefusal; }
  [[nodiscard]] const std::string& Root() const { return FRoot; }

  // Fails unless the reader of that name and that of folders see what find sees, and no other accepts the
  // volume.
  void ExpectSame(const std::string& reader) const {
    const TAnswer truth = AnswerOfDisk(FRoot);
    for (const std::string each : {"ext4", "xfs", "btrfs", "ntfs", "folders"})
      EXPECT_EQ(AnswerOfReader(each.c_str(), FRoot), each == reader || each == "folders" ? truth : TAnswer())
          << each;
  }

 private:
  [[nodiscard]] bool TryHere(const std::string& command) {
    return Try("image=" + FImage + "; root=" + FRoot + "; device=" + FDevice + "; " + command, FRefusal);
  }

  TTestTree FScratch;
  std::string FImage = FScratch.Path("image");
  std::string FRoot = FScratch.Path("root");
  std::string FDevice;
  std::string FRefusal;
};

#define SKIP_IF_REFUSED(volume) \
  if (!(volume).Refusal().empty()) GTEST_SKIP() << "no right to mount here: " << (volume).Refusal()

}  // namespace volindex
