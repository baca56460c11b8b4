// The shell's own calls, with all that they are given. They are led through here by the linker, which wraps
// the pointers through which the system's libraries are called.
#include "platform/FileActions.h"
#include "platform/Shell.h"

#include "fixtures/SystemTest.h"
#include "platform/KnownFolders.h"

#include <windows.h>

#include <shellapi.h>
#include <string>

namespace {

// What the last call was given, as one text, and what it is to answer.
std::string gGiven;
int gAnswer = 0;
bool gAborts = false;

std::string Text(const wchar_t* text) {
  return text == nullptr ? std::string("none") : QString::fromWCharArray(text).toStdString();
}

// The text up to two terminators in a row, each told as "|".
std::string TextOfList(const wchar_t* list) {
  std::string text;
  for (; *list != 0; list += std::wcslen(list) + 1)
    text += Text(list) + '|';
  return text + '|';
}

int WINAPI FileOperation(SHFILEOPSTRUCTW* given) {
  gGiven = "operation " + std::to_string(given->wFunc) + " from " + TextOfList(given->pFrom) + " to " +
           Text(given->pTo) + " flags " + std::to_string(given->fFlags) + " title " +
           Text(given->lpszProgressTitle) + (given->hwnd == nullptr ? "" : " owner");
  given->fAnyOperationsAborted = gAborts ? TRUE : FALSE;
  return gAnswer;
}

BOOL WINAPI MoveLater(const wchar_t* from, const wchar_t* to, DWORD flags) {
  gGiven = Text(from) + " to " + Text(to) + " flags " + std::to_string(flags);
  return gAnswer;
}

BOOL WINAPI ExecuteEx(SHELLEXECUTEINFOW* given) {
  gGiven = "mask " + std::to_string(given->fMask) + " verb " + Text(given->lpVerb) + " file " +
           Text(given->lpFile) + " parameters " + Text(given->lpParameters) + " directory " +
           Text(given->lpDirectory) + " show " + std::to_string(given->nShow) +
           (given->hwnd == nullptr && given->cbSize == sizeof *given ? "" : " owner");
  given->hProcess = nullptr;
  return TRUE;
}

HINSTANCE WINAPI Execute(HWND owner, const wchar_t* verb, const wchar_t* file, const wchar_t* parameters,
                         const wchar_t* directory, INT show) {
  gGiven = "verb " + Text(verb) + " file " + Text(file) + " parameters " + Text(parameters) + " directory " +
           Text(directory) + " show " + std::to_string(show) + (owner == nullptr ? "" : " owner");
  return reinterpret_cast<HINSTANCE>(static_cast<INT_PTR>(gAnswer));
}

UINT WINAPI Start(const char* command, UINT show) {
  gGiven = std::string(command) + " show " + std::to_string(show);
  return 33;
}

}  // namespace

extern "C" {
decltype(&FileOperation) __wrap___imp_SHFileOperationW = FileOperation;
decltype(&MoveLater) __wrap___imp_MoveFileExW = MoveLater;
decltype(&ExecuteEx) __wrap___imp_ShellExecuteExW = ExecuteEx;
decltype(&Execute) __wrap___imp_ShellExecuteW = Execute;
decltype(&Start) __wrap___imp_WinExec = Start;
}

namespace {

class FileActionsCalls : public testing::Test {
 protected:
  void SetUp() override {
    gGiven.clear();
    gAnswer = 0;
    gAborts = false;
    FTree.MakeAll({"a, b.txt", "folder/inside"});
  }
  [[nodiscard]] TOpenFolder Folder() const { return TOpenFolder::Open(FTree.Path()); }
  [[nodiscard]] std::string Path(const QByteArray& name) const { return FTree.Path(name).toStdString(); }

