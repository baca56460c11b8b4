#include "volindex/system/FolderAccess.h"

#include <dirent.h>
#include <fcntl.h>
#include <linux/openat2.h>
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
#include <vector>

namespace volindex {

namespace {

constexpr int kNone = -1;
// Room for thousands of entries: the more come at once, the more of them can be brought into the disk's
// order.
constexpr size_t kListingBuffer = 256 * 1024;
constexpr unsigned kMostOpenFolders = 256;
// Other threads give descriptors back within milliseconds; after about 40 of these the folder counts as
// unreadable.
constexpr unsigned kOpenAttempts = 20;
constexpr std::chrono::milliseconds kOpenPause{2};
constexpr uint64_t kAllocationUnit = 512;
constexpr unsigned kWanted = STATX_TYPE | STATX_NLINK | STATX_INO | STATX_SIZE | STATX_BLOCKS | STATX_MNT_ID;

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
  facts.Allocated = raw.stx_blocks * kAllocationUnit;
  facts.Links = raw.stx_nlink;
  facts.Number = raw.stx_ino;
  facts.Place = {(raw.stx_mask & STATX_MNT_ID) != 0 ? raw.stx_mnt_id : 0, raw.stx_dev_major,
                 raw.stx_dev_minor};
  return TAccess::Ok;
}

bool OutOfDescriptors() {
  return errno == EMFILE || errno == ENFILE;
}

// Of a way of several names below a folder none may be a link: they were folders when they were listed.
// Kernels before 5.6, and sandboxes that refuse the call, look at the last name alone.
int OpenOnce(int parent, const char* path, int flags) {
  if (parent != AT_FDCWD && std::strchr(path, '/') != nullptr) {
    open_how how{};
    how.flags = static_cast<uint64_t>(flags);
    how.resolve = RESOLVE_NO_SYMLINKS;
    const long opened = ::syscall(SYS_openat2, parent, path, &how, sizeof how);
    if (opened >= 0 || (errno != ENOSYS && errno != EPERM)) return static_cast<int>(opened);
  }
  return ::openat(parent, path, flags);
}

// Answers with the descriptor, or kNone with errno.
int OpenFolder(int parent, const char* path) {
  constexpr int kFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
  int opened = OpenOnce(parent, path, kFlags | O_NOATIME);
  if (opened < 0 && errno == EPERM)
    opened = OpenOnce(parent, path, kFlags);  // only the owner may ask for O_NOATIME
  for (unsigned attempt = 1; opened < 0 && OutOfDescriptors() && attempt < kOpenAttempts; ++attempt) {
    std::this_thread::sleep_for(kOpenPause);
    opened = OpenOnce(parent, path, kFlags);
  }
  return opened;
}

int Descriptor(intptr_t handle) {
  return static_cast<int>(handle);
}

TAccess Take(int opened, intptr_t& handle) {
  if (opened < 0) return LastError();
  if (handle != kNone) ::close(Descriptor(handle));
  handle = opened;
  return TAccess::Ok;
}

}  // namespace

// Of the 4,096 bytes that a path may have: the last name of a piece comes on top.
const size_t kPathPiece = 3000;

TFolderHandle::TFolderHandle(TFolderHandle&& other) noexcept : FHandle(std::exchange(other.FHandle, kNone)) {}

TFolderHandle& TFolderHandle::operator=(TFolderHandle&& other) noexcept {
  std::swap(FHandle, other.FHandle);
  return *this;
}

void TFolderHandle::Close() {
  if (FHandle != kNone) ::close(Descriptor(std::exchange(FHandle, kNone)));
}

TAccess TFolderHandle::OpenRoot(const std::string& path) {
  return Take(OpenFolder(AT_FDCWD, path.c_str()), FHandle);
}

TAccess TFolderHandle::OpenBelow(const TFolderHandle& parent, const std::string& path) {
  return Take(OpenFolder(Descriptor(parent.FHandle), path.c_str()), FHandle);
}

TAccess TFolderHandle::OpenAgain(const TFolderHandle& other) {
  return OpenBelow(other, ".");
}

TAccess TFolderHandle::Facts(TEntryFacts& facts) const {
  return Ask(Descriptor(FHandle), "", AT_EMPTY_PATH, facts);
}

