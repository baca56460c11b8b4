// A folder of its own for a test, removed with all in it at the end.
#pragma once

#include <cstdint>
#include <exception>
#include <filesystem>
#include <string>

#include "volindex/TestSystem.h"

namespace volindex {

class TTestTree {
 public:
  TTestTree() : FRoot(MakeTemporaryFolder()) {}
  ~TTestTree() {
    try {
      RemoveTree(FRoot.string());
    } catch (const std::exception&) {  // the folder stays
    }
  }
  TTestTree(const TTestTree&) = delete;
  TTestTree& operator=(const TTestTree&) = delete;

  [[nodiscard]] const std::filesystem::path& Root() const { return FRoot; }
  [[nodiscard]] std::string Path(const std::string& name) const { return FRoot.string() + '/' + name; }

  // Paths are relative to the root, UTF-8 where the system's names are no bytes. The folders above are made
  // too.
  void AddFolder(const std::string& path) {
    for (size_t end = path.find('/'); end != std::string::npos; end = path.find('/', end + 1))
      MakeFolder(Path(path.substr(0, end)));
    MakeFolder(Path(path));
  }
  // A file of that length without content.
  void AddFile(const std::string& path, uint64_t size) {
    AddFolderOf(path);
    MakeFile(Path(path), size);
  }
  // One more name of a file.
  void AddLink(const std::string& file, const std::string& path) {
    AddFolderOf(path);
    MakeHardLink(Path(file), Path(path));
  }

 private:
  void AddFolderOf(const std::string& path) {
    if (const size_t end = path.rfind('/'); end != std::string::npos) AddFolder(path.substr(0, end));
  }

  std::filesystem::path FRoot;
};

}  // namespace volindex