  TTempTree FTree;
};

TEST_F(FileActionsCalls, SilentDelete) {
  const QString name = u"a, b.txt"_qs;
  EXPECT_TRUE(ShellDeleteSilent(Folder(), name));
  EXPECT_EQ(gGiven, "operation 3 from " + Path("a, b.txt") + "|| to none flags 1556 title none");
  gAnswer = 5;
  EXPECT_FALSE(ShellDeleteSilent(Folder(), name));
  gGiven.clear();
  EXPECT_FALSE(ShellDeleteSilent(Folder(), u"folder"_qs));
  EXPECT_FALSE(ShellDeleteSilent(Folder(), u"missing"_qs));
  EXPECT_EQ(gGiven, "") << "the shell would delete a folder";
}

TEST_F(FileActionsCalls, DeleteAtRestart) {
  gAnswer = 1;
  EXPECT_TRUE(ScheduleDelete(Folder(), u"a, b.txt"_qs));
  EXPECT_EQ(gGiven, "\\\\?\\" + Path("a, b.txt") + " to  flags 4");
  gAnswer = 0;
  EXPECT_FALSE(ScheduleDelete(Folder(), u"a, b.txt"_qs));
  gGiven.clear();
  EXPECT_FALSE(ScheduleDelete(Folder(), u"folder"_qs));
  EXPECT_EQ(gGiven, "");
}

TEST_F(FileActionsCalls, FolderDeleteWithUndo) {
  const auto remove = [&](const QString& name) {
    return DeleteFolderWithUndo(Folder(), name, u"Deleting..."_qs);
  };
  EXPECT_EQ(remove(u"folder"_qs), TActionResult::Done);
  EXPECT_EQ(gGiven, "operation 3 from " + Path("folder") + "|| to none flags 1088 title Deleting...");
  gAborts = true;
  EXPECT_EQ(remove(u"folder"_qs), TActionResult::Failed) << "the user cancelled it";
  gAborts = false;
  gAnswer = 5;
  EXPECT_EQ(remove(u"folder"_qs), TActionResult::Failed);
  gGiven.clear();
  EXPECT_EQ(remove(u"a, b.txt"_qs), TActionResult::Refused);
  const QString home = GetKnownFolder(TSpecialFolder::Profile);
  for (const QString& kept : {home, ExtractFileDir(home)}) {
    const TOpenFolder parent = TOpenFolder::Open(ExtractFileDir(kept));
    ASSERT_EQ(KindOfEntry(parent, ExtractFileName(kept)), TEntryKind::Folder);
    EXPECT_EQ(DeleteFolderWithUndo(parent, ExtractFileName(kept), QString()), TActionResult::Refused);
  }
  EXPECT_EQ(gGiven, "");
}

// For the shell "name." and "name " are "name".
TEST_F(FileActionsCalls, TheShellIsNotGivenNamesThatItWouldChange) {
  for (const QByteArray name : {"name.", "name "}) {
    FTree.MakeAll({"name", name});
    EXPECT_FALSE(ShellDeleteSilent(Folder(), NameFromBytes(name)));
    EXPECT_EQ(gGiven, "");
    EXPECT_TRUE(DeletePlain(Folder(), NameFromBytes(name)));
    EXPECT_TRUE(FileExists(FTree.Path("name")));
  }
}

TEST_F(FileActionsCalls, WhatTheDesktopIsAsked) {
  const QString path = u"C:\\a, b c.txt"_qs;
  gAnswer = 33;
  EXPECT_TRUE(OpenFile(path, nullptr, TShowWindow::Show));
  EXPECT_EQ(gGiven, "verb open file C:\\a, b c.txt parameters none directory none show 5");
  gAnswer = 32;
  EXPECT_FALSE(OpenFile(path, nullptr, TShowWindow::Normal));
  ShowPropertiesDialog(path, {});
  EXPECT_EQ(gGiven, "mask 1100 verb properties file C:\\a, b c.txt parameters none directory none show 0");
  ShowInFileManager(path);
  const std::string folder = GetWindowsFolder().toStdString();
  EXPECT_EQ(gGiven, '"' + folder + "\\explorer.exe\" /select,C:\\a, b c.txt show 1");
}

// While a folder below a root is open nothing can take its place.
TEST_F(FileActionsCalls, AnOpenFolderStaysWhereItIs) {
  FTree.MakeFile("root/above/parent/file", 1);
  {
    const TOpenFolder parent = OpenBelowRoot(FTree.Path("root"), FTree.Path("root/above/parent"));
    ASSERT_TRUE(parent.IsOpen());
    for (const QByteArray name : {"root/above", "root/above/parent"})
      EXPECT_EQ(
          MoveFileW(FTree.Path(name).toStdWString().c_str(), FTree.Path("moved").toStdWString().c_str()), 0);
    EXPECT_TRUE(DeletePlain(parent, u"file"_qs));
  }
  EXPECT_NE(
      MoveFileW(FTree.Path("root/above").toStdWString().c_str(), FTree.Path("moved").toStdWString().c_str()),
      0);
}

}  // namespace
