// A real NTFS volume in an image file, made by mkntfs and mounted by ntfs-3g through a loop device. Needs
// root and both tools.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "ReadTree.h"

namespace volindex::ntfs {

class TMountedVolume {
 public:
  struct TShape {
    unsigned ClusterSize = 4096;
    unsigned SectorSize = 512;
    std::uint64_t Megabytes = 64;
  };

  // Without a volume if that is not possible here.
  explicit TMountedVolume(const TShape& shape);
  ~TMountedVolume();
  TMountedVolume(const TMountedVolume&) = delete;
  TMountedVolume& operator=(const TMountedVolume&) = delete;

  [[nodiscard]] explicit operator bool() const { return FMounted; }
  [[nodiscard]] std::filesystem::path Root() const { return FFolder / "mount"; }
  [[nodiscard]] std::filesystem::path Image() const { return FFolder / "image"; }
  [[nodiscard]] TScanRoot ScanRoot() const;

  // Nothing if the reader hands over.
  [[nodiscard]] std::optional<TVolumeIndex> Read() const;

 private:
  void Unmount();

  std::filesystem::path FFolder;
  std::string FDevice;
  bool FMounted = false;
};

// A file of that length; its data are a hole unless it is short.
void MakeFile(const std::filesystem::path& path, std::uint64_t length);

}  // namespace volindex::ntfs
