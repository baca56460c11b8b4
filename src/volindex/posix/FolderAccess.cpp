#include "volindex/posix/FolderAccess.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <cstring>
#include <thread>
#include <utility>

namespace volindex {

namespace {

constexpr size_t kListingBuffer = 256 * 1024;
constexpr unsigned kMostOpenFolders = 256;
constexpr unsigned kOpenAttempts = 20;
constexpr std::chrono::milliseconds kOpenPause{2};
constexpr unsigned kWanted = STATX_TYPE | STATX_NLINK | STATX_INO | STATX_SIZE | STATX_MNT_ID;

// The head of an entry as the kernel lays it out; the name follows, then padding up to Length.
struct TListedEntry {
  uint64_t Number;
  int64_t Next;
  uint16_t Length;
  uint8_t Type;
} __attribute__((packed));
constexpr size_t kNameOffset = sizeof(TListedEntry);
static_assert(kNameOffset == 19);
constexpr size_t kTypeOffset = offsetof(TListedEntry, Type);

bool IsSelfOrParent(const char* name) {
  return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
}

TAccess LastError() {
  return errno == ENOENT || errno == ENOTDIR || errno == ELOOP || errno == ESTALE ? TAccess::Gone
                                                                                  : TAccess::Unreadable;
}

TAccess Ask(int folder, const char* name, int flags, TEntryFacts& facts) {
  struct statx raw;
  if (::statx(folder, name, flags | AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT, kWanted, &raw) != 0)
    return LastError();
  facts.IsFolder = S_ISDIR(raw.stx_mode);
  facts.Size = S_ISREG(raw.stx_mode) || S_ISLNK(raw.stx_mode) ? raw.stx_size : 0;
  facts.Links = raw.stx_nlink;
  facts.Number = raw.stx_ino;
  facts.Place = {(raw.stx_mask & STATX_MNT_ID) != 0 ? raw.stx_mnt_id : 0, raw.stx_dev_major,
                 raw.stx_dev_minor};
  return TAccess::Ok;
}

bool OutOfDescriptors() {
  return errno == EMFILE || errno == ENFILE;
}

}  // namespace

TFolderHandle::TFolderHandle(TFolderHandle&& other) noexcept
    : FDescriptor(std::exchange(other.FDescriptor, -1)) {}

TFolderHandle& TFolderHandle::operator=(TFolderHandle&& other) noexcept {
  std::swap(FDescriptor, other.FDescriptor);
  return *this;
}

void TFolderHandle::Close() {
  if (FDescriptor >= 0) ::close(std::exchange(FDescriptor, -1));
}

TAccess TFolderHandle::OpenAt(int parent, const char* path) {
  constexpr int kFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
  int opened = ::openat(parent, path, kFlags | O_NOATIME);
  if (opened < 0 && errno == EPERM)
    opened = ::openat(parent, path, kFlags);  // only the owner may ask for O_NOATIME
  for (unsigned attempt = 1; opened < 0 && OutOfDescriptors() && attempt < kOpenAttempts; ++attempt) {
    std::this_thread::sleep_for(kOpenPause);
    opened = ::openat(parent, path, kFlags);
  }
  if (opened < 0) return LastError();
  Close();
  FDescriptor = opened;
  return TAccess::Ok;
}

TAccess TFolderHandle::OpenRoot(const std::string& path) {
  return OpenAt(AT_FDCWD, path.c_str());
}

TAccess TFolderHandle::OpenBelow(const TFolderHandle& parent, const std::string& path) {
  return OpenAt(parent.FDescriptor, path.c_str());
}

TAccess TFolderHandle::Facts(TEntryFacts& facts) const {
  return Ask(FDescriptor, "", AT_EMPTY_PATH, facts);
}

TAccess TFolderHandle::EntryFacts(const char* name, bool listedAsFolder, TEntryFacts& facts) const {
  return Ask(FDescriptor, name, listedAsFolder ? AT_STATX_DONT_SYNC : 0, facts);
}

TFolderListing::TFolderListing() : FBuffer(std::make_unique_for_overwrite<char[]>(kListingBuffer)) {}

void TFolderListing::Start(const TFolderHandle& folder) {
  FDescriptor = folder.FDescriptor;
  FEntries.clear();
  FNext = 0;
}

TAccess TFolderListing::Fill() {
  const long got = ::syscall(SYS_getdents64, FDescriptor, FBuffer.get(), kListingBuffer);
  if (got < 0) return errno == ENOENT ? TAccess::Gone : TAccess::Unreadable;
  SortEntries(static_cast<size_t>(got));
  FBytesRead += static_cast<uint64_t>(got);
  return got == 0 ? TAccess::Gone : TAccess::Ok;
}

void TFolderListing::SortEntries(size_t filled) {
  FEntries.clear();
  FNext = 0;
  TListedEntry entry;
  for (size_t at = 0; at < filled; at += entry.Length) {
    std::memcpy(&entry, FBuffer.get() + at, kNameOffset);
    if (!IsSelfOrParent(FBuffer.get() + at + kNameOffset)) FEntries.push_back({entry.Number, at});
  }
  const auto byNumber = [](const TPlaceInBuffer& a, const TPlaceInBuffer& b) { return a.Number < b.Number; };
  if (!std::is_sorted(FEntries.begin(), FEntries.end(), byNumber))
    std::sort(FEntries.begin(), FEntries.end(), byNumber);
}

TAccess TFolderListing::Next() {
  while (FNext == FEntries.size()) {
    if (const TAccess access = Fill(); access != TAccess::Ok) return access;
  }
  const char* entry = FBuffer.get() + FEntries[FNext++].Offset;
  FName = entry + kNameOffset;
  FListedAsFolder = static_cast<uint8_t>(entry[kTypeOffset]) == DT_DIR;
  return TAccess::Ok;
}

uint64_t TimesWaited() {
  struct rusage usage {};
  return ::getrusage(RUSAGE_THREAD, &usage) == 0 ? static_cast<uint64_t>(usage.ru_nvcsw) : 0;
}

unsigned OpenFolderLimit() {
  struct rlimit limit {};
  if (::getrlimit(RLIMIT_NOFILE, &limit) != 0) return kMostOpenFolders / 8;
  return static_cast<unsigned>(std::min<rlim_t>(limit.rlim_cur / 4, kMostOpenFolders));
}

}  // namespace volindex
