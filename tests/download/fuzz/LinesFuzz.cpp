// The input is a browser's preferences.
#include "download/BrowserSettings.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArrayView bytes(data, static_cast<qsizetype>(size));
  const auto value = FindLineValue(bytes, "dir: \"", '"');
  if (value && (value->size() > bytes.size() || value->contains(u'"') || value->contains(u'\n')))
    std::abort();
  return 0;
}
