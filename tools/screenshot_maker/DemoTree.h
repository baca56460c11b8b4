// A made-up home folder to take pictures of: sparse files with the names and sizes of real life.
#pragma once

#include <QDir>
#include <QString>
#include <QTemporaryDir>

class TDemoTree {
 public:
  // Makes the tree under the system's folder for temporary files; it goes with the object.
  TDemoTree();

  // The folder to analyse.
  [[nodiscard]] QString Root() const { return QDir::toNativeSeparators(FFolder.path() + u"/anna"_qs); }

 private:
  void AddFile(const QString& path, qint64 bytes);

  QTemporaryDir FFolder;
};
