// Calls of the system that delete and move take paths, not handles. What makes a path safe here is that the
// folder at its end and those above it, up to the one that was opened by its path, are held open without the
// right to share a removal: as long as the handles live nobody can rename one of them or put a link in its
// place, so the path leads where it led when it was looked at.
#include "platform/FileActions.h"

#include "platform/FileEnumeration.h"
#include "platform/KnownFolders.h"
#include "platform/Paths.h"
#include "platform/windows/FileEntry.h"
#include "platform/windows/Handle.h"

#include <shellapi.h>
#include <algorithm>

struct TFolderHandle {
  TFileHandle Folder;
  std::shared_ptr<const TFolderHandle> Above;  // held as long; null for a folder that was opened by its path
  QString Path;                                // without links, no delimiter at the end
};

namespace {

// Without the right to share a removal nobody can rename the folder while it is open. That holds for a handle
// that may do something only, so that a folder that can be neither listed nor passed is not opened at all.
TFileHandle OpenHeld(const QString& path, DWORD flags) {
  for (const DWORD right : {FILE_LIST_DIRECTORY, FILE_TRAVERSE}) {
    auto folder = TakeHandle<TFileHandle>(
        CreateFileW(LongPath(path).c_str(), right, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                    FILE_FLAG_BACKUP_SEMANTICS | flags, nullptr));
    if (folder) return folder;
  }
  return nullptr;
}

// Other reparse points, such as those of files kept elsewhere, lead nowhere else. One of an unknown kind may.
bool LeadsElsewhere(DWORD attributes, DWORD tag) {
  return (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 && (tag == 0 || IsReparseTagNameSurrogate(tag));
}

// Where the folder lies now; the path as given if the system does not tell.
QString FinalPath(HANDLE folder, const QString& path) {
  std::wstring text(32 * 1024, L'\0');
  const DWORD length = GetFinalPathNameByHandleW(folder, text.data(), static_cast<DWORD>(text.size()), 0);
  if (length == 0 || length >= text.size()) return WithoutDelimitersAtEnd(path);
  QString final = QString::fromWCharArray(text.data(), static_cast<qsizetype>(length));
  if (final.startsWith(QLatin1String("\\\\?\\UNC\\"))) return QStringLiteral("\\\\") + final.mid(8);
  return WithoutDelimitersAtEnd(final.startsWith(QLatin1String("\\\\?\\")) ? final.mid(4) : final);
}

// A colon would name a stream of a file, the others a pattern.
bool IsNameOfOne(const QString& name) {
  return !name.isEmpty() && name != QLatin1String(".") && name != QLatin1String("..") &&
         std::none_of(name.begin(), name.end(),
                      [](QChar c) { return c < u' ' || QStringView(u"\\/:*?\"<>|").contains(c); });
}

// The entry's path; nothing for a folder that is not open or a name of none.
std::optional<QString> PathOf(const TOpenFolder& folder, const QString& name) {
  if (!folder.IsOpen() || !IsNameOfOne(name)) return std::nullopt;
  return folder.Handle()->Path + PathDelim + name;
}

struct TEntryLook {
  bool IsThere = false;
  bool IsDirectory = false;  // also a link to one
  bool IsLink = false;
};

// By the listing, which tells what kind of reparse point it is.
TEntryLook LookAt(const std::optional<QString>& path) {
  WIN32_FIND_DATAW entry;
  if (!path || !TakeHandle<TSearchHandle>(FindFirstFileW(LongPath(*path).c_str(), &entry))) return {};
  return {true, (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0,
          LeadsElsewhere(entry.dwFileAttributes, entry.dwReserved0)};
}

// The shell takes paths by the old rules, in which blanks and points at the end of a name are not part of it:
// such a name would be another entry's.
bool ShellTakesIt(const QString& path) {
  const QStringList components = path.split(PathDelim);
  return std::none_of(components.begin(), components.end(), [](const QString& component) {
    return component.endsWith(u'.') || component.endsWith(u' ');
  });
}

// True for a result of 0 and nothing left out by the user's wish.
bool ShellDelete(const QString& path, int terminators, FILEOP_FLAGS flags, const QString& title) {
  if (!ShellTakesIt(path)) return false;
  const QString source = path + QString(terminators, QChar(u'\0'));
  SHFILEOPSTRUCTW operation{};
  operation.wFunc = FO_DELETE;
  operation.pFrom = WideText(source);
  operation.fFlags = flags;
  operation.lpszProgressTitle = title.isEmpty() ? nullptr : WideText(title);
  return SHFileOperationW(&operation) == 0 && operation.fAnyOperationsAborted == FALSE;
}

bool HoldsHome(const QString& path) {
  const QString home = IncludeTrailingPathDelimiter(GetKnownFolder(TSpecialFolder::Profile));
  return SameFolder(home.left(path.size() + 1), IncludeTrailingPathDelimiter(path));
}

}  // namespace

TOpenFolder TOpenFolder::Open(const QString& path) {
  TFileHandle folder = path.isEmpty() ? nullptr : OpenHeld(path, 0);
  if (!folder) return {};
  FILE_ATTRIBUTE_TAG_INFO info{};
  if (GetFileInformationByHandleEx(folder.get(), FileAttributeTagInfo, &info, sizeof info) == 0 ||
      (info.FileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
    return {};
  const QString final = FinalPath(folder.get(), path);
  return TOpenFolder(std::make_shared<const TFolderHandle>(TFolderHandle{std::move(folder), nullptr, final}));
}

// Each folder is opened below one that is held, so that its path stays the one that is looked at then.
TOpenFolder TOpenFolder::Below(const QString& path) const {
  TOpenFolder reached = *this;
  for (const QString& component : path.split(PathDelim, Qt::SkipEmptyParts)) {
    const auto place = PathOf(reached, component);
    TFileHandle folder = place ? OpenHeld(*place, FILE_FLAG_OPEN_REPARSE_POINT) : nullptr;
    if (const TEntryLook look = LookAt(place); !folder || !look.IsDirectory || look.IsLink) return {};
    reached = TOpenFolder(
        std::make_shared<const TFolderHandle>(TFolderHandle{std::move(folder), reached.FHandle, *place}));
  }
  return reached;
}

// A folder that is held keeps its path.
bool TOpenFolder::IsSame(const TOpenFolder& other) const {
  return IsOpen() && other.IsOpen() && SameFolder(FHandle->Path, other.FHandle->Path);
}

TEntryKind KindOfEntry(const TOpenFolder& folder, const QString& name) {
  const TEntryLook look = LookAt(PathOf(folder, name));
  if (!look.IsThere) return TEntryKind::None;
  return look.IsDirectory && !look.IsLink ? TEntryKind::Folder : TEntryKind::File;
}

bool DeletePlain(const TOpenFolder& folder, const QString& name) {
  const auto path = PathOf(folder, name);
  const TEntryLook look = LookAt(path);
  if (!look.IsThere) return false;
  if (look.IsDirectory) return look.IsLink && RemoveDirectoryW(LongPath(*path).c_str()) != 0;
  return DeleteFileW(LongPath(*path).c_str()) != 0;
}

bool ShellDeleteSilent(const TOpenFolder& folder, const QString& name) {
  const auto path = PathOf(folder, name);
  const TEntryLook look = LookAt(path);
  constexpr FILEOP_FLAGS kFlags = FOF_SILENT | FOF_NOCONFIRMATION | FOF_NOCONFIRMMKDIR | FOF_NOERRORUI;
  return look.IsThere && !look.IsDirectory && ShellDelete(*path, 2, kFlags, QString());
}

bool ScheduleDelete(const TOpenFolder& folder, const QString& name) {
  const auto path = PathOf(folder, name);
  const TEntryLook look = LookAt(path);
  return look.IsThere && !look.IsDirectory &&
         MoveFileExW(LongPath(*path).c_str(), L"", MOVEFILE_DELAY_UNTIL_REBOOT) != 0;
}

TActionResult DeleteFolderWithUndo(const TOpenFolder& parent, const QString& name, const QString& title) {
  const auto path = PathOf(parent, name);
  if (KindOfEntry(parent, name) != TEntryKind::Folder || HoldsHome(*path)) return TActionResult::Refused;
  return ShellDelete(*path, 1, FOF_ALLOWUNDO | FOF_NOERRORUI, title) ? TActionResult::Done
                                                                     : TActionResult::Failed;
}

bool MoveEntry(const TOpenFolder& from, const QString& name, const TOpenFolder& to,
               TActionProgress& progress) {
  const auto source = PathOf(from, name);
  const auto target = PathOf(to, name);
  return source && target && !progress.Stop &&
         MoveFileW(LongPath(*source).c_str(), LongPath(*target).c_str()) != 0;
}

std::optional<TFileFacts> GetFileFacts(const TOpenFolder&, const QString&) {
  return std::nullopt;
}

std::optional<QByteArray> FileChecksum(const TOpenFolder&, const QString&, TActionProgress&) {
  return std::nullopt;
}
