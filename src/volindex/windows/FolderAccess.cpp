#include "volindex/system/FolderAccess.h"

#include "volindex/index/Wtf8.h"
#include "volindex/readers/DiskBytes.h"
#include "volindex/readers/ntfs/LinkLength.h"
#include "volindex/system/Utf16.h"
#include "volindex/windows/System.h"

#include <windows.h>
#include <winternl.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstring>
#include <span>
#include <thread>

extern "C" NTSTATUS NTAPI NtQueryDirectoryFile(HANDLE file, HANDLE event, PIO_APC_ROUTINE routine,
                                               PVOID context, PIO_STATUS_BLOCK status, PVOID buffer,
                                               ULONG length, FILE_INFORMATION_CLASS what, BOOLEAN one,
                                               PUNICODE_STRING pattern, BOOLEAN again);

namespace volindex {

namespace {

using TClock = std::chrono::steady_clock;

constexpr ULONG kListingBuffer = 64 * 1024;  // more is not taken by all network file systems
constexpr unsigned kMostOpenFolders = 256;
constexpr unsigned kOpenAttempts = 20;
constexpr std::chrono::milliseconds kOpenPause{2};
constexpr std::chrono::microseconds kWait{500};  // what takes longer has waited for the disk
constexpr intptr_t kNone = -1;
constexpr uint64_t kNoNumber = ~uint64_t{0};  // the file id is too long for the listing
constexpr ACCESS_MASK kFolderAccess = FILE_LIST_DIRECTORY | FILE_READ_ATTRIBUTES | SYNCHRONIZE;
constexpr ULONG kShare = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// The two ways of listing that are used. The headers for programs name neither the second one's number nor
// its entry, which is the first one's with the file id before the name.
constexpr auto kFullListing = static_cast<FILE_INFORMATION_CLASS>(2);
constexpr auto kListingWithIds = static_cast<FILE_INFORMATION_CLASS>(38);

// [MS-FSCC], FileFullDirectoryInformation and FileIdFullDirectoryInformation:
//
//    0 u32  to the next entry, 0 for none      56 u32  attributes
//    4 u32  no meaning here                    60 u32  length of the name in bytes
//    8 4x8  times                              64 u32  length of extended attributes, or a reparse tag
//   40 u64  length of the file                 68      the name, if there is no id
//   48 u64  allocated                          72 u64  file id; at 80 the name
struct TEntryWithId {
  ULONG NextEntryOffset;
  ULONG FileIndex;
  LARGE_INTEGER Times[4];
  LARGE_INTEGER EndOfFile;
  LARGE_INTEGER AllocationSize;
  ULONG FileAttributes;
  ULONG FileNameLength;
  ULONG EaSize;
  LARGE_INTEGER FileId;
  WCHAR FileName[1];
};
static_assert(offsetof(TEntryWithId, EaSize) == offsetof(FILE_FULL_DIR_INFO, EaSize));
static_assert(offsetof(TEntryWithId, FileId) == 72 && offsetof(TEntryWithId, FileName) == 80);

constexpr auto Status(uint32_t value) {
  return static_cast<NTSTATUS>(value);
}

thread_local uint64_t timesWaited = 0;

// Calls the system and notes whether that has taken its time.
template <class TCall>
NTSTATUS Timed(TCall call) {
  const TClock::time_point start = TClock::now();
  const NTSTATUS status = call();
  timesWaited += TClock::now() - start > kWait ? 1 : 0;
  return status;
}

TAccess AccessOf(NTSTATUS status) {
  if (status >= 0) return TAccess::Ok;
  static constexpr NTSTATUS kGone[] = {
      Status(0x80000006),  // no more files: the end of a listing
      Status(0xC000000F),  // no such file: nothing listed at all
      Status(0xC0000034),  // object name not found
      Status(0xC000003A),  // object path not found
      Status(0xC0000056),  // delete pending
      Status(0xC0000103),  // not a folder
      Status(0xC0000123),  // file deleted
  };
  for (const NTSTATUS gone : kGone)
    if (status == gone) return TAccess::Gone;
  return TAccess::Unreadable;
}

bool OutOfHandles(NTSTATUS status) {
  return status == Status(0xC000009A) || status == Status(0xC000011F);  // resources, opened files
}

bool HasNoSuchListing(NTSTATUS status) {
  static constexpr NTSTATUS kUnknownListing[] = {
      Status(0xC0000002),  // the call is not there
      Status(0xC0000003),  // information class
      Status(0xC000000D),  // parameter
      Status(0xC00000BB),  // not supported
  };
  return std::find(std::begin(kUnknownListing), std::end(kUnknownListing), status) !=
         std::end(kUnknownListing);
}

HANDLE Handle(intptr_t handle) {
  return reinterpret_cast<HANDLE>(handle);
}

// Opens what is called `name` in the open folder, or the folder again for an empty name; a reparse point is
// opened itself. The name is taken as it is, with its case and with what paths may not have.
NTSTATUS OpenIn(HANDLE folder, std::u16string_view name, ACCESS_MASK access, ULONG options,
                intptr_t& opened) {
  const auto bytes = static_cast<USHORT>(name.size() * sizeof(char16_t));
  UNICODE_STRING text{bytes, bytes, reinterpret_cast<PWSTR>(const_cast<char16_t*>(name.data()))};
  OBJECT_ATTRIBUTES what{};
  InitializeObjectAttributes(&what, &text, 0, folder, nullptr);
  IO_STATUS_BLOCK ignored{};
  HANDLE handle = nullptr;
  const NTSTATUS status =
      Timed([&] { return ::NtOpenFile(&handle, access, &what, &ignored, kShare, options); });
  if (status >= 0) opened = reinterpret_cast<intptr_t>(handle);
  return status;
}

constexpr ULONG kOpenOptions =
    FILE_SYNCHRONOUS_IO_NONALERT | FILE_OPEN_FOR_BACKUP_INTENT | FILE_OPEN_REPARSE_POINT;

NTSTATUS OpenFolder(HANDLE parent, std::u16string_view name, intptr_t& opened) {
  const auto open = [&] {
    return OpenIn(parent, name, kFolderAccess, kOpenOptions | FILE_DIRECTORY_FILE, opened);
  };
  NTSTATUS status = open();
  for (unsigned attempt = 1; OutOfHandles(status) && attempt < kOpenAttempts; ++attempt) {
    std::this_thread::sleep_for(kOpenPause);
    status = open();
  }
  return status;
}

template <class T>
bool AskHandle(HANDLE handle, FILE_INFO_BY_HANDLE_CLASS what, T& answer) {
  return ::GetFileInformationByHandleEx(handle, what, &answer, sizeof answer) != FALSE;
}

}  // namespace

const size_t kPathPiece = 1;  // a component that became a junction meanwhile is opened itself, and is empty

TFolderHandle::TFolderHandle(TFolderHandle&& other) noexcept : FHandle(std::exchange(other.FHandle, kNone)) {}

TFolderHandle& TFolderHandle::operator=(TFolderHandle&& other) noexcept {
  std::swap(FHandle, other.FHandle);
  return *this;
}

void TFolderHandle::Close() {
  if (FHandle != kNone) ::CloseHandle(Handle(std::exchange(FHandle, kNone)));
}

TAccess TFolderHandle::OpenRoot(const std::string& path) {
  TSystemHandle opened =
      OpenPath(path, kFolderAccess, FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT);
  if (!opened) return TAccess::Gone;
  Close();
  FHandle = reinterpret_cast<intptr_t>(opened.Release());
  return TAccess::Ok;
}

// A name with the delimiter in it, which another system may have made, would lead elsewhere.
TAccess TFolderHandle::OpenBelow(const TFolderHandle& parent, const std::string& path) {
  if (path.find('\\') != std::string::npos) return TAccess::Unreadable;
  intptr_t opened = kNone;
  const NTSTATUS status = OpenFolder(Handle(parent.FHandle), ToUtf16(path), opened);
  if (status < 0) return AccessOf(status);
  Close();
  FHandle = opened;
  return TAccess::Ok;
}

TAccess TFolderHandle::OpenAgain(const TFolderHandle& other) {
  return OpenBelow(other, {});
}

TAccess TFolderHandle::Facts(TEntryFacts& facts) const {
  FILE_STANDARD_INFO standard{};
  if (!AskHandle(Handle(FHandle), FileStandardInfo, standard)) return TAccess::Gone;
  facts.IsFolder = standard.Directory != FALSE;
  return TAccess::Ok;
}

// The two forms of entry that are asked for begin alike. The first, which not every file system has, tells
// the file ids too.
struct TFolderListing::TBatch {
  using THead = FILE_FULL_DIR_INFO;
  using TWithId = TEntryWithId;

