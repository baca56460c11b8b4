#include "scan/Truth.h"

#include "platform/Paths.h"

#include <QDir>
#include <QDirIterator>

#include <algorithm>

TTruth AskSystem(const QString& root) {
  TTruth truth;
  QDirIterator entries(root, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                       QDirIterator::Subdirectories);
  while (entries.hasNext()) {
    entries.next();
    const QFileInfo entry = entries.fileInfo();
    if (entry.isDir())
      ++truth.Folders;
    else
      truth.Files.emplace_back(NameToBytes(QDir::toNativeSeparators(entry.filePath())),
                               static_cast<quint64>(entry.size()));
  }
  std::sort(truth.Files.begin(), truth.Files.end());
  return truth;
}
