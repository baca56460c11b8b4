// Where the system's answers differ from those of others, and what an independent walk says of a disk.
#pragma once

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

// Null removes it.
void SetVariable(const char* name, const char* value);

// What an independent walk over the disk finds: no link is followed, no other file system entered.
[[nodiscard]] TAnswer AnswerOfDisk(const std::string& root);

}  // namespace volindex