  [[nodiscard]] NTSTATUS Query(FILE_INFORMATION_CLASS what, uint64_t& bytesRead);
  [[nodiscard]] TAccess Fill(uint64_t& bytesRead);
  // Goes to the next entry of the buffer; false at its end.
  [[nodiscard]] bool Advance();
  [[nodiscard]] std::u16string_view NameText() const;
  [[nodiscard]] size_t NameOffset() const {
    return HasNumbers ? offsetof(TWithId, FileName) : offsetof(THead, FileName);
  }

  alignas(16) std::byte Buffer[kListingBuffer];
  intptr_t Folder = kNone;
  bool AtStart = true;
  bool HasNumbers = true;
  // The buffer's bytes come from whatever serves the volume, a network's computer too: an entry is used only
  // as far as it lies within Filled.
  size_t Filled = 0;  // bytes of the buffer that the system has answered with
  size_t Next = 0;    // where the next entry lies; beyond the buffer if there is none
  THead Head{};       // of the entry
  size_t At = 0;      // where the entry lies
  std::string Name;
};

NTSTATUS TFolderListing::TBatch::Query(FILE_INFORMATION_CLASS what, uint64_t& bytesRead) {
  IO_STATUS_BLOCK status{};
  const NTSTATUS result = Timed([&] {
    return ::NtQueryDirectoryFile(Handle(Folder), nullptr, nullptr, nullptr, &status, Buffer, sizeof Buffer,
                                  what, FALSE, nullptr, AtStart ? TRUE : FALSE);
  });
  if (result >= 0) {
    Filled = std::min<size_t>(status.Information, sizeof Buffer);
    bytesRead += Filled;
  }
  return result;
}

TAccess TFolderListing::TBatch::Fill(uint64_t& bytesRead) {
  NTSTATUS status = Query(HasNumbers ? kListingWithIds : kFullListing, bytesRead);
  if (AtStart && HasNoSuchListing(status)) {
    HasNumbers = false;
    status = Query(kFullListing, bytesRead);
  }
  AtStart = false;
  if (status >= 0) Next = 0;
  return AccessOf(status);
}

// What does not lie wholly in the answer is the end of it.
bool TFolderListing::TBatch::Advance() {
  if (Next > Filled || Filled - Next < NameOffset()) return false;
  At = Next;
  std::memcpy(&Head, Buffer + At, offsetof(THead, FileName));
  if (Head.FileNameLength > Filled - At - NameOffset()) return false;
  Next = Head.NextEntryOffset == 0 ? kListingBuffer + 1 : At + Head.NextEntryOffset;
  return true;
}

std::u16string_view TFolderListing::TBatch::NameText() const {
  return {reinterpret_cast<const char16_t*>(Buffer + At + NameOffset()),
          Head.FileNameLength / sizeof(char16_t)};
}

TFolderListing::TFolderListing() : FBatch(std::make_unique<TBatch>()) {}

TFolderListing::~TFolderListing() = default;

void TFolderListing::Start(const TFolderHandle& folder) {
  FBatch->Folder = folder.FHandle;
  FBatch->AtStart = true;
  FBatch->Filled = 0;
  FBatch->Next = kListingBuffer + 1;
}

// A name with '/', which another system may have made, is left out as it is by all readers.
TAccess TFolderListing::Next() {
  TBatch& batch = *FBatch;
  for (;;) {
    while (!batch.Advance()) {
      if (const TAccess access = batch.Fill(FBytesRead); access != TAccess::Ok) return access;
    }
    const std::u16string_view name = batch.NameText();
    if (name == u"." || name == u".." || name.find(u'/') != name.npos || name.empty()) continue;
    batch.Name.clear();
    AppendWtf8(std::as_bytes(std::span(name)), batch.Name);
    FName = batch.Name;
    return TAccess::Ok;
  }
}

// A reparse point is told with its tag in the place of the extended attributes' size. Where files have no
// numbers they have no second names either.
TAccess TFolderListing::Facts(TEntryFacts& facts) const {
  const TBatch& batch = *FBatch;
  const bool folder = (batch.Head.FileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  const bool reparse = (batch.Head.FileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
  facts = {};
  facts.IsFolder = folder && (!reparse || ntfs::TagHoldsFiles(batch.Head.EaSize));
  facts.Size = folder ? 0 : static_cast<uint64_t>(batch.Head.EndOfFile.QuadPart);
  facts.Allocated = folder ? 0 : static_cast<uint64_t>(batch.Head.AllocationSize.QuadPart);
  if (batch.HasNumbers)
    facts.Number = Load<uint64_t>(std::span(batch.Buffer), batch.At + offsetof(TBatch::TWithId, FileId));
  facts.Links = folder || facts.Number == 0 ? 1 : 0;
  if (facts.Number == kNoNumber) CountLinks(facts);
  if (facts.Number == kNoNumber) facts.Links = 1;  // no telling it from others, so it counts by itself
  return TAccess::Ok;
}

bool TFolderListing::Listed(TEntryFacts& facts) const {
  return Facts(facts) == TAccess::Ok;
}

void TFolderListing::CountLinks(TEntryFacts& facts) const {
  if (facts.Links != 0) return;
  TFolderHandle file;
  if (OpenIn(Handle(FBatch->Folder), FBatch->NameText(), FILE_READ_ATTRIBUTES | SYNCHRONIZE, kOpenOptions,
             file.FHandle) < 0)
    return;
  FILE_STANDARD_INFO standard{};
  if (!AskHandle(Handle(file.FHandle), FileStandardInfo, standard)) return;
  facts.Links = standard.NumberOfLinks;
  FILE_ID_INFO id{};
  if (facts.Number != kNoNumber || !AskHandle(Handle(file.FHandle), FileIdInfo, id)) return;
  // The 128 bits of a long id in 64: two files fall together once in 2^64 pairs, if their ids are not made
  // for it.
  const std::span<const std::byte> halves = std::as_bytes(std::span(&id.FileId, 1));
  facts.Number = Load<uint64_t>(halves, 0) + Load<uint64_t>(halves, 8) * 0x9E3779B97F4A7C15;
}

uint64_t TimesWaited() {
  return timesWaited;
}

unsigned OpenFolderLimit() {
  return kMostOpenFolders;
}

}  // namespace volindex
