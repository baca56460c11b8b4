// The functions of the library, over the one scan that it holds. Nothing is thrown across this border:
// who runs out of memory gets an empty scan.
#include "volindex/include/volindex.h"
#include "volindex/include/volindex_elevation.h"
#include "volindex/include/volindex_folders.h"
#include "volindex/include/volindex_usage.h"

#include "volindex/index/ProgressPost.h"
#include "volindex/index/VolumeScan.h"
#include "volindex/system/Elevation.h"
#include "volindex/system/Utf16.h"

#include <algorithm>
#include <atomic>
#include <limits>
#include <new>
#include <optional>
#include <string>
#include <string_view>

namespace {

using volindex::TVolumeIndex;

constexpr char kDelimiter = '/';  // inside, on every system
// A unit of UTF-16 is made of at most three bytes; a code point of four takes two units.
constexpr size_t kMostBytesPerUnit = 3;

// Written by the thread that makes the calls, but for the two flags and what Progress guards itself. Calls
// that come one after the other need no lock here; Stop is the only one that may come at any time, with the
// two that set how to scan.
struct TSession {
  std::atomic<bool> Stop{false};
  std::atomic<bool> KeepKinds{false};
  volindex::TProgressPost Progress;
  std::string Root;  // the scanned path as it was given, with a delimiter at the end
  TVolumeIndex Index;
  int32_t Kind = TALLYSCOPE_FILES;
};

TSession& Session() {
  static TSession session;
  return session;
}

struct TRecord {
  std::string_view Name;
  volindex::TFolderId Folder = volindex::kRootFolder;
  uint64_t Size = 0;
};

// Calls `work`, which may run out of memory or threads; false when it did.
template <typename TWork>
bool Guarded(TWork work) {
  try {
    work();
    return true;
  } catch (...) {
    return false;
  }
}

std::string WithDelimiter(std::string path) {
  if (!path.ends_with(kDelimiter)) path += kDelimiter;
  return path;
}

size_t RecordCount(const TSession& session) {
  if (session.Kind == TALLYSCOPE_FILES) return session.Index.TopFiles().size();
  return session.Kind == TALLYSCOPE_FOLDERS ? session.Index.TopFolders().size() : 0;
}

TRecord RecordAt(const TSession& session, size_t i) {
  const TVolumeIndex& index = session.Index;
  if (session.Kind == TALLYSCOPE_FILES) {
    const volindex::TFileRecord& file = index.TopFiles()[i];
    return {file.Name, file.Folder, file.Size};
  }
  const volindex::TFolderId folder = index.TopFolders()[i];
  return {index.FolderName(folder), index.FolderParent(folder), index.FolderTotal(folder)};
}

uint32_t Clamped(uint64_t count) {
  return static_cast<uint32_t>(std::min<uint64_t>(count, std::numeric_limits<uint32_t>::max()));
}

void PutSize(uint64_t size, uint32_t* high, uint32_t* low) {
  if (high != nullptr) *high = static_cast<uint32_t>(size >> 32);
  if (low != nullptr) *low = static_cast<uint32_t>(size);
}

// A folder's path of this many bytes cannot fit, so no more of it is put together.
bool MakePath(const TSession& session, volindex::TFolderId folder, uint32_t capacity, std::u16string& path) {
  std::string bytes;
  if (!session.Index.FolderPathWithin(folder, kMostBytesPerUnit * capacity, bytes)) return false;
  path = volindex::ToUtf16(session.Root + bytes);
  return path.size() < capacity;
}

void PutText(const std::u16string& text, char16_t* target) {
  std::copy(text.begin(), text.end(), target);
  target[text.size()] = u'\0';
}

void Scan(TSession& session, const char16_t* path) {
  const std::string bytes = volindex::ToBytes(path);
  session.Root = WithDelimiter(bytes);
  const auto post = [&session](int percent) { session.Progress.Post(percent); };
  session.Index = volindex::ScanVolume(bytes, {session.Stop, post, session.KeepKinds});
}

uint64_t TotalOf(const TSession& session, const char16_t* path) {
  const std::string bytes = WithDelimiter(volindex::ToBytes(path));
  if (session.Root.empty() || !bytes.starts_with(session.Root)) return 0;
  const auto folder = session.Index.FindFolder(std::string_view(bytes).substr(session.Root.size()));
  return folder ? session.Index.FolderTotal(*folder) : 0;
}

bool HasFolder(uint32_t number) {
  return number < Tallyscope_GetFolderEnd() && Session().Index.HasFolder(number);
}

static_assert(volindex::kKinds == TALLYSCOPE_KINDS);

}  // namespace

