// The catalogues of this source tree, the settings beside this file (samples/<system>/<application>/: as the
// applications write them, in few lines) and a user's home folder, on which this system's catalogue is tried.
#pragma once

#include "download/DownloadApplication.h"
#include "download/DownloadDirectoryScan.h"
#include "fixtures/NativePath.h"
#include "fixtures/TestUser.h"
#include "platform/ComThread.h"

#include <gtest/gtest.h>

#include <QFile>

// Where the sample's settings name the download folder. The system is "linux" or "windows" throughout.
struct TSampleFolder {
  QString Application;
  QString Folder;
};

inline QString SourceFile(const QString& name) {
  return qEnvironmentVariable("TALLYSCOPE_SOURCE_DIR") + u'/' + name;
}

inline QString CatalogueFile(const QString& system) {
  return SourceFile(u"data/DownloadApplication.%1.xml"_qs.arg(system));
}

inline QString SampleFolder(const QString& system, const QString& application) {
  return SourceFile(u"tests/download/catalogue/samples/%1/%2"_qs.arg(system, application));
}

// Empty for a file that can't be read.
inline QByteArray FileBytes(const QString& name) {
  QFile file(name);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline std::vector<TXMLApplicationType> Applications(const QString& system) {
  const TXMLDownloadApplicationType catalogue = LoadDownloadApplication(CatalogueFile(system));
  std::vector<TXMLApplicationType> applications;
  for (int i = 0; i < catalogue.Count(); ++i)
    applications.push_back(catalogue.Application(i));
  return applications;
}

class TCatalogueHome {
 public:
  // What is found by the catalogue, as Tree names it.
  [[nodiscard]] QStringList Found() const {
    TDownloadDirectoryScan scan;
    scan.ScanDirectories(CatalogueFile(HasDrives() ? u"windows"_qs : u"linux"_qs));
    QStringList names;
    for (const QString& dir : scan.FDirectories)
      names.append(dir.mid(Tree.Path().size() + 1).replace(PathDelim, u'/'));
    return names;
  }

 private:
  const TComThread FComponents;
  TTestUser FUser;

 public:
  TTempTree& Tree = FUser.Home;

 private:
  const QByteArray FPrograms = NameToBytes(Tree.Path("Programs"));
  const TVariables FVariables{{"ProgramFiles", FPrograms.constData()},
                              {"ProgramFiles(x86)", FPrograms.constData()},
                              {"ProgramData", FPrograms.constData()}};
};
