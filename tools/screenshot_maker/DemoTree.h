// A made-up home folder to take pictures of: sparse files with the names and sizes of real life, some of them
// where the settings of five applications have their downloads.
#pragma once

#include <QDir>
#include <QString>
#include <QTemporaryDir>

class TDemoTree {
 public:
  // Makes the tree under the system's folder for temporary files, and the program's home of it; it goes with
  // the object.
  TDemoTree();

  // The folder to analyse.
  [[nodiscard]] QString Root() const { return QDir::toNativeSeparators(FFolder.path() + u"/anna"_qs); }

 private:
  void AddFile(const QString& path, qint64 bytes);
  void AddSettings(const QString& path, QByteArray text);

  QTemporaryDir FFolder;
};
