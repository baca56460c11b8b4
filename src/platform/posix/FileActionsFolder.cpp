#include "platform/posix/FileActionsFolder.h"

#include "platform/Paths.h"

#include <QRandomGenerator>

#include <fcntl.h>
#include <climits>
#include <cstdio>

struct TFolderHandle {
  explicit TFolderHandle(TFileDescriptor folder) : Folder(std::move(folder)) {}
  TFileDescriptor Folder;
};

namespace {

TOpenFolder Holding(TFileDescriptor folder) {
  return folder.IsOpen() ? TOpenFolder(std::make_shared<const TFolderHandle>(std::move(folder)))
                         : TOpenFolder();
}

bool IsNameOfOne(const QByteArray& name) {
  return !name.isEmpty() && name != "." && name != ".." && !name.contains('/') && !name.contains('\0');
}

// For file systems that can't rename without replacing: a second name, then the first one removed. Kept apart
// from RemoveIfStill's own renames, which need no such care, as their targets' names are nobody's.
int LinkThenRemove(const TEntryPlace& from, const TEntryPlace& to, const struct stat& before) {
  if (linkat(from.Folder, from.Name, to.Folder, to.Name, 0) != 0) return errno;
  const TFileIdentity identity(StatusOf(to).value_or(before));
  if (RemoveIfStill(from, identity)) return 0;
  static_cast<void>(RemoveIfStill(to, identity));
  return EIO;
}

// A folder may replace an empty one, which holds the name meanwhile and holds nothing that could be lost.
int ReserveThenRename(const TEntryPlace& from, const TEntryPlace& to) {
  if (mkdirat(to.Folder, to.Name, 0700) != 0) return errno;
  if (renameat(from.Folder, from.Name, to.Folder, to.Name) == 0) return 0;
  const int error = errno;
  unlinkat(to.Folder, to.Name, AT_REMOVEDIR);
  return error;
}

// Undoes the renaming to a temporary name; a name that was taken meanwhile stays that other file's.
void PutBack(const TEntryPlace& aside, const TEntryPlace& place) {
  if (renameat2(aside.Folder, aside.Name, place.Folder, place.Name, RENAME_NOREPLACE) == 0) return;
  if (linkat(aside.Folder, aside.Name, place.Folder, place.Name, 0) == 0)
    unlinkat(aside.Folder, aside.Name, 0);
}

bool IsStill(const TEntryPlace& place, const TFileIdentity& identity) {
  const auto status = StatusOf(place);
  return status && TFileIdentity(*status) == identity;
}

}  // namespace

TOpenFolder TOpenFolder::Open(const QString& path) {
  return Holding(OpenPath(NameToBytes(path), O_PATH | O_DIRECTORY));
}

// One component at a time below the folder before it: no text is ever looked up again, so nothing that is
// renamed meanwhile leads elsewhere, and a path may be of any length.
TOpenFolder TOpenFolder::Below(const QString& path) const {
  TOpenFolder reached = *this;
  for (const QString& component : path.split(PathDelim, Qt::SkipEmptyParts)) {
    const auto place = PlaceOf(reached, component);
    if (!place) return {};
    reached = Holding(
        TFileDescriptor(openat(place->Folder, place->Name, O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC)));
  }
  return reached;
}

bool TOpenFolder::IsSame(const TOpenFolder& other) const {
  struct stat status;
  struct stat otherStatus;
  return IsOpen() && other.IsOpen() && fstat(FHandle->Folder.Get(), &status) == 0 &&
         fstat(other.FHandle->Folder.Get(), &otherStatus) == 0 && status.st_dev == otherStatus.st_dev &&
         status.st_ino == otherStatus.st_ino;
}

std::optional<TEntryPlace> PlaceOf(const TOpenFolder& folder, const QString& name) {
  const QByteArray bytes = NameToBytes(name);
  if (!folder.IsOpen() || !IsNameOfOne(bytes) || NameFromBytes(bytes) != name) return std::nullopt;
  return TEntryPlace{folder.Handle()->Folder.Get(), bytes};
}

std::optional<struct stat> StatusOf(const TEntryPlace& place) {
  struct stat status;
  if (fstatat(place.Folder, place.Name, &status, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT) != 0)
    return std::nullopt;
  return status;
}

std::optional<QByteArray> TruePath(int descriptor) {
  QByteArray path(PATH_MAX, '\0');
  const QByteArray link = "/proc/self/fd/" + QByteArray::number(descriptor);
  const ssize_t length = readlink(link, path.data(), PATH_MAX);
  if (length <= 0 || length >= PATH_MAX || path[0] != '/') return std::nullopt;
  path.truncate(length);
  return path;
}

QByteArray TemporaryName() {
  const quint64 number = QRandomGenerator::system()->generate64();
  return ".tallyscope-" + QByteArray::number(number, 16).rightJustified(16, '0') + ".part";
}

int RenameNoReplace(const TEntryPlace& from, const TEntryPlace& to) {
  if (renameat2(from.Folder, from.Name, to.Folder, to.Name, RENAME_NOREPLACE) == 0) return 0;
  if (!ErrorIsOneOf({EINVAL, ENOSYS})) return errno;
  const auto status = StatusOf(from);
  if (!status) return errno;
  return S_ISDIR(status->st_mode) ? ReserveThenRename(from, to) : LinkThenRemove(from, to, *status);
}

// Between a look at a name and its removal another program may put its own file there, as editors do when
// they save. Under a name that only this function knows, nobody does. A full file system may lack the room
// for such a name.
bool RemoveIfStill(const TEntryPlace& place, const TFileIdentity& identity) {
  const TEntryPlace aside{place.Folder, TemporaryName()};
  if (!IsStill(place, identity)) return false;
  if (renameat(place.Folder, place.Name, aside.Folder, aside.Name) != 0)
    return ErrorIsOneOf({ENOSPC, EDQUOT}) && unlinkat(place.Folder, place.Name, 0) == 0;
  if (IsStill(aside, identity) && unlinkat(aside.Folder, aside.Name, 0) == 0) return true;
  PutBack(aside, place);
  return false;
}

bool WriteAll(int file, QByteArrayView bytes) {
  while (!bytes.isEmpty()) {
    const ssize_t count =
        Retried([&] { return write(file, bytes.data(), static_cast<size_t>(bytes.size())); });
    if (count <= 0) return false;
    bytes = bytes.sliced(count);
  }
  return true;
}
