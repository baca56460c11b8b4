// The input is a browser's preferences, a file of lines "key=value" and a stream of length-prefixed strings.
#include "download/DownloadSettings.h"

#include <cstdlib>

namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArray content(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  const auto line = FindLineValue(content, "dir: \"", '"');
  Require(!line || (line->size() <= content.size() && !line->contains(u'"') && !line->contains(u'\n')));
  const QString value = FindKeyValue(content, u"dir"_qs);
  const qsizetype semicolon = value.indexOf(u';');
  Require(value.size() <= content.size() && (semicolon < 0 || semicolon == value.size() - 1));
  try {
    Require(FindDatValue(content, u"path"_qs, {}).size() <= content.size());
    QString token;
    for (qsizetype at = 0, next = 0; (next = NextDatToken(content, at, token)) != 0; at = next)
      Require(next > at && next <= content.size() && token.size() < next - at);
  } catch (const TSettingsError&) {
  }
  return 0;
}
