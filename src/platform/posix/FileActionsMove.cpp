// Moving. A file that goes to another volume is copied to a temporary name there, flushed, given its name
// where that is free, and only then is the source removed, if it is still the file that was copied. Whatever
// fails before that removes the copy and leaves the source.
#include "platform/posix/FileActionsFolder.h"

#include <fcntl.h>
#include <sys/xattr.h>
#include <algorithm>
#include <climits>

namespace {

// What a file system or the user's rights may keep from a copy: the copy is made all the same, as the
// system's own move makes it.
bool IsNotAllowed() {
  return ErrorIsOneOf({EPERM, EACCES, EINVAL, ENOTSUP, ENOSYS});
}

bool DoneOrNotAllowed(int result) {
  return result == 0 || IsNotAllowed();
}

// A new entry in the target folder. Unless it is kept it goes again, whichever name it has by then.
class TArrival {
 public:
  explicit TArrival(const TEntryPlace& target) : FTarget(target), FPlace{target.Folder, TemporaryName()} {}
  ~TArrival() {
    if (!FMade || FKept) return;
    if (FIdentity)
      static_cast<void>(RemoveIfStill(FTarget, *FIdentity));
    else
      unlinkat(FPlace.Folder, FPlace.Name, 0);
  }
  TArrival(const TArrival&) = delete;
  TArrival& operator=(const TArrival&) = delete;

  [[nodiscard]] const TEntryPlace& Place() const { return FPlace; }
  // Takes what the call that makes the entry answered.
  [[nodiscard]] bool Made(bool made) { return FMade = made; }

  // Gives it the name that it is to have, and waits until the disk has it.
  [[nodiscard]] bool GiveName() {
    const auto status = StatusOf(FPlace);
    if (!status || RenameNoReplace(FPlace, FTarget) != 0) return false;
    FIdentity = TFileIdentity(*status);
    return FlushFolder();
  }

  void Keep() { FKept = true; }

