// Varied trees, and volumes in image files made by the file systems' own tools and mounted by loop devices.
#pragma once

#include <optional>
#include <string>

#include "volindex/TestTree.h"
#include "volindex/readers/Reader.h"

namespace volindex {

// Runs a shell command and takes what it writes; true if it succeeds.
bool Try(const std::string& command, std::string& output);
// The same; a command that fails is a failure of the test.
bool Shell(const std::string& command);

void WriteFile(const std::string& path, const std::string& content);

// Folders deep and wide, files from empty to huge, links of both kinds, pipes, names of all sorts.
void MakeVariedTree(const std::string& root, bool anyBytes = true);

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
  [[nodiscard]] const std::string& Image() const { return FImage; }
  [[nodiscard]] const std::string& Device() const { return FDevice; }

  // What the reader makes of the mounted folder, as a scan runs it; nothing if it hands over.
  [[nodiscard]] static std::optional<TVolumeIndex> Read(TReader& reader, const std::string& path);
  // Fails if the reader does not see what find sees.
  void ExpectSame(TReader& reader) const;

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
