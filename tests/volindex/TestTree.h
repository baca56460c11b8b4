// A folder of its own for a test, removed with all in it at the end.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

class TTempTree;

namespace volindex {

// Names are relative to the root with "/" between them, UTF-8 where the system's names are no bytes. The
// folders above what is added are made too.
class TTestTree {
 public:
  TTestTree();
  ~TTestTree();
  TTestTree(const TTestTree&) = delete;
  TTestTree& operator=(const TTestTree&) = delete;

  [[nodiscard]] const std::filesystem::path& Root() const { return FRoot; }
  [[nodiscard]] std::string Path(const std::string& name) const { return FRoot.string() + '/' + name; }

  void AddFolder(const std::string& name);
  // A file of that length without content.
  void AddFile(const std::string& name, uint64_t size);
  // One more name of a file.
  void AddLink(const std::string& file, const std::string& name);
  // A file of one of the system's own kinds.
  void AddSpecialFile(const std::string& name, unsigned which);
  // A file or a whole folder; all that is in the tree for an empty name.
  void Remove(const std::string& name);

 private:
  const std::unique_ptr<TTempTree> FTree;
  const std::filesystem::path FRoot;
};

}  // namespace volindex
