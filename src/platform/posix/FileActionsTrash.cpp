// The trash as the desktops keep it: a folder "files" with what was put there and beside it "info" with a
// text per entry that tells where it came from and when. A user has one at home and may have one on each
// volume; what is put there is renamed, never copied.
//
// How it goes: DeleteFolderWithUndo opens the folder itself and learns its true path; PutIntoAnyTrash tries
// the home's trash, the shared one of the volume and the user's own there; PutInto looks for a free name,
// PutAs writes the info and renames. What may be hostile is what others may write to: the top of a volume. So
// no link there is followed, nothing but the shared folder itself may be another user's, and the folder is
// compared by number after it was renamed.
#include "platform/posix/FileActionsFolder.h"

#include "platform/KnownFolders.h"
#include "platform/Paths.h"
#include "platform/posix/MountTable.h"

#include <QDateTime>

#include <fcntl.h>
#include <unistd.h>
#include <algorithm>

namespace {

constexpr int kFolderOnly = O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
constexpr const char* kInfoSuffix = ".trashinfo";

bool IsWithin(const QByteArray& path, const QByteArray& folder) {
  return path == folder || path.startsWith(folder == "/" ? folder : folder + '/');
}

QByteArray HomeFolder() {
  return NameToBytes(GetKnownFolder(TSpecialFolder::Profile));
}

bool IsOwn(int folder) {
  struct stat status;
  return fstat(folder, &status) == 0 && status.st_uid == geteuid();
}

// What must stay where it is: what the home folder lies in, and what some volume is mounted on or below,
// whose files would go with it. Unknown is not good enough.
bool MustStay(const QByteArray& path) {
  const TFileDescriptor home = OpenPath(HomeFolder(), O_PATH | O_DIRECTORY);
  const auto homePath = home.IsOpen() ? TruePath(home.Get()) : std::optional(QByteArray());
  const QVector<TMount> mounts = ReadMountTable();
  return !homePath || mounts.isEmpty() || IsWithin(*homePath, path) ||
         std::any_of(mounts.begin(), mounts.end(),
                     [&](const TMount& mount) { return IsWithin(mount.Point, path); });
}

// The folder of this name, made for this user alone if it is missing; not open if it is a link or somebody
// else's.
TFileDescriptor OwnFolder(int parent, const QByteArray& name) {
  mkdirat(parent, name, 0700);
  TFileDescriptor folder(openat(parent, name, kFolderOnly));
  return folder.IsOpen() && IsOwn(folder.Get()) ? std::move(folder) : TFileDescriptor();
}

// Made with what lies above it, where it is missing.
TFileDescriptor FolderAt(const QByteArray& path) {
  TFileDescriptor folder = OpenPath(path, O_PATH | O_DIRECTORY);
  const qsizetype delimiter = path.lastIndexOf('/');
  if (folder.IsOpen() || errno != ENOENT || delimiter <= 0) return folder;
  const TFileDescriptor above = FolderAt(path.left(delimiter));
  return above.IsOpen() ? OwnFolder(above.Get(), path.mid(delimiter + 1)) : TFileDescriptor();
}

// Root keeps out of the home of the user whose environment it has.
TFileDescriptor HomeTrash() {
  const TFileDescriptor home = OpenPath(HomeFolder(), O_PATH | O_DIRECTORY);
  if (!home.IsOpen() || !IsOwn(home.Get())) return {};
  const TFileDescriptor data = FolderAt(NameToBytes(GetKnownFolder(TSpecialFolder::LocalAppData)));
  return data.IsOpen() ? OwnFolder(data.Get(), "Trash") : TFileDescriptor();
}

// A folder that all users share serves only if none can remove another one's.
TFileDescriptor SharedTrash(int top) {
  const TFileDescriptor shared(openat(top, ".Trash", kFolderOnly));
  struct stat status;
  if (!shared.IsOpen() || fstat(shared.Get(), &status) != 0 || (status.st_mode & S_ISVTX) == 0) return {};
  return OwnFolder(shared.Get(), QByteArray::number(geteuid()));
}

// The folder on which the volume of an open file is mounted, if it can be reached there.
struct TVolumeTop {
  TFileDescriptor Folder;
  QByteArray Point;
};

TVolumeTop TopOf(int file) {
  const auto place = MountPlaceOf(file);
  if (!place) return {};
  for (const TMount& mount : ReadMountTable()) {
    if (static_cast<quint64>(mount.Id) != place->MountId) continue;
    TFileDescriptor folder = OpenPath(mount.Point, O_PATH | O_DIRECTORY);
    if (folder.IsOpen() && MountPlaceOf(folder.Get()) == place) return {std::move(folder), mount.Point};
  }
  return {};
}

// A folder on its way to a trash.
class TTrashedFolder {
 public:
  TTrashedFolder(const TEntryPlace& place, int folder, QByteArray path)
      : FPlace(place), FFolder(folder), FPath(std::move(path)) {}

