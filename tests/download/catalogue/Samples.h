// The catalogues of this source tree, and beside this file samples/<system>/<application>/: settings as the
// applications write them, in few lines.
#pragma once

#include "download/DownloadApplication.h"

#include <QByteArray>
#include <QString>

#include <vector>

// Where the sample's settings name the download folder. The system is "linux" or "windows" throughout.
struct TSampleFolder {
  QString Application;
  QString Folder;
};

[[nodiscard]] QString DataFile(const QString& name);
[[nodiscard]] QString CatalogueFile(const QString& system);
[[nodiscard]] std::vector<TXMLApplicationType> Applications(const QString& system);
[[nodiscard]] QString SampleFolder(const QString& system, const QString& application);

// Empty for a file that can't be read.
[[nodiscard]] QByteArray FileBytes(const QString& file);
