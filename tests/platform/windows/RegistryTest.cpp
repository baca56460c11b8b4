#include "platform/Registry.h"

#include "fixtures/windows/RegistryKey.h"
#include "platform/FileTypes.h"

#include <gtest/gtest.h>

namespace {

constexpr char16_t kKey[] = u"Software\\Tallyscope Test";

QString KeyPath() {
  return QString::fromUtf16(kKey);
}

TEST(Registry, EachTypeComesWithItsBytes) {
  TTempRegistryKey key(HKEY_CURRENT_USER, KeyPath());
  const QByteArray text = TTempRegistryKey::BytesOf(u"C:\\é 日"_qs);
  const struct {
    const char* Name;
    DWORD Stored;
    QByteArray Bytes;
    TRegistryType Type;
  } rows[] = {
      {"", REG_SZ, text + QByteArray(2, '\0'), TRegistryType::String},
      {"expand", REG_EXPAND_SZ, text + QByteArray(2, '\0'), TRegistryType::ExpandString},
      {"number", REG_DWORD, QByteArray("\1\2\3\4"), TRegistryType::Integer},
      {"binary", REG_BINARY, QByteArray("\0\xff", 2), TRegistryType::Binary},
      {"empty", REG_BINARY, QByteArray(), TRegistryType::Binary},
      {"none", REG_NONE, text, TRegistryType::Unknown},
      {"list", REG_MULTI_SZ, text + QByteArray(4, '\0'), TRegistryType::Unknown},
      {"long", REG_BINARY, QByteArray(100'000, 'x'), TRegistryType::Binary},
  };
  for (const auto& row : rows) {
    key.Set(QString::fromLatin1(row.Name), row.Stored, row.Bytes);
    const auto value = ReadRegistry(TRegistryRoot::CurrentUser, KeyPath(), QString::fromLatin1(row.Name));
    ASSERT_TRUE(value) << row.Name;
    EXPECT_EQ(value->Type, row.Type) << row.Name;
    EXPECT_EQ(value->Bytes, row.Bytes) << row.Name;
  }
}

TEST(Registry, NamesAreFoundWithoutRegardToCaseAndNoKeyIsMade) {
  TTempRegistryKey key(HKEY_CURRENT_USER, KeyPath());
  key.SetText(u"Path"_qs, u"x"_qs);
  EXPECT_TRUE(ReadRegistry(TRegistryRoot::CurrentUser, u"\\SOFTWARE\\tallyscope test"_qs, u"PATH"_qs));
  EXPECT_FALSE(ReadRegistry(TRegistryRoot::CurrentUser, KeyPath(), u"missing"_qs));
  EXPECT_FALSE(ReadRegistry(TRegistryRoot::LocalMachine, KeyPath(), u"Path"_qs));
  EXPECT_FALSE(ReadRegistry(TRegistryRoot::CurrentUser, KeyPath() + u"\\below"_qs, QString()));
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

}  // namespace
