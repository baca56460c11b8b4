// Bytes to UTF-16 and back without loss: a byte 0xNN that is no part of valid UTF-8 is the lone surrogate
// U+DC00+NN.
#pragma once

#include <string>
#include <string_view>

namespace volindex {

[[nodiscard]] std::u16string ToUtf16(std::string_view bytes);

// A lone surrogate other than those of bytes becomes '?'.
[[nodiscard]] std::string ToBytes(std::u16string_view text);

}  // namespace volindex
