#include "FakeVolindex.h"

#include "volindex/include/volindex.h"
#include "volindex/include/volindex_elevation.h"
#include "volindex/include/volindex_folders.h"
#include "volindex/include/volindex_usage.h"

#include <algorithm>

namespace {

TFakeVolindex Fake;
const std::vector<TFakeRecord>* Current = &Fake.Files;

QString TextOf(const char16_t* text) {
  return QString::fromUtf16(text);
}

void CopyText(const QString& text, char16_t* out) {
  std::copy_n(reinterpret_cast<const char16_t*>(text.utf16()), text.size() + 1, out);
}

}  // namespace

std::atomic<int> FakeElevation{0};
std::atomic<int> FakeStops{0};

TFakeVolindex& FakeVolindex() {
  return Fake;
}

void Tallyscope_SetNotifyHwnd(const void* window, uint32_t message) {
  Fake.Calls += u"notify %1 %2"_qs.arg(window != nullptr).arg(message);
}
int32_t Tallyscope_CheckFileSystem(const char16_t* path) {
  Fake.Calls += u"check "_qs + TextOf(path);
  return Fake.Accepts ? 1 : 0;
}
void Tallyscope_ScanLocalDrive(const char16_t* path) {
  Fake.Calls += u"scan "_qs + TextOf(path);
  if (Fake.DuringScan) Fake.DuringScan();
}
void Tallyscope_OpenRecord(int32_t kind) {
  Fake.Calls += u"open %1"_qs.arg(kind);
  Current = kind == TALLYSCOPE_FILES ? &Fake.Files : &Fake.Folders;
}
uint32_t Tallyscope_GetRecordCount(uint32_t* files, uint32_t* folders) {
  Fake.Calls += files == nullptr ? u"count"_qs : u"totals"_qs;
  if (files != nullptr) *files = static_cast<uint32_t>(Fake.Files.size());
  if (folders != nullptr) *folders = static_cast<uint32_t>(Fake.Folders.size());
  return static_cast<uint32_t>(Current->size());
}
uint8_t Tallyscope_GetRecordByIndex(int32_t index, char16_t* name, uint32_t nameUnits, char16_t* path,
                                    uint32_t pathUnits, uint32_t* sizeHigh, uint32_t* sizeLow,
                                    uint32_t option) {
  const TFakeRecord& record = Current->at(static_cast<size_t>(index));
  if (record.Fails || option != 4) return 0;
  if (record.Name.size() >= nameUnits || record.Path.size() >= pathUnits) return 0;
  CopyText(record.Name, name);
  CopyText(record.Path, path);
  *sizeHigh = static_cast<uint32_t>(record.Size >> 32);
  *sizeLow = static_cast<uint32_t>(record.Size);
  return 1;
}
void Tallyscope_GetFolderSize(const char16_t*, uint32_t* sizeHigh, uint32_t* sizeLow) {
  *sizeHigh = 1;
  *sizeLow = 2;
}
uint8_t Tallyscope_GetUsage(TTallyscopeUsage* usage) {
  *usage = {7, 9, 0, static_cast<uint32_t>(Fake.Unreadable.size())};
  return 1;
}
uint8_t Tallyscope_GetUnreadable(uint32_t index, char16_t* path, uint32_t) {
  CopyText(Fake.Unreadable.at(index), path);
  return 1;
}
void Tallyscope_SetElevation(int32_t ask) {
  FakeElevation = ask;
}
void Tallyscope_KeepFolderKinds(int32_t) {}
uint32_t Tallyscope_GetFolderEnd(void) {
  return 0;
}
uint8_t Tallyscope_GetFolder(uint32_t, TTallyscopeFolder*) {
  return 0;
}
uint8_t Tallyscope_GetFolderName(uint32_t, char16_t*, uint32_t) {
  return 0;
}
int32_t Tallyscope_GetKindOfName(const char16_t*, uint32_t) {
  return TALLYSCOPE_OTHER;
}
void Tallyscope_Stop(void) {
  ++FakeStops;
}
void Tallyscope_Free(void) {
  Fake.Calls += u"free"_qs;
}
