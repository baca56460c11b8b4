// The input is a file of lines "key=value".
#include "download/ConfigReaders.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArray content(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  const QString value = FindKeyValue(content, u"dir"_qs);
  const qsizetype semicolon = value.indexOf(u';');
  if (value.size() > content.size() || (semicolon >= 0 && semicolon != value.size() - 1)) std::abort();
  return 0;
}
