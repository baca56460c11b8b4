#include "scan/Truth.h"

#include "platform/Paths.h"

#include <deque>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

using TFolders = std::deque<fs::path>;

[[maybe_unused]] QByteArray BytesOf(const std::string& native) {
  return QByteArray::fromStdString(native);
}
[[maybe_unused]] QByteArray BytesOf(const std::wstring& native) {
  return NameToBytes(QString::fromStdWString(native));
}

void List(const fs::path& folder, bool isRoot, TTruth& truth, TFolders& folders) {
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    const fs::file_type type = entry.symlink_status().type();
    quint64 size = 0;
    if (type == fs::file_type::symlink) size = fs::read_symlink(entry).native().size();
    if (type == fs::file_type::regular) size = entry.file_size();
    const bool plain = type == fs::file_type::symlink || type == fs::file_type::regular;
    if (type == fs::file_type::directory)
      ++truth.Folders, folders.push_back(entry.path());
    else if (plain || !isRoot)
      truth.Files.emplace_back(BytesOf(entry.path().native()), size);
  }
}

}  // namespace

TTruth AskSystem(const QString& root) {
  TTruth truth;
  TFolders subfolders;
  List(root.toStdU16String(), true, truth, subfolders);
  for (const fs::path& subfolder : subfolders) {
    for (TFolders work{subfolder}; !work.empty(); work.pop_front())
      List(fs::path(work.front()), false, truth, work);
  }
  return truth;
}
