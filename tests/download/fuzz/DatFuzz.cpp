// The input is a stream of length-prefixed strings.
#include "download/DatStream.h"
#include "download/SettingsFile.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArrayView bytes(data, static_cast<qsizetype>(size));
  try {
    const QString value = FindDatValue(bytes, u"path"_qs, {});
    if (value.size() > bytes.size()) std::abort();
    QString token;
    for (qsizetype at = 0, next = 0; (next = NextDatToken(bytes, at, token)) != 0; at = next)
      if (next <= at || next > bytes.size() || token.size() >= next - at) std::abort();
  } catch (const TSettingsError&) {
  }
  return 0;
}
