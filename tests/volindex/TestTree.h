// A folder of its own for a test, removed with all in it at the end.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace volindex {

class TTestTree {
 public:
  TTestTree() {
    std::string path = (std::filesystem::temp_directory_path() / "volindex-XXXXXX").string();
    if (::mkdtemp(path.data()) == nullptr) throw std::runtime_error("no temporary folder");
    FRoot = path;
  }
  ~TTestTree() {
    std::error_code ignored;
    std::filesystem::remove_all(FRoot, ignored);
  }
  TTestTree(const TTestTree&) = delete;
  TTestTree& operator=(const TTestTree&) = delete;

  [[nodiscard]] const std::filesystem::path& Root() const { return FRoot; }
  [[nodiscard]] std::string Path(const std::string& name) const { return (FRoot / name).string(); }

  // A file of that length without content, and the folders above it.
  void AddFile(const std::string& path, uint64_t size) {
    const std::filesystem::path file = FRoot / path;
    std::filesystem::create_directories(file.parent_path());
    if (!std::ofstream(file)) throw std::runtime_error(path);
    std::filesystem::resize_file(file, size);
  }
  void AddFolder(const std::string& path) { std::filesystem::create_directories(FRoot / path); }

 private:
  std::filesystem::path FRoot;
};

}  // namespace volindex
