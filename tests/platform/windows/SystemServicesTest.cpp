// The console, the registry and the folders of Windows.
#include "fixtures/SystemTest.h"
#include "fixtures/windows/RegistryKey.h"
#include "platform/KnownFolders.h"
#include "platform/Process.h"
#include "platform/SystemSettings.h"

#include <windows.h>

#include <string>

namespace {

std::string gHeard;

// What a debugger would see.
LONG CALLBACK Hear(EXCEPTION_POINTERS* pointers) {
  const EXCEPTION_RECORD& record = *pointers->ExceptionRecord;
  if (record.ExceptionCode != DBG_PRINTEXCEPTION_C) return EXCEPTION_CONTINUE_SEARCH;
  gHeard += reinterpret_cast<const char*>(record.ExceptionInformation[1]);
  return EXCEPTION_CONTINUE_EXECUTION;
}

class TDebugListener {
 public:
  TDebugListener() : FHandler(AddVectoredExceptionHandler(1, Hear)) { gHeard.clear(); }
  ~TDebugListener() { RemoveVectoredExceptionHandler(FHandler); }
  TDebugListener(const TDebugListener&) = delete;
  TDebugListener& operator=(const TDebugListener&) = delete;

 private:
  void* const FHandler;
};

TEST(ConsoleProcess, DebugOutputAndTheDpiAwarenessGoToTheDebugger) {
  const TDebugListener listener;
  DebugOutput("heard");
  EXPECT_EQ(gHeard, "heard");
  gHeard.clear();
  SetLastError(7);
  MakeProcessDpiAware();
  EXPECT_TRUE(gHeard.starts_with("ErrorCode:")) << gHeard;
  EXPECT_GT(gHeard.size(), std::string("ErrorCode:").size());
  EXPECT_NE(IsProcessDPIAware(), 0);
}

QSemaphore gInterrupts;

TEST(ConsoleProcess, EachInterruptCallsTheHandlerAndTheProcessGoesOn) {
  OnInterrupt([] { gInterrupts.release(); });
  if (GetConsoleWindow() == nullptr) {
    FreeConsole();
    ASSERT_NE(AllocConsole(), 0);
  }
  for (int i = 0; i < 2; ++i) {
    ASSERT_NE(GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0), 0);
    EXPECT_TRUE(gInterrupts.tryAcquire(1, 10'000));
  }
}

const QString kKey = u"Software\\Tallyscope Test"_qs;

TEST(Registry, EachTypeComesWithItsBytes) {
  TTempRegistryKey key(HKEY_CURRENT_USER, kKey);
  const QByteArray text = TTempRegistryKey::BytesOf(u"C:\\é 日"_qs);
  const std::tuple<QString, DWORD, QByteArray, TRegistryType> rows[] = {
      {u""_qs, REG_SZ, text + QByteArray(2, '\0'), TRegistryType::String},
      {u"expand"_qs, REG_EXPAND_SZ, text + QByteArray(2, '\0'), TRegistryType::ExpandString},
      {u"number"_qs, REG_DWORD, QByteArray("\1\2\3\4"), TRegistryType::Integer},
      {u"binary"_qs, REG_BINARY, QByteArray("\0\xff", 2), TRegistryType::Binary},
      {u"empty"_qs, REG_BINARY, QByteArray(), TRegistryType::Binary},
      {u"none"_qs, REG_NONE, text, TRegistryType::Unknown},
      {u"list"_qs, REG_MULTI_SZ, text + QByteArray(4, '\0'), TRegistryType::Unknown},
      {u"long"_qs, REG_BINARY, QByteArray(100'000, 'x'), TRegistryType::Binary}};
  for (const auto& [name, stored, bytes, type] : rows) {
    key.Set(name, stored, bytes);
    const auto value = ReadRegistry(TRegistryRoot::CurrentUser, kKey, name);
    ASSERT_TRUE(value) << name.toStdString();
    EXPECT_EQ(value->Type, type) << name.toStdString();
    EXPECT_EQ(value->Bytes, bytes) << name.toStdString();
  }
}

TEST(Registry, NamesAreFoundWithoutRegardToCaseAndNoKeyIsMade) {
  TTempRegistryKey key(HKEY_CURRENT_USER, kKey);
  key.SetText(u"Path"_qs, u"x"_qs);
  EXPECT_TRUE(ReadRegistry(TRegistryRoot::CurrentUser, u"\\SOFTWARE\\tallyscope test"_qs, u"PATH"_qs));
  EXPECT_FALSE(ReadRegistry(TRegistryRoot::CurrentUser, kKey, u"missing"_qs));
  EXPECT_FALSE(ReadRegistry(TRegistryRoot::LocalMachine, kKey, u"Path"_qs));
  EXPECT_FALSE(ReadRegistry(TRegistryRoot::CurrentUser, kKey + u"\\below"_qs, QString()));
  HKEY made = nullptr;
  EXPECT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, L"Software\\Tallyscope Test\\below", 0, KEY_READ, &made),
            ERROR_FILE_NOT_FOUND);
}

TEST(RegistryFileTypes, TheExtensionLeadsToItsClassAndTheClassHasTheText) {
  TTempRegistryKey extension(HKEY_CLASSES_ROOT, u".tallyscope-test"_qs);
  EXPECT_EQ(FileTypeText(u".tallyscope-test"_qs), QString()) << "a class is not named";
  extension.SetText(QString(), u"tallyscope-test-file"_qs);
  EXPECT_EQ(FileTypeText(u".tallyscope-test"_qs), QString()) << "the class is missing";
  TTempRegistryKey fileClass(HKEY_CLASSES_ROOT, u"tallyscope-test-file"_qs);
  fileClass.SetText(QString(), u"Made for the test"_qs);
  EXPECT_EQ(FileTypeText(u".tallyscope-test"_qs), u"Made for the test"_qs);
  EXPECT_EQ(FileTypeText(u".TALLYSCOPE-test"_qs), u"Made for the test"_qs);
  fileClass.Set(QString(), REG_DWORD, QByteArray(4, '\1'));
  EXPECT_EQ(FileTypeText(u".tallyscope-test"_qs), QString()) << "no text";
}

TEST(SpecialFolders, FoldersByNumberAreTheOnesOfTheEnvironment) {
  EXPECT_TRUE(SameFolder(GetKnownFolder(TSpecialFolder::AppData), qEnvironmentVariable("APPDATA")));
  EXPECT_TRUE(SameFolder(GetKnownFolder(TSpecialFolder::LocalAppData), qEnvironmentVariable("LOCALAPPDATA")));
  EXPECT_TRUE(SameFolder(GetKnownFolder(TSpecialFolder::CommonAppData), qEnvironmentVariable("PROGRAMDATA")));
  EXPECT_TRUE(SameFolder(GetKnownFolder(TSpecialFolder::Profile), qEnvironmentVariable("USERPROFILE")));
  const QString profile = IncludeTrailingPathDelimiter(qEnvironmentVariable("USERPROFILE"));
  for (const TSpecialFolder folder : {TSpecialFolder::Personal, TSpecialFolder::Desktop}) {
    EXPECT_TRUE(GetKnownFolder(folder).startsWith(profile, Qt::CaseInsensitive));
    EXPECT_TRUE(DirectoryExists(GetKnownFolder(folder)));
  }
}

TEST(SpecialFolders, PlacesOfTheSystemAndTheProgram) {
  EXPECT_TRUE(SameFolder(GetWindowsFolder(), qEnvironmentVariable("SystemRoot")));
  EXPECT_TRUE(SameFolder(GetSystemFolder(), qEnvironmentVariable("SystemRoot") + u"\\system32"_qs));
  EXPECT_TRUE(SameFolder(SystemVolumeRoot(), qEnvironmentVariable("SystemDrive") + u'\\'));
  EXPECT_EQ(ProgramFolder(), QDir::toNativeSeparators(QCoreApplication::applicationDirPath()) + u'\\');
}

TEST(SpecialFolders, DownloadsAreAtHomeAndBrowsersInTheApplicationData) {
  const TVariables set{{"HOMEDRIVE", "X:"}, {"HOMEPATH", "\\me"}, {"LOCALAPPDATA", "Y:\\local"}};
  EXPECT_EQ(GetDownloadsFolder(), u"X:\\me\\Downloads"_qs);
  EXPECT_EQ(GetBrowserFolder(TBrowser::Chrome), u"Y:\\local\\Google\\Chrome\\User Data"_qs);
  EXPECT_EQ(GetBrowserFolder(TBrowser::Firefox),
            GetKnownFolder(TSpecialFolder::AppData) + u"\\Mozilla\\Firefox"_qs);
  const QByteArray home(300, 'h');
  const TVariables longHome{{"HOMEPATH", home.constData()}};
  EXPECT_EQ(GetDownloadsFolder().size(), 259) << "the text expanded is cut";
}

}  // namespace
