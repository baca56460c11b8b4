// A user's home folder, on which this system's catalogue is tried.
#pragma once

#include "download/DownloadDirectoryScan.h"
#include "download/catalogue/Samples.h"
#include "fixtures/NativePath.h"
#include "fixtures/TestUser.h"
#include "platform/ComThread.h"
#include "platform/KnownFolders.h"

#include <gtest/gtest.h>

class TCatalogueHome {
 public:
  [[nodiscard]] static QString System() { return HasDrives() ? u"windows"_qs : u"linux"_qs; }

  // A path as the catalogue has it, as Tree names it.
  [[nodiscard]] QByteArray Relative(const QString& path) const {
    QString expanded = ExpandEnvironment(path);
    EXPECT_TRUE(expanded.startsWith(Tree.Path() + PathDelim)) << qPrintable(path);
    return NameToBytes(expanded.mid(Tree.Path().size() + 1).replace(PathDelim, u'/'));
  }

  // What is found by the catalogue, as Tree names it.
  [[nodiscard]] QStringList Found() const {
    TDownloadDirectoryScan scan;
    scan.ScanDirectories(CatalogueFile(System()));
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