extern "C" {

void Tallyscope_SetNotifyHwnd(const void* window, uint32_t message) {
  Session().Progress.SetTarget(static_cast<const TTallyscopeNotify*>(window), message);
}

int32_t Tallyscope_CheckFileSystem(const char16_t* path) {
  bool can = false;
  return path != nullptr && Guarded([&] { can = volindex::CanScan(volindex::ToBytes(path)); }) && can ? 1 : 0;
}

void Tallyscope_ScanLocalDrive(const char16_t* path) {
  TSession& session = Session();
  session.Stop = false;
  Tallyscope_Free();
  session.Progress.Restart();
  if (path == nullptr || !Guarded([&] { Scan(session, path); })) Tallyscope_Free();
}

void Tallyscope_OpenRecord(int32_t kind) {
  Session().Kind = kind;
}

uint32_t Tallyscope_GetRecordCount(uint32_t* files, uint32_t* folders) {
  const TSession& session = Session();
  if (files != nullptr) *files = Clamped(session.Index.FileCount());
  if (folders != nullptr) *folders = Clamped(session.Index.FolderCount());
  return Clamped(RecordCount(session));
}

uint8_t Tallyscope_GetRecordByIndex(int32_t index, char16_t* name, uint32_t nameCapacity, char16_t* path,
                                    uint32_t pathCapacity, uint32_t* sizeHigh, uint32_t* sizeLow, uint32_t) {
  const TSession& session = Session();
  if (index < 0 || static_cast<size_t>(index) >= RecordCount(session) || name == nullptr || path == nullptr)
    return 0;
  const TRecord record = RecordAt(session, static_cast<size_t>(index));
  std::u16string nameText;
  std::u16string pathText;
  bool fits = false;
  const bool made = Guarded([&] {
    nameText = volindex::ToUtf16(record.Name);
    fits = nameText.size() < nameCapacity && MakePath(session, record.Folder, pathCapacity, pathText);
  });
  if (!made || !fits) return 0;
  PutText(nameText, name);
  PutText(pathText, path);
  PutSize(record.Size, sizeHigh, sizeLow);
  return 1;
}

void Tallyscope_GetFolderSize(const char16_t* path, uint32_t* sizeHigh, uint32_t* sizeLow) {
  uint64_t size = 0;
  if (path != nullptr && !Guarded([&] { size = TotalOf(Session(), path); })) size = 0;
  PutSize(size, sizeHigh, sizeLow);
}

uint8_t Tallyscope_GetUsage(TTallyscopeUsage* usage) {
  const TVolumeIndex& index = Session().Index;
  if (usage == nullptr || index.FolderEnd() == 0) return 0;
  const std::optional<uint64_t> used = index.VolumeUsed();
  *usage = {index.FolderAllocated(volindex::kRootFolder), used.value_or(0), used.has_value() ? 1U : 0U,
            Clamped(index.Unreadable().size())};
  return 1;
}

uint8_t Tallyscope_GetUnreadable(uint32_t index, char16_t* path, uint32_t capacity) {
  const TSession& session = Session();
  if (path == nullptr || index >= session.Index.Unreadable().size()) return 0;
  std::u16string text;
  bool fits = false;
  if (!Guarded([&] { fits = MakePath(session, session.Index.Unreadable()[index], capacity, text); }) || !fits)
    return 0;
  PutText(text, path);
  return 1;
}

void Tallyscope_Stop(void) {
  Session().Stop = true;
}

void Tallyscope_SetElevation(int32_t ask) {
  volindex::SetElevation(ask);
}

void Tallyscope_KeepFolderKinds(int32_t keep) {
  Session().KeepKinds = keep != 0;
}

uint32_t Tallyscope_GetFolderEnd(void) {
  const TVolumeIndex& index = Session().Index;
  return index.KeepsKinds() ? index.FolderEnd() : 0;
}

uint8_t Tallyscope_GetFolder(uint32_t number, TTallyscopeFolder* folder) {
  const TVolumeIndex& index = Session().Index;
  if (!HasFolder(number) || folder == nullptr) return 0;
  folder->Parent = index.FolderParent(number);
  folder->Total = index.FolderTotal(number);
  const volindex::TKindBytes own = index.FolderKinds(number);
  std::copy(own.begin(), own.end(), folder->Own);
  return 1;
}

uint8_t Tallyscope_GetFolderName(uint32_t number, char16_t* name, uint32_t capacity) {
  std::u16string text;
  if (!HasFolder(number) || name == nullptr) return 0;
  if (!Guarded([&] { text = volindex::ToUtf16(Session().Index.FolderName(number)); })) return 0;
  if (text.size() >= capacity) return 0;
  PutText(text, name);
  return 1;
}

int32_t Tallyscope_GetKindOfName(const char16_t* name, uint32_t units) {
  return static_cast<int32_t>(volindex::KindOf(std::u16string_view(name, name != nullptr ? units : 0)));
}

void Tallyscope_Free(void) {
  TSession& session = Session();
  session.Index = TVolumeIndex();
  session.Root.clear();
  session.Kind = TALLYSCOPE_FILES;
}
}
