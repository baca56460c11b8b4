// Deleting, and what is told of an entry.
#include "platform/FileActions.h"

#include "platform/Paths.h"
#include "platform/posix/FileActionsFolder.h"
#include "platform/posix/FileDescriptor.h"

#include <QCryptographicHash>

#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <unistd.h>
#include <array>
#include <climits>

namespace {

// Gives a folder of this user's the right to change it, for as long as this lives. The descriptor may be one
// that only names the folder, which the kernel's own link to it serves.
class TLiftedFolder {
 public:
  explicit TLiftedFolder(int folder) : FLink("/proc/self/fd/" + QByteArray::number(folder)) {
    struct stat status;
    if (fstat(folder, &status) != 0 || status.st_uid != geteuid()) return;
    FMode = status.st_mode & 07777;
    const mode_t lifted = FMode | S_IWUSR | S_IXUSR;
    FLifted = lifted != FMode && chmod(FLink, lifted) == 0;
  }
  ~TLiftedFolder() {
    if (FLifted) static_cast<void>(Retried([this] { return chmod(FLink, FMode); }));
  }
  TLiftedFolder(const TLiftedFolder&) = delete;
  TLiftedFolder& operator=(const TLiftedFolder&) = delete;

  [[nodiscard]] bool IsLifted() const { return FLifted; }

 private:
  const QByteArray FLink;
  mode_t FMode = 0;
  bool FLifted = false;
};

// Folders of systemd: where its lines are read from, and what is there only while it runs the computer.
constexpr const char* kTemporaryFilesFolder = "/etc/tmpfiles.d";
constexpr const char* kSystemdRuns = "/run/systemd/system";

// A path as a line of systemd-tmpfiles has it: the line is taken apart at blanks and quotes, then '%' begins
// a specifier, then the path is a pattern of the shell's. Its versions differ in which escapes they know: all
// know a doubled backslash and one before a quote. So nothing stands for a line's end or another control
// character: no such path can be told.
std::optional<QByteArray> LinePath(const QByteArray& path) {
  QByteArray line = "\"";
  for (const char c : path) {
    if (static_cast<unsigned char>(c) < ' ') return std::nullopt;
    if (QByteArrayView("*?[]{}\\").contains(c)) line += "\\\\";
    if (c == '\\' || c == '"') line += '\\';
    if (c == '%') line += '%';
    line += c;
  }
  return line + '"';
}

// The file of a request takes itself away with what it asks for: the next file at that path is another one,
// which the restart after the next must leave alone.
QByteArray RequestText(const QByteArray& linePath, const QByteArray& requestName) {
  return "r! " + linePath + "\nr! " + kTemporaryFilesFolder + '/' + requestName + '\n';
}

// Only a name that ends in ".conf" counts, and it is given when all is written.
bool WriteRequest(const QByteArray& linePath) {
  const TFileDescriptor folder = OpenPath(kTemporaryFilesFolder, O_PATH | O_DIRECTORY);
  const TEntryPlace written{folder.Get(), TemporaryName()};
  const TEntryPlace request{folder.Get(), written.Name.mid(1).chopped(5) + ".conf"};
  const TFileDescriptor file(
      openat(written.Folder, written.Name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644));
  if (!file.IsOpen()) return false;
  if (WriteAll(file.Get(), RequestText(linePath, request.Name)) && fsync(file.Get()) == 0 &&
      RenameNoReplace(written, request) == 0)
    return true;
  unlinkat(written.Folder, written.Name, 0);
  return false;
}

QDateTime TimeOf(const struct statx_timestamp& time) {
  return QDateTime::fromMSecsSinceEpoch(time.tv_sec * 1000 + time.tv_nsec / 1'000'000);
}

QString UserName(uid_t user) {
  std::array<char, 16 * 1024> buffer;
  passwd entry{};
  passwd* found = nullptr;
  getpwuid_r(user, &entry, buffer.data(), buffer.size(), &found);
  return found != nullptr ? NameFromBytes(entry.pw_name) : QString::number(user);
}

QString GroupName(gid_t number) {
  std::array<char, 16 * 1024> buffer;
  group entry{};
  group* found = nullptr;
  getgrgid_r(number, &entry, buffer.data(), buffer.size(), &found);
  return found != nullptr ? NameFromBytes(entry.gr_name) : QString::number(number);
}

QString TargetOfLink(const TEntryPlace& place) {
  std::array<char, PATH_MAX> target;
  const ssize_t length = readlinkat(place.Folder, place.Name, target.data(), target.size());
  return length > 0 ? NameFromBytes(QByteArrayView(target.data(), length)) : QString();
}

}  // namespace

