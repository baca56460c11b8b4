// What the tests of the volume index need of the system, and where its answers differ from those of others.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "volindex/Answer.h"

namespace volindex {

// Paths that there are but that can't be scanned.
extern const std::vector<std::string> kNoFoldersOfADisk;

// Bytes inside the library and the texts that stand for them outside.
struct TTextCase {
  std::string Bytes;
  std::u16string Text;
};
extern const std::vector<TTextCase> kTexts;

// A beginning of a file name that a careless reader would change.
extern const TTextCase kOddName;

// Paths are UTF-8 where the system's names are no bytes.
[[nodiscard]] std::string MakeTemporaryFolder();
// Also what lies deeper than paths usually reach.
void RemoveTree(const std::string& path);

// One that is there already is no error.
void MakeFolder(const std::string& path);
void MakeHardLink(const std::string& file, const std::string& path);
// A file of that length without content.
void MakeFile(const std::string& path, uint64_t size);
// A file of one of the system's own kinds, which counts as a file.
void MakeSpecialFile(const std::string& path, unsigned which);

// Makes a chain of folders of that name which is longer than a path usually may be, in each of them a file of
// 7 bytes and a folder with one of 3. The number of levels.
[[nodiscard]] unsigned MakeChain(const std::string& root, const std::string& name);

// Null removes it.
void SetVariable(const char* name, const char* value);

// What an independent walk over the disk finds: no link is followed, no other file system entered.
[[nodiscard]] TAnswer AnswerOfDisk(const std::string& root);

}  // namespace volindex
