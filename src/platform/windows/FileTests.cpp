#include "platform/FileTests.h"

#include "platform/FileEnumeration.h"
#include "platform/Paths.h"
#include "platform/windows/FileEntry.h"

#include <string>

namespace {

// The folder that holds the entry knows it too, where another program keeps the entry itself closed, as the
// system does with its page file.
std::optional<TFileStatus> StatusFromFolder(const QString& path) {
  WIN32_FIND_DATAW entry;
  const bool isPattern = path.contains(u'*') || path.contains(u'?');
  if (isPattern || !TakeHandle<TSearchHandle>(FindFirstFileW(LongPath(path).c_str(), &entry)))
    return std::nullopt;
  return TFileStatus{entry.dwFileAttributes, SizeOf(entry)};
}

// Of the entry itself, be it a link.
std::optional<TFileStatus> StatusOf(const QString& path) {
  if (path.isEmpty()) return std::nullopt;
  WIN32_FILE_ATTRIBUTE_DATA entry;
  if (GetFileAttributesExW(LongPath(path).c_str(), GetFileExInfoStandard, &entry) != 0)
    return TFileStatus{entry.dwFileAttributes, SizeOf(entry)};
  return GetLastError() == ERROR_SHARING_VIOLATION ? StatusFromFolder(path) : std::nullopt;
}

// Of what stands at the path, a link being followed.
std::optional<TFileStatus> StatusBehindLinks(const QString& path) {
  const auto status = StatusOf(path);
  if (!status || (status->Attributes & kAttributeReparse) == 0) return status;
  const bool leadsSomewhere = OpenEntry(path, kNoRights, FILE_FLAG_BACKUP_SEMANTICS) != nullptr;
  return leadsSomewhere ? status : std::nullopt;
}

QString PathOf(HANDLE folder, DWORD volumeName) {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length =
        GetFinalPathNameByHandleW(folder, path.data(), static_cast<DWORD>(path.size()), volumeName);
    if (length == 0) return {};
    if (length < path.size()) return QString::fromWCharArray(path.data(), static_cast<qsizetype>(length));
    path.resize(length + 1);
  }
}

}  // namespace

QString RealFolder(const QString& folder) {
  const TFileHandle handle = OpenEntry(folder, kNoRights, FILE_FLAG_BACKUP_SEMANTICS);
  if (!handle) return {};
  QString real = PathOf(handle.get(), VOLUME_NAME_DOS);
  if (real.isEmpty()) real = PathOf(handle.get(), VOLUME_NAME_GUID);  // of a volume without a letter
  return real.isEmpty() ? real : IncludeTrailingPathDelimiter(real);
}

bool FileExists(const QString& path) {
  const auto status = StatusBehindLinks(path);
  return status && (status->Attributes & kAttributeDirectory) == 0;
}

bool DirectoryExists(const QString& path) {
  const auto status = StatusBehindLinks(path);
  return status && (status->Attributes & kAttributeDirectory) != 0;
}

// The root of an empty volume has not even an entry of its own.
bool DirectoryReadable(const QString& path) {
  WIN32_FIND_DATAW first;
  if (path.isEmpty()) return false;
  return OpenSearch(path, first) != nullptr ||
         (GetLastError() == ERROR_FILE_NOT_FOUND && DirectoryExists(path));
}

std::optional<TFileStatus> GetFileStatus(const QString& path) {
  return StatusOf(ExcludeTrailingPathDelimiter(path));
}

std::optional<QByteArray> ReadWholeFile(const QString& path, qint64 bound) {
  const TFileHandle file =
      path.isEmpty() ? nullptr : OpenEntry(path, GENERIC_READ, FILE_FLAG_SEQUENTIAL_SCAN);
  LARGE_INTEGER size;
  if (!file || GetFileType(file.get()) != FILE_TYPE_DISK || GetFileSizeEx(file.get(), &size) == 0 ||
      size.QuadPart > bound)
    return std::nullopt;

  // A growing file must not run on.
  QByteArray content;
  content.reserve(static_cast<qsizetype>(size.QuadPart) + 1);
  char part[16 * 1024];
  for (;;) {
    DWORD count = 0;
    if (ReadFile(file.get(), part, sizeof part, &count, nullptr) == 0 || content.size() + count > bound)
      return std::nullopt;
    if (count == 0) return content;
    content.append(part, static_cast<qsizetype>(count));
  }
}
