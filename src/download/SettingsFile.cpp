#include "download/SettingsFile.h"

#include "platform/FileTests.h"

#include <limits>

QByteArray ReadSettingsFile(const QString& file) {
  const auto content = ReadWholeFile(file, std::numeric_limits<int>::max());
  if (!content) throw TSettingsError("can't read " + file.toStdString());
  return *content;
}
