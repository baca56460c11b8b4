// Texts at the border of the library, UTF-16 with the system's delimiter, and the bytes inside, where the
// delimiter is
// '/'. Nothing is lost on the way.
//
// Where file names are bytes these are the bytes inside, and a byte 0xNN that is no part of valid UTF-8 is
// the lone surrogate U+DC00+NN outside. Where they are UTF-16, they are WTF-8 inside.
#pragma once

#include <string>
#include <string_view>

namespace volindex {

[[nodiscard]] std::u16string ToUtf16(std::string_view bytes);

// A lone surrogate that stands for nothing becomes '?'.
[[nodiscard]] std::string ToBytes(std::u16string_view text);

}  // namespace volindex