 private:
  // A folder that may be written and not read can't be flushed.
  [[nodiscard]] bool FlushFolder() const {
    const TFileDescriptor folder(openat(FTarget.Folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return folder.IsOpen() ? DoneOrNotAllowed(fsync(folder.Get())) : IsNotAllowed();
  }

  const TEntryPlace FTarget;
  const TEntryPlace FPlace;
  std::optional<TFileIdentity> FIdentity;  // once it has its name
  bool FMade = false;
  bool FKept = false;
};

// One run of bytes of a file, which ends where a hole begins.
struct TExtent {
  off_t Begin = 0;
  off_t End = 0;
};

// The first extent from a place on; an empty one at the end if only a hole is left. A file system that does
// not tell its holes has one extent.
std::optional<TExtent> NextExtent(int file, off_t place, off_t size) {
  const off_t begin = lseek(file, place, SEEK_DATA);
  if (begin < 0 && errno == ENXIO) return TExtent{size, size};
  if (begin < 0) return IsNotAllowed() ? std::optional(TExtent{place, size}) : std::nullopt;
  const off_t end = lseek(file, begin, SEEK_HOLE);
  if (end < 0) return std::nullopt;
  return TExtent{std::min(begin, size), std::min(end, size)};
}

class TContentCopy {
 public:
  TContentCopy(int from, int to, TActionProgress& progress) : FFrom(from), FTo(to), FProgress(progress) {}

  [[nodiscard]] bool Copy(off_t size) {
    FProgress.Total = size;
    for (off_t place = 0; place < size;) {
      const auto extent = NextExtent(FFrom, place, size);
      if (!extent || !CopyExtent(*extent)) return false;
      place = extent->End;
      FProgress.Done = place;
    }
    return ftruncate(FTo, size) == 0;  // a hole at the end
  }

 private:
  [[nodiscard]] bool CopyExtent(TExtent extent) {
    if (lseek(FFrom, extent.Begin, SEEK_SET) < 0 || lseek(FTo, extent.Begin, SEEK_SET) < 0) return false;
    while (extent.Begin < extent.End) {
      const auto wanted = static_cast<size_t>(std::min<off_t>(FBuffer.size(), extent.End - extent.Begin));
      const ssize_t count = Retried([&] { return read(FFrom, FBuffer.data(), wanted); });
      if (FProgress.Stop || count <= 0 || !WriteAll(FTo, QByteArrayView(FBuffer.constData(), count)))
        return false;
      extent.Begin += count;
      FProgress.Done = extent.Begin;
    }
    return true;
  }

  const int FFrom;
  const int FTo;
  TActionProgress& FProgress;
  // What lies between two looks at the request to stop, and between two reports of how far it is.
  QByteArray FBuffer = QByteArray(1024 * 1024, Qt::Uninitialized);
};

// What a call writes into a buffer whose size it tells when it is asked without one; nothing on an error.
template <typename TCall>
std::optional<QByteArray> Sized(const TCall& call) {
  const ssize_t size = call(nullptr, 0);
  if (size < 0) return std::nullopt;
  QByteArray bytes(size, '\0');
  const ssize_t filled = size == 0 ? 0 : call(bytes.data(), static_cast<size_t>(size));
  if (filled < 0) return std::nullopt;
  bytes.truncate(filled);
  return bytes;
}

constexpr const char* kAccessList = "system.posix_acl_access";

class TAttributeCopy {
 public:
  TAttributeCopy(int from, int to, const struct stat& source) : FFrom(from), FTo(to), FSource(source) {}

  // The owner first: changing it takes other rights away. The mode before the lists of rights, which would
  // change with it, behind those that only who may write the file may set. Times last.
  [[nodiscard]] bool Copy() {
    const timespec times[] = {FSource.st_atim, FSource.st_mtim};
    return CopyOwner() && CopyExtended() && DropInheritedList() && DoneOrNotAllowed(fchmod(FTo, Mode())) &&
           CopyAccessList() && DoneOrNotAllowed(futimens(FTo, times));
  }

 private:
  // The group alone where the user may give no file away.
  [[nodiscard]] bool CopyOwner() {
    FOwnerKept = fchown(FTo, FSource.st_uid, FSource.st_gid) == 0;
    if (FOwnerKept) return true;
    return IsNotAllowed() && DoneOrNotAllowed(fchown(FTo, static_cast<uid_t>(-1), FSource.st_gid));
  }

  [[nodiscard]] bool CopyExtended() {
    const auto names = Sized([this](char* to, size_t size) { return flistxattr(FFrom, to, size); });
    if (!names) return IsNotAllowed();
    for (const QByteArray& name : names->split('\0')) {
      if (name == kAccessList)
        FHasAccessList = true;
      else if (!name.isEmpty() && !CopyOne(name) && !IsNotAllowed())
        return false;
    }
    return true;
  }

  [[nodiscard]] bool CopyOne(const QByteArray& name) const {
    const auto value = Sized([&](char* to, size_t size) { return fgetxattr(FFrom, name, to, size); });
    return value ? fsetxattr(FTo, name, value->constData(), static_cast<size_t>(value->size()), 0) == 0
                 : errno == ENODATA;
  }

  // Another owner's file must not act for this one. With a list of rights the group's bits are the most that
  // the list may give; without that list they would be what the whole group gets.
  [[nodiscard]] mode_t Mode() const {
    mode_t mode = FSource.st_mode & 07777;
    if (!FOwnerKept) mode &= ~static_cast<mode_t>(S_ISUID | S_ISGID);
    if (FHasAccessList) mode &= ~static_cast<mode_t>(S_IRWXG);
    return mode;
  }

  // The target folder may give its new files a list of its own.
  [[nodiscard]] bool DropInheritedList() const {
    return DoneOrNotAllowed(fremovexattr(FTo, kAccessList)) || errno == ENODATA;
  }

  [[nodiscard]] bool CopyAccessList() const {
    return !FHasAccessList || CopyOne(kAccessList) || IsNotAllowed();
  }

  const int FFrom;
  const int FTo;
  const struct stat& FSource;
  bool FOwnerKept = false;
  bool FHasAccessList = false;
};

bool SameTime(const timespec& a, const timespec& b) {
  return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

// A file that somebody wrote to meanwhile was copied as it never was.
bool IsUnchanged(int file, const struct stat& before) {
  struct stat now;
  return fstat(file, &now) == 0 && TFileIdentity(now) == TFileIdentity(before) &&
         SameTime(now.st_ctim, before.st_ctim);
}

bool CopyFile(const TEntryPlace& from, const struct stat& source, TArrival& arrival,
              TActionProgress& progress) {
  const TFileDescriptor in(openat(from.Folder, from.Name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  if (!in.IsOpen() || !IsUnchanged(in.Get(), source)) return false;
  const TEntryPlace& place = arrival.Place();
  const TFileDescriptor out(
      openat(place.Folder, place.Name, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
  return arrival.Made(out.IsOpen()) && TContentCopy(in.Get(), out.Get(), progress).Copy(source.st_size) &&
         TAttributeCopy(in.Get(), out.Get(), source).Copy() && fsync(out.Get()) == 0 &&
         IsUnchanged(in.Get(), source);
}

bool MakeSameLink(const TEntryPlace& from, const TEntryPlace& place) {
  QByteArray target(PATH_MAX, '\0');
  const ssize_t length = readlinkat(from.Folder, from.Name, target.data(), PATH_MAX);
  if (length <= 0 || length >= PATH_MAX) return false;
  target.truncate(length);
  return symlinkat(target, place.Folder, place.Name) == 0;
}

// A link, pipe, socket or device has nothing but itself.
bool MakeSameEntry(const TEntryPlace& from, const struct stat& source, TArrival& arrival) {
  const TEntryPlace& place = arrival.Place();
  const bool isLink = S_ISLNK(source.st_mode);
  if (!arrival.Made(isLink ? MakeSameLink(from, place)
                           : mknodat(place.Folder, place.Name, source.st_mode & S_IFMT, source.st_rdev) == 0))
    return false;
  const bool ownerKept =
      fchownat(place.Folder, place.Name, source.st_uid, source.st_gid, AT_SYMLINK_NOFOLLOW) == 0;
  const mode_t mode = source.st_mode & (ownerKept ? 07777 : 01777);
  const timespec times[] = {source.st_atim, source.st_mtim};
  return (ownerKept || IsNotAllowed()) &&
         (isLink || DoneOrNotAllowed(fchmodat(place.Folder, place.Name, mode, AT_SYMLINK_NOFOLLOW))) &&
         DoneOrNotAllowed(utimensat(place.Folder, place.Name, times, AT_SYMLINK_NOFOLLOW));
}

// A copy that could not end as a move would be made in vain.
bool MayBeMoved(const TEntryPlace& from, const TEntryPlace& to) {
  return faccessat(from.Folder, ".", W_OK | X_OK, AT_EACCESS) == 0 && !StatusOf(to);
}

// What is there after a crash, step by step: the source and a ".part" that is not whole; the source and a
// whole one; the source and the target; the source under a temporary name and the target; the target. At
// least one of them is whole.
bool MoveAcross(const TEntryPlace& from, const TEntryPlace& to, TActionProgress& progress) {
  const auto source = StatusOf(from);
  if (!source || S_ISDIR(source->st_mode) || !MayBeMoved(from, to)) return false;
  TArrival arrival(to);
  const bool arrived = S_ISREG(source->st_mode) ? CopyFile(from, *source, arrival, progress)
                                                : MakeSameEntry(from, *source, arrival);
  if (!arrived || !arrival.GiveName() || !RemoveIfStill(from, TFileIdentity(*source))) return false;
  arrival.Keep();
  return true;
}

}  // namespace

bool MoveEntry(const TOpenFolder& from, const QString& name, const TOpenFolder& to,
               TActionProgress& progress) {
  const auto source = PlaceOf(from, name);
  const auto target = PlaceOf(to, name);
  if (!source || !target) return false;
  const int error = RenameNoReplace(*source, *target);
  return error == 0 || (error == EXDEV && MoveAcross(*source, *target, progress));
}
