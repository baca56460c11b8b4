// Names as NTFS stores them, in UTF-16LE, made bytes.
#pragma once

#include <string>

#include "volindex/readers/DiskBytes.h"

namespace volindex::ntfs {

// Appends UTF-16LE as UTF-8. A lone surrogate becomes its own three bytes, so that no two names fall
// together.
void AppendWtf8(TBytes utf16, std::string& text);

// The number of bytes that AppendWtf8 would add.
[[nodiscard]] std::size_t Wtf8Length(TBytes utf16);

}  // namespace volindex::ntfs
