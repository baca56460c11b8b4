#include "MountedVolume.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "volindex/TestSystem.h"
#include "volindex/system/ScanRoot.h"

namespace volindex::ntfs {

namespace fs = std::filesystem;

namespace {

bool Run(const std::string& command) {
  return std::system((command + " >/dev/null 2>&1").c_str()) == 0;
}

std::string FirstLineOf(const std::string& command) {
  std::string line(256, '\0');
  FILE* const pipe = ::popen((command + " 2>/dev/null").c_str(), "r");
  const bool got = pipe != nullptr && std::fgets(line.data(), static_cast<int>(line.size()), pipe) != nullptr;
  if (pipe != nullptr) ::pclose(pipe);
  return got ? line.substr(0, line.find('\n')) : std::string();
}

}  // namespace

TMountedVolume::TMountedVolume(const TShape& shape) {
  if (::geteuid() != 0) return;
  FFolder = MakeTemporaryFolder();
  fs::create_directory(Root());
  std::ofstream(Image()).close();
  fs::resize_file(Image(), shape.Megabytes << 20);
  if (!Run("mkntfs -F -Q -q -p 0 -H 0 -S 0 -c " + std::to_string(shape.ClusterSize) + " -s " +
           std::to_string(shape.SectorSize) + ' ' + Image().string()))
    return;
  FDevice = FirstLineOf("losetup --find --show " + Image().string());
  FMounted = !FDevice.empty() && Run("ntfs-3g -o compression " + FDevice + ' ' + Root().string());
}

TMountedVolume::~TMountedVolume() {
  Unmount();
  if (!FFolder.empty()) fs::remove_all(FFolder);
}

void TMountedVolume::Unmount() {
  if (FMounted) Run("umount " + Root().string());
  if (!FDevice.empty()) Run("losetup --detach " + FDevice);
  FMounted = false;
  FDevice.clear();
}

TScanRoot TMountedVolume::ScanRoot() const {
  return DescribeScanRoot(Root().string()).value_or(TScanRoot{});
}

std::optional<TVolumeIndex> TMountedVolume::Read() const {
  const std::atomic<bool> noStop{false};
  TNtfsReader reader;
  TIndexBuilder builder;
  if (!reader.Accepts(ScanRoot())) return std::nullopt;
  if (reader.Read(ScanRoot(), builder, {noStop, {}}) != TReadResult::Done) return std::nullopt;
  return builder.TakeIndex();
}

void MakeFile(const fs::path& path, std::uint64_t length) {
  std::ofstream(path) << std::string(static_cast<std::size_t>(std::min<std::uint64_t>(length, 70000)), 'x');
  if (length > 70000) fs::resize_file(path, length);
}

}  // namespace volindex::ntfs
