#include "platform/FileEnumeration.h"

#include "platform/Paths.h"
#include "platform/posix/FileDescriptor.h"
#include "platform/posix/MountTable.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/vfs.h>
#include <algorithm>
#include <cstddef>
#include <cstring>
#include <vector>

namespace {

// The record that getdents64 writes.
// As the man page getdents(2) has it. Records are aligned by the kernel, so they are read where they lie.
struct TKernelEntry {
  ino64_t Inode;
  off64_t Offset;
  unsigned short Length;
  unsigned char Type;
  char Name[1];
};

constexpr size_t kNameOffset = offsetof(TKernelEntry, Name);
// About two thousand entries a call; a walk has as many buffers as threads.
constexpr size_t kBufferSize = 64 * 1024;

bool IsDotOrDotDot(const char* name) {
  return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
}

bool IsOnPseudoFileSystem(int folder) {
  struct statfs status;
  return fstatfs(folder, &status) == 0 && IsPseudoFileSystem(static_cast<unsigned long>(status.f_type));
}

// The part of a second counts upwards for times before 1970 as well.
qint64 MillisecondsOf(const timespec& time) {
  return qint64{time.tv_sec} * 1000 + time.tv_nsec / 1'000'000;
}

TFileDescriptor OpenFolder(const QString& folder) {
  return OpenPath(NameToBytes(folder), O_RDONLY | O_DIRECTORY | O_NONBLOCK);
}

// The places where a walk from this folder may list entries: its own, and the ones where further parts of
// the same file system are mounted below it.
std::vector<TMountPlace> PlacesOfFileSystem(int folder) {
  const auto top = MountPlaceOf(folder);
  if (!top) return {};
  std::vector<TMountPlace> places{*top};
  for (const TMount& part : FurtherParts(ReadMountTable(), top->MountId)) {
    const auto place = MountPlaceOf(OpenPath(part.Point, O_PATH | O_DIRECTORY).Get());
    if (place && place->MountId == static_cast<quint64>(part.Id)) places.push_back(*place);
  }
  return places;
}

}  // namespace

class TFileEnumeration::TImpl {
 public:
  void ConfineTo(const QString& root);
  void ConfineLike(const TImpl& other);
  void SkipFolderDetails() { FFolderDetails = false; }
  bool Open(const QString& folder);
  bool Next(TFoundFile& found);
  void Close() { FFolder = {}; }

 private:
  [[nodiscard]] bool ListsAsEmpty() const;
  [[nodiscard]] bool FillBuffer();
  [[nodiscard]] const TKernelEntry* NextEntry();
  [[nodiscard]] bool LookAt(const char* name, TFoundFile& found) const;
  [[nodiscard]] bool Take(const char* name, unsigned char type, TFoundFile& found) const;

  TFileDescriptor FFolder;
  std::vector<TMountPlace> FConfinedTo;  // empty: not confined
  bool FConfinedToPseudo = false;
  bool FFolderDetails = true;
  const std::unique_ptr<char[]> FBuffer{new char[kBufferSize]};
  size_t FFilled = 0;  // bytes of the buffer that hold entries
  size_t FPlace = 0;   // of the next entry
};

void TFileEnumeration::TImpl::ConfineTo(const QString& root) {
  FConfinedTo.clear();
  FConfinedToPseudo = false;
  if (root.isEmpty()) return;
  const TFileDescriptor folder = OpenFolder(root);
  if (!folder.IsOpen()) return;
  FConfinedTo = PlacesOfFileSystem(folder.Get());
  FConfinedToPseudo = IsOnPseudoFileSystem(folder.Get());
}

void TFileEnumeration::TImpl::ConfineLike(const TImpl& other) {
  FConfinedTo = other.FConfinedTo;
  FConfinedToPseudo = other.FConfinedToPseudo;
}

// A confined walk asks for the mount only: what lies on the root's own mount is of the root's kind.
bool TFileEnumeration::TImpl::ListsAsEmpty() const {
  if (FConfinedTo.empty()) return IsOnPseudoFileSystem(FFolder.Get());
  const auto place = MountPlaceOf(FFolder.Get());
  return FConfinedToPseudo || !place ||
         std::find(FConfinedTo.begin(), FConfinedTo.end(), *place) == FConfinedTo.end();
}

bool TFileEnumeration::TImpl::Open(const QString& folder) {
  FFilled = 0;
  FPlace = 0;
  Close();
  if (folder.isEmpty()) return false;
  FFolder = OpenFolder(folder);
  return FFolder.IsOpen() && !ListsAsEmpty();
}

bool TFileEnumeration::TImpl::FillBuffer() {
  const long count = syscall(SYS_getdents64, FFolder.Get(), FBuffer.get(), kBufferSize);
  FPlace = 0;
  FFilled = count > 0 ? static_cast<size_t>(count) : 0;
  return FFilled > 0;
}

const TKernelEntry* TFileEnumeration::TImpl::NextEntry() {
  if (FPlace >= FFilled && !FillBuffer()) return nullptr;
  const auto* const entry = reinterpret_cast<const TKernelEntry*>(FBuffer.get() + FPlace);
  FPlace += entry->Length;
  return entry;
}

bool TFileEnumeration::TImpl::LookAt(const char* name, TFoundFile& found) const {
  struct stat status;
  if (fstatat(FFolder.Get(), name, &status, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT) != 0) return false;
  found.Attributes = AttributesOf(status.st_mode, name[0] == '.');
  found.Size = LengthOf(status.st_mode, status.st_size);
  found.Modified = MillisecondsOf(status.st_mtim);
  return true;
}

bool TFileEnumeration::TImpl::Take(const char* name, unsigned char type, TFoundFile& found) const {
  if (type == DT_DIR && !FFolderDetails) {
    found.Attributes = kAttributeDirectory;
    found.Size = 0;
    found.Modified = 0;
  } else if (!LookAt(name, found)) {
    return false;
  }
  AssignName(found.Name, QByteArrayView(name, static_cast<qsizetype>(std::strlen(name))));
  return true;
}

bool TFileEnumeration::TImpl::Next(TFoundFile& found) {
  if (!FFolder.IsOpen()) return false;
  while (const TKernelEntry* const entry = NextEntry()) {
    const char* const name = reinterpret_cast<const char*>(entry) + kNameOffset;
    if (entry->Inode == 0 || IsDotOrDotDot(name)) continue;
    if (Take(name, entry->Type, found)) return true;
  }
  Close();
  return false;
}

TFileEnumeration::TFileEnumeration() : FImpl(std::make_unique<TImpl>()) {}

TFileEnumeration::~TFileEnumeration() = default;

void TFileEnumeration::ConfineTo(const QString& root) {
  FImpl->ConfineTo(root);
}

void TFileEnumeration::ConfineLike(const TFileEnumeration& other) {
  FImpl->ConfineLike(*other.FImpl);
}

void TFileEnumeration::SkipFolderDetails() {
  FImpl->SkipFolderDetails();
}

bool TFileEnumeration::First(const QString& folder, TFoundFile& found) {
  if (FImpl->Open(folder)) return FImpl->Next(found);
  FImpl->Close();
  return false;
}

bool TFileEnumeration::Next(TFoundFile& found) {
  return FImpl->Next(found);
}

void TFileEnumeration::Close() {
  FImpl->Close();
}