// A bufferful of entries comes in the order of their inode numbers: that is about where their facts lie on
// the disk, whereas the system often lists by hash.
struct TFolderListing::TBatch {
  struct TPlaceInBuffer {
    uint64_t Number;  // inode
    size_t Offset;
  };

  [[nodiscard]] TAccess Fill(uint64_t& bytesRead);
  void SortEntries(size_t filled);

  std::unique_ptr<char[]> Buffer = std::make_unique_for_overwrite<char[]>(kListingBuffer);
  int Folder = kNone;
  std::vector<TPlaceInBuffer> Entries;
  size_t Next = 0;
  uint64_t Number = 0;  // of the entry handed out last
  uint8_t Type = DT_UNKNOWN;
};

TAccess TFolderListing::TBatch::Fill(uint64_t& bytesRead) {
  const long got = ::syscall(SYS_getdents64, Folder, Buffer.get(), kListingBuffer);
  if (got < 0) return errno == ENOENT ? TAccess::Gone : TAccess::Unreadable;
  SortEntries(static_cast<size_t>(got));
  bytesRead += static_cast<uint64_t>(got);
  return got == 0 ? TAccess::Gone : TAccess::Ok;
}

void TFolderListing::TBatch::SortEntries(size_t filled) {
  Entries.clear();
  Next = 0;
  TListedEntry entry;
  for (size_t at = 0; at < filled; at += entry.Length) {
    std::memcpy(&entry, Buffer.get() + at, kNameOffset);
    if (!IsSelfOrParent(Buffer.get() + at + kNameOffset)) Entries.push_back({entry.Number, at});
  }
  const auto byNumber = [](const TPlaceInBuffer& a, const TPlaceInBuffer& b) { return a.Number < b.Number; };
  if (!std::is_sorted(Entries.begin(), Entries.end(), byNumber))
    std::sort(Entries.begin(), Entries.end(), byNumber);
}

TFolderListing::TFolderListing() : FBatch(std::make_unique<TBatch>()) {}

TFolderListing::~TFolderListing() = default;

void TFolderListing::Start(const TFolderHandle& folder) {
  FBatch->Folder = Descriptor(folder.FHandle);
  FBatch->Entries.clear();
  FBatch->Next = 0;
}

TAccess TFolderListing::Next() {
  TBatch& batch = *FBatch;
  while (batch.Next == batch.Entries.size()) {
    if (const TAccess access = batch.Fill(FBytesRead); access != TAccess::Ok) return access;
  }
  batch.Number = batch.Entries[batch.Next].Number;
  const char* entry = batch.Buffer.get() + batch.Entries[batch.Next++].Offset;
  FName = entry + kNameOffset;
  batch.Type = static_cast<uint8_t>(entry[kTypeOffset]);
  return TAccess::Ok;
}

bool TFolderListing::Listed(TEntryFacts& facts) const {
  facts.Number = FBatch->Number;
  facts.IsFolder = FBatch->Type == DT_DIR;
  return FBatch->Type != DT_UNKNOWN;
}

// Of a folder what is on disk need not be asked for, the place is enough.
TAccess TFolderListing::Facts(TEntryFacts& facts) const {
  return Ask(FBatch->Folder, FName.data(), FBatch->Type == DT_DIR ? AT_STATX_DONT_SYNC : 0, facts);
}

void TFolderListing::CountLinks(TEntryFacts&) const {}

uint64_t TimesWaited() {
  struct rusage usage {};
  // Voluntary switches: a thread that only reads gives its processor up for nothing but the disk, or a lock.
  return ::getrusage(RUSAGE_THREAD, &usage) == 0 ? static_cast<uint64_t>(usage.ru_nvcsw) : 0;
}

// A quarter of what the process may have open at most: others in it need descriptors as well.
unsigned OpenFolderLimit() {
  struct rlimit limit {};
  if (::getrlimit(RLIMIT_NOFILE, &limit) != 0) return kMostOpenFolders / 8;
  return static_cast<unsigned>(std::min<rlim_t>(limit.rlim_cur / 4, kMostOpenFolders));
}

}  // namespace volindex
