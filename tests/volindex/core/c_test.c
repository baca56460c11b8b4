/* The library as a C program sees it: header, names, the order of calls and what a caller may get wrong. */
#include "volindex/include/volindex.h"

#include "volindex/core/c_system.h"

#include <stdio.h>
#include <string.h>

#define CAPACITY 260
#define MESSAGE 8048

static int failures = 0;

#define CHECK(condition)                                              \
  do {                                                                \
    if (!(condition)) {                                               \
      fprintf(stderr, "%s:%d: %s\n", __FILE__, __LINE__, #condition); \
      ++failures;                                                     \
    }                                                                 \
  } while (0)

typedef struct {
  int Posts;
  intptr_t Last;
  int Wrong;
  int StopAtOnce;
} TReceiver;

static void Receive(void* self, unsigned message, uintptr_t wparam, intptr_t lparam) {
  TReceiver* receiver = self;
  if (message != MESSAGE || wparam != 0 || lparam <= receiver->Last || lparam < 1 || lparam > 99)
    ++receiver->Wrong;
  receiver->Last = lparam;
  ++receiver->Posts;
  if (receiver->StopAtOnce) Tallyscope_Stop();
}

typedef struct {
  char16_t Name[CAPACITY];
  char16_t Path[CAPACITY];
  uint64_t Size;
} TRecord;

static uint8_t GetRecord(int32_t index, TRecord* record) {
  uint32_t high = 0;
  uint32_t low = 0;
  const uint8_t delivered =
      Tallyscope_GetRecordByIndex(index, record->Name, CAPACITY, record->Path, CAPACITY, &high, &low, 4);
  record->Size = ((uint64_t)high << 32) | low;
  return delivered;
}

static void Widen(const char* text, char16_t* wide) {
  do
    *wide++ = (unsigned char)*text;
  while (*text++ != '\0');
}

static int SameUnits(const char16_t* a, const char16_t* b) {
  while (*a != 0 && *a == *b)
    ++a, ++b;
  return *a == *b;
}

static int Same(const char16_t* wide, const char* text) {
  char16_t expected[CAPACITY * 2];
  size_t length = strlen(text);
  Widen(text, expected);
  return memcmp(wide, expected, (length + 1) * sizeof(char16_t)) == 0;
}

/* Whether the text is the root's path and then `rest`, which is written with '/'. */
static int SamePath(const char16_t* wide, const char* root, const char* rest) {
  char expected[CAPACITY * 2];
  snprintf(expected, sizeof expected, "%s%s", root, rest);
  for (char* c = expected + strlen(root); *c != '\0'; ++c)
    if (*c == '/') *c = Delimiter();
  return Same(wide, expected);
}

static uint64_t FolderSize(const char* path) {
  char16_t wide[CAPACITY * 2];
  uint32_t high = 1;
  uint32_t low = 1;
  Widen(path, wide);
  Tallyscope_GetFolderSize(wide, &high, &low);
  return ((uint64_t)high << 32) | low;
}

/* 4 files and 2 folders, a file beyond 4 GiB among them. */
static void MakeTree(void) {
  AddFolder("sub");
  AddFolder("sub/deep");
  AddFile("sub/large", (uint64_t)5 << 30);
  AddFile("sub/deep/b", 10);
  AddFile("sub/deep/a", 10);
  AddOddFile(20);
}

static void TestRecords(const char* root, const char16_t* path) {
  TReceiver receiver = {0, 0, 0, 0};
  const TTallyscopeNotify notify = {&receiver, Receive};
  TRecord record;
  uint32_t files = 0;
  uint32_t folders = 0;

  Tallyscope_Stop(); /* from before the scan: no effect */
  Tallyscope_SetNotifyHwnd(&notify, MESSAGE);
  CHECK(Tallyscope_CheckFileSystem(path) != 0);
  Tallyscope_ScanLocalDrive(path);
  CHECK(receiver.Posts > 0 && receiver.Wrong == 0);

  Tallyscope_OpenRecord(TALLYSCOPE_FILES);
  CHECK(Tallyscope_GetRecordCount(NULL, NULL) == 4);
  CHECK(GetRecord(0, &record) && record.Size == (uint64_t)5 << 30 && Same(record.Name, "large"));
  CHECK(SamePath(record.Path, root, "/sub/"));
  CHECK(GetRecord(1, &record) && record.Size == 20 && SameUnits(record.Name, OddName()));
  CHECK(GetRecord(2, &record) && Same(record.Name, "a"));
  CHECK(GetRecord(3, &record) && Same(record.Name, "b"));
  CHECK(!GetRecord(4, &record) && !GetRecord(-1, &record));

  Tallyscope_OpenRecord(TALLYSCOPE_FOLDERS);
  CHECK(Tallyscope_GetRecordCount(NULL, NULL) == 2);
  CHECK(GetRecord(0, &record) && Same(record.Name, "sub") && record.Size == ((uint64_t)5 << 30) + 20);
  CHECK(SamePath(record.Path, root, "/"));
  CHECK(GetRecord(1, &record) && Same(record.Name, "deep") && record.Size == 20);

  Tallyscope_GetRecordCount(&files, &folders);
  CHECK(files == 4 && folders == 2);
  Tallyscope_OpenRecord(1);
  CHECK(Tallyscope_GetRecordCount(NULL, NULL) == 0 && !GetRecord(0, &record));
  Tallyscope_SetNotifyHwnd(NULL, 0);
}

static void TestFolderSizes(const char* root) {
  char path[CAPACITY * 2];
  CHECK(FolderSize(root) == ((uint64_t)5 << 30) + 40);
  snprintf(path, sizeof path, "%s%csub%cdeep%c", root, Delimiter(), Delimiter(), Delimiter());
  CHECK(FolderSize(path) == 20);
  snprintf(path, sizeof path, "%s%csub%cnone", root, Delimiter(), Delimiter());
  CHECK(FolderSize(path) == 0);
  CHECK(FolderSize("/") == 0);
}

static void TestFree(const char* root) {
  uint32_t files = 1;
  uint32_t folders = 1;
  TRecord record;
  Tallyscope_Free();
  CHECK(Tallyscope_GetRecordCount(&files, &folders) == 0 && files == 0 && folders == 0);
  CHECK(!GetRecord(0, &record) && FolderSize(root) == 0);
  Tallyscope_Free();
}

/* 259 units and the NUL fit, one more is answered with false and leaves the buffers alone. Deeper folders
 * make the path longer than that, which leaves out the deep file and not the one at the top. */
static void TestLongPaths(const char* root, const char16_t* path) {
  char relative[CAPACITY * 3] = "";
  char name[CAPACITY];
  TRecord record;
  size_t room = CAPACITY - 1 - strlen(root) - 1;
  memset(name, 'n', sizeof name);
  name[room / 2 - 1] = '\0';
  strcat(strcat(relative, name), "/");
  AddFolder(relative);
  room -= strlen(relative);
  memset(name, 'm', sizeof name);
  name[room - 1] = '\0';
  strcat(relative, name);
  AddFolder(relative); /* with its delimiter just fits */
  strcat(relative, "/x");
  AddFolder(relative);
  strcat(relative, "/huge");
  AddFile(relative, (uint64_t)6 << 30);

  Tallyscope_ScanLocalDrive(path);
  memset(&record, 0, sizeof record);
  CHECK(!GetRecord(0, &record) && record.Name[0] == 0 && record.Path[0] == 0 && record.Size == 0);
  CHECK(GetRecord(1, &record) && Same(record.Name, "large"));
  Tallyscope_OpenRecord(TALLYSCOPE_FOLDERS);
  CHECK(GetRecord(2, &record) && Same(record.Name, "x"));
  CHECK(record.Path[CAPACITY - 2] == (char16_t)Delimiter() && record.Path[CAPACITY - 1] == 0);
  Tallyscope_Free();
}

static void TestStop(const char16_t* path) {
  TReceiver receiver = {0, 0, 0, 1};
  const TTallyscopeNotify notify = {&receiver, Receive};
  uint32_t files = 1;
  uint32_t folders = 1;
  Tallyscope_SetNotifyHwnd(&notify, MESSAGE);
  Tallyscope_ScanLocalDrive(path);
  Tallyscope_SetNotifyHwnd(NULL, 0);
  CHECK(receiver.Posts > 0);
  Tallyscope_OpenRecord(TALLYSCOPE_FOLDERS);
  CHECK(Tallyscope_GetRecordCount(NULL, NULL) == 0);
  Tallyscope_GetRecordCount(&files, &folders);
  CHECK(files == 0 && folders == 0);
  Tallyscope_Free();
}

static void TestDeclined(void) {
  CHECK(Tallyscope_CheckFileSystem(NoDisk()) == 0);
  CHECK(Tallyscope_CheckFileSystem(u"/no such folder/") == 0);
  CHECK(Tallyscope_CheckFileSystem(u"") == 0);
  CHECK(Tallyscope_CheckFileSystem(NULL) == 0);
  Tallyscope_ScanLocalDrive(u"/no such folder/");
  CHECK(Tallyscope_GetRecordCount(NULL, NULL) == 0);
}

int main(void) {
  char root[64] = "";
  char16_t path[CAPACITY];
  AddRoot(root, sizeof root);
  Widen(root, path);
  MakeTree();
  TestRecords(root, path);
  TestFolderSizes(root);
  TestFree(root);
  TestLongPaths(root, path);
  TestStop(path);
  TestDeclined();
  RemoveRoot();
  return failures == 0 ? 0 : 1;
}
