// The settings files of other applications, as bytes.
#pragma once

#include <QByteArray>
#include <QString>

#include <stdexcept>

// Settings that can't be read or are damaged beyond what their reader takes.
class TSettingsError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The whole file, however large. Throws TSettingsError if it can't be read. Blocks on the file system.
[[nodiscard]] QByteArray ReadSettingsFile(const QString& file);
