// What lies below a folder by the standard library's listing, in the order of a walk by one thread: the
// root's files, then one direct subfolder after the other, each breadth-first.
#pragma once

#include "platform/Paths.h"

#include <QByteArray>
#include <QString>

#include <deque>
#include <filesystem>
#include <utility>
#include <vector>

// Without the root's own devices, sockets and pipes.
struct TTruth {
  std::vector<std::pair<QByteArray, quint64>> Files;  // full path and size
  int Folders = 0;
  quint64 Bytes = 0;

  explicit TTruth(const QString& root) {
    std::deque<std::filesystem::path> subfolders;
    List(root.toStdU16String(), true, subfolders);
    for (const auto& subfolder : subfolders)
      for (std::deque work{subfolder}; !work.empty(); work.pop_front())
        List(std::filesystem::path(work.front()), false, work);
  }

 private:
  static QByteArray BytesOf(const std::string& native) { return QByteArray::fromStdString(native); }
  static QByteArray BytesOf(const std::wstring& native) {
    return NameToBytes(QString::fromStdWString(native));
  }

  void List(const std::filesystem::path& folder, bool isRoot, std::deque<std::filesystem::path>& folders) {
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      const bool isLink = entry.is_symlink(), isFile = !isLink && entry.is_regular_file();
      const quint64 size = isLink   ? std::filesystem::read_symlink(entry).native().size()
                           : isFile ? entry.file_size()
                                    : 0;
      if (!isLink && entry.is_directory())
        ++Folders, folders.push_back(entry.path());
      else if (isLink || isFile || !isRoot)
        Files.emplace_back(BytesOf(entry.path().native()), size), Bytes += size;
    }
  }
};