TEntryKind KindOfEntry(const TOpenFolder& folder, const QString& name) {
  const auto place = PlaceOf(folder, name);
  const auto status = place ? StatusOf(*place) : std::nullopt;
  if (!status) return TEntryKind::None;
  return S_ISDIR(status->st_mode) ? TEntryKind::Folder : TEntryKind::File;
}

bool DeletePlain(const TOpenFolder& folder, const QString& name) {
  const auto place = PlaceOf(folder, name);
  return place && unlinkat(place->Folder, place->Name, 0) == 0;
}

bool ShellDeleteSilent(const TOpenFolder& folder, const QString& name) {
  const auto place = PlaceOf(folder, name);
  if (!place) return false;
  if (unlinkat(place->Folder, place->Name, 0) == 0) return true;
  if (errno != EACCES) return false;
  const TLiftedFolder lifted(place->Folder);
  return lifted.IsLifted() && unlinkat(place->Folder, place->Name, 0) == 0;
}

bool ScheduleDelete(const TOpenFolder& folder, const QString& name) {
  const auto place = PlaceOf(folder, name);
  if (!place || KindOfEntry(folder, name) != TEntryKind::File || access(kSystemdRuns, F_OK) != 0)
    return false;
  const auto folderPath = TruePath(place->Folder);
  if (!folderPath) return false;
  const auto path = LinePath((*folderPath == "/" ? *folderPath : *folderPath + '/') + place->Name);
  return path && WriteRequest(*path);
}

std::optional<TFileFacts> GetFileFacts(const TOpenFolder& folder, const QString& name) {
  const auto place = PlaceOf(folder, name);
  struct statx status;
  constexpr int kFlags = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT;
  if (!place || statx(place->Folder, place->Name, kFlags, STATX_BASIC_STATS | STATX_BTIME, &status) != 0)
    return std::nullopt;
  TFileFacts facts;
  facts.Attributes = AttributesOf(status.stx_mode, place->Name.startsWith('.'));
  facts.Size = static_cast<qint64>(status.stx_size);
  facts.SizeOnDisk = static_cast<qint64>(status.stx_blocks) * 512;
  if ((status.stx_mask & STATX_BTIME) != 0) facts.Created = TimeOf(status.stx_btime);
  facts.Modified = TimeOf(status.stx_mtime);
  facts.Accessed = TimeOf(status.stx_atime);
  facts.Owner = UserName(status.stx_uid);
  facts.Group = GroupName(status.stx_gid);
  facts.Mode = status.stx_mode & 07777U;
  facts.Links = status.stx_nlink;
  if (S_ISLNK(status.stx_mode)) facts.LeadsTo = TargetOfLink(*place);
  return facts;
}

std::optional<QByteArray> FileChecksum(const TOpenFolder& folder, const QString& name,
                                       TActionProgress& progress) {
  const auto place = PlaceOf(folder, name);
  if (!place) return std::nullopt;
  const TFileDescriptor file(
      openat(place->Folder, place->Name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  struct stat status;
  if (!file.IsOpen() || fstat(file.Get(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  progress.Total = status.st_size;
  QCryptographicHash hash(QCryptographicHash::Sha256);
  QByteArray part(256 * 1024, Qt::Uninitialized);
  while (!progress.Stop) {
    const ssize_t count =
        Retried([&] { return read(file.Get(), part.data(), static_cast<size_t>(part.size())); });
    if (count < 0) return std::nullopt;
    if (count == 0) return hash.result().toHex();
    hash.addData(QByteArrayView(part.constData(), count));
    progress.Done += count;
  }
  return std::nullopt;
}
