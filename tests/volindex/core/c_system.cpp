#include "volindex/core/c_system.h"

#include <filesystem>
#include <stdexcept>

#include "volindex/TestSystem.h"

namespace {

std::string root;

}  // namespace

char Delimiter(void) {
  return static_cast<char>(std::filesystem::path::preferred_separator);
}

const char16_t* OddName(void) {
  return volindex::kOddName.Text.c_str();
}

const char16_t* NoDisk(void) {
  const std::string& path = volindex::kNoFoldersOfADisk.front();
  static const std::u16string text(path.begin(), path.end());
  return text.c_str();
}

void AddRoot(char* text, size_t capacity) {
  root = volindex::MakeTemporaryFolder();
  if (root.size() >= capacity) throw std::runtime_error(root);
  text[root.copy(text, capacity - 1)] = '\0';
}

void RemoveRoot(void) {
  volindex::RemoveTree(root);
  if (std::filesystem::exists(root)) throw std::runtime_error(root);
}

void AddFolder(const char* path) {
  volindex::MakeFolder(root + '/' + path);
}

void AddFile(const char* path, uint64_t size) {
  volindex::MakeFile(root + '/' + path, size);
}

void AddOddFile(uint64_t size) {
  AddFile(volindex::kOddName.Bytes.c_str(), size);
}