  // EXDEV, as if there were no trash, also for one that can't be used. A trash of a volume tells paths from
  // that volume's top on.
  [[nodiscard]] int PutInto(const TFileDescriptor& trash, const QByteArray& top) const {
    if (!trash.IsOpen()) return EXDEV;
    const TFileDescriptor files = OwnFolder(trash.Get(), "files");
    const TFileDescriptor infos = OwnFolder(trash.Get(), "info");
    if (!files.IsOpen() || !infos.IsOpen()) return EXDEV;
    int error = EEXIST;
    for (int number = 1; error == EEXIST && number < kMostOfOneName; ++number)
      error = PutAs(NameInTrash(number), files.Get(), infos.Get(), top);
    return error;
  }

 private:
  // Each number is one try to make a file; a trash with as many folders of one name is told as a failure.
  static constexpr int kMostOfOneName = 10'000;

  // The name with a number, cut so that the name of its info file is no longer than a name may be; never in
  // the middle of a character.
  [[nodiscard]] QByteArray NameInTrash(int number) const {
    // Room for a point, four digits and the suffix of the info file.
    constexpr qsizetype kLongest = NAME_MAX - 16;
    QByteArray name = FPlace.Name;
    if (name.size() > kLongest) {
      qsizetype end = kLongest;
      while (end > kLongest - 4 && (static_cast<unsigned char>(name[end]) & 0xC0) == 0x80)
        --end;
      name.truncate(end);
    }
    return number == 1 ? name : name + '.' + QByteArray::number(number);
  }

  [[nodiscard]] QByteArray InfoText(const QByteArray& top) const {
    const QByteArray path = top.isEmpty() ? FPath : FPath.mid(top == "/" ? 1 : top.size() + 1);
    return "[Trash Info]\nPath=" + path.toPercentEncoding("/") + "\nDeletionDate=" +
           QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss")).toLatin1() + '\n';
  }

  // The info comes first, which reserves the name; without the folder it goes again.
  [[nodiscard]] int PutAs(const QByteArray& name, int files, int infos, const QByteArray& top) const {
    const TEntryPlace info{infos, name + kInfoSuffix};
    const TFileDescriptor text(
        openat(info.Folder, info.Name, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
    if (!text.IsOpen()) return errno;
    const bool told = WriteAll(text.Get(), InfoText(top)) && fsync(text.Get()) == 0;
    const int error = told ? Rename({files, name}) : EIO;
    if (error != 0) unlinkat(info.Folder, info.Name, 0);
    return error;
  }

  // What took the folder's name in the last moment goes back.
  [[nodiscard]] int Rename(const TEntryPlace& target) const {
    if (const int error = RenameNoReplace(FPlace, target); error != 0) return error;
    const auto moved = StatusOf(target);
    struct stat meant;
    if (!moved || fstat(FFolder, &meant) != 0 ||
        (moved->st_ino == meant.st_ino && moved->st_dev == meant.st_dev))
      return 0;
    return RenameNoReplace(target, FPlace) == 0 ? ESTALE : 0;
  }

  const TEntryPlace FPlace;
  const int FFolder;
  const QByteArray FPath;
};

// No trash, or none on this volume, is EXDEV.
int PutIntoAnyTrash(const TEntryPlace& place, int folder, const QByteArray& path) {
  const TTrashedFolder trashed(place, folder, path);
  if (const int error = trashed.PutInto(HomeTrash(), QByteArray()); error != EXDEV) return error;
  const TVolumeTop top = TopOf(place.Folder);
  if (!top.Folder.IsOpen() || !IsWithin(path, top.Point)) return EXDEV;
  if (const int error = trashed.PutInto(SharedTrash(top.Folder.Get()), top.Point); error != EXDEV)
    return error;
  return trashed.PutInto(OwnFolder(top.Folder.Get(), ".Trash-" + QByteArray::number(geteuid())), top.Point);
}

}  // namespace

TActionResult DeleteFolderWithUndo(const TOpenFolder& parent, const QString& name, const QString&) {
  const auto place = PlaceOf(parent, name);
  if (!place) return TActionResult::Refused;
  const TFileDescriptor folder(openat(place->Folder, place->Name, kFolderOnly));
  const auto path = folder.IsOpen() ? TruePath(folder.Get()) : std::nullopt;
  if (!path || MustStay(*path)) return TActionResult::Refused;
  const int error = PutIntoAnyTrash(*place, folder.Get(), *path);
  return error == 0 ? TActionResult::Done : error == EXDEV ? TActionResult::Refused : TActionResult::Failed;
}
