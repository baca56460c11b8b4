// Varied trees, and volumes in image files made by the file systems' own tools and mounted by loop devices.
#pragma once

#include <string>

#include "volindex/TestTree.h"

namespace volindex {

// Runs a shell command and takes what it writes; true if it succeeds.
bool Try(const std::string& command, std::string& output);
// The same; a command that fails is a failure of the test.
bool Shell(const std::string& command);

void WriteFile(const std::string& path, const std::string& content);

// The tree of the script varied_tree, for a volume of that kind.
void MakeVariedTree(const std::string& root, const std::string& kind);

class TMountedVolume {
 public:
  // Commands that find $image of that size (as truncate takes it), its $device and the mount point $root.
  TMountedVolume(const std::string& size, const std::string& make, const std::string& mount);
  ~TMountedVolume();
  TMountedVolume(const TMountedVolume&) = delete;
  TMountedVolume& operator=(const TMountedVolume&) = delete;

  // What the system said if it does not let this user mount the volume; else empty.
  [[nodiscard]] const std::string& Refusal() const { return FRefusal; }
  [[nodiscard]] const std::string& Root() const { return FRoot; }

  // Fails unless the reader of that name and that of folders see what find sees, and no other accepts the
  // volume.
  void ExpectSame(const std::string& reader) const;

 private:
  [[nodiscard]] bool TryHere(const std::string& command);

  TTestTree FScratch;
  std::string FImage = FScratch.Path("image");
  std::string FRoot = FScratch.Path("root");
  std::string FDevice;
  std::string FRefusal;
};

#define SKIP_IF_REFUSED(volume) \
  if (!(volume).Refusal().empty()) GTEST_SKIP() << "no right to mount here: " << (volume).Refusal()

}  // namespace volindex
