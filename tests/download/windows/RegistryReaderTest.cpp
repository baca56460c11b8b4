// What is read from the registry itself.
#include "download/CatalogueMaker.h"
#include "download/DownloadDirectoryScan.h"
#include "download/DownloadSettings.h"
#include "fixtures/SystemTest.h"
#include "fixtures/windows/RegistryKey.h"
#include "platform/Process.h"

namespace {

const QString kKey = u"Software\\An application"_qs;

class RealRegistry : public testing::Test {
 protected:
  [[nodiscard]] QStringList Found(const TCatalogueEntry& entry) {
    FUser.Home.WriteFile("catalogue.xml", MakeCatalogue({entry}));
    TDownloadDirectoryScan scan;
    scan.ScanDirectories(FUser.Home.Path("catalogue.xml"));
    return scan.FDirectories;
  }

  const TComThread FComponents;
  TTestUser FUser;
  TTempRegistryKey FKey{HKEY_CURRENT_USER, kKey};
};

}  // namespace

TEST_F(RealRegistry, TextsComeOutAndOtherTypesDoNot) {
  const QByteArray text = TTempRegistryKey::BytesOf(u"D:\\é 日"_qs);
  const QByteArray end(2, '\0');
  const std::tuple<DWORD, QByteArray, QString> rows[] = {
      {REG_SZ, text + end, u"D:\\é 日"_qs},
      {REG_SZ, text, u"D:\\é 日"_qs},
      {REG_SZ, TTempRegistryKey::BytesOf(QString(QChar(0xd800)) + u'x'), QString(QChar(0xd800)) + u'x'},
      {REG_SZ, end, QString()},
      {REG_EXPAND_SZ, text + end, QString()},
      {REG_BINARY, text + end, QString()},
      {REG_DWORD, "abcd", QString()},
      {REG_MULTI_SZ, text + end + text + end + end, u"D:\\é 日"_qs},
      {REG_QWORD, text.left(8), u"D:\\é"_qs},
      {REG_NONE, text, u"D:\\é 日"_qs},
      {REG_MULTI_SZ, {}, QString()}};
  for (const auto& [type, bytes, value] : rows) {
    FKey.Set(u"Folder"_qs, type, bytes);
    EXPECT_EQ(ReadRegistryValue(u"HKEY_CURRENT_USER"_qs, kKey, u"Folder"_qs), value) << type;
  }
}

TEST_F(RealRegistry, AnyOtherRootIsTheCurrentUsers) {
  FKey.SetText(u"Folder"_qs, u"here"_qs);
  const std::pair<QString, QString> rows[] = {
      {u"HKEY_CURRENT_USER"_qs, u"here"_qs},  {QString(), u"here"_qs},
      {u"hkey_local_machine"_qs, u"here"_qs}, {u"HKEY_CLASSES_ROOT"_qs, u"here"_qs},
      {u"HKEY_LOCAL_MACHINE"_qs, QString()},  {u"HKEY_CURRENT_CONFIG"_qs, QString()}};
  for (const auto& [root, text] : rows)
    EXPECT_EQ(ReadRegistryValue(root, kKey, u"Folder"_qs), text) << qPrintable(root);
  const QString system = u"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion"_qs;
  EXPECT_FALSE(ReadRegistryValue(u"HKEY_LOCAL_MACHINE"_qs, system, u"ProductName"_qs).isEmpty());
}

TEST_F(RealRegistry, TheInstallFolderIsTheRegistrysWithOrWithoutItsDelimiter) {
  FUser.Home.MakeFolder("incoming");
  FUser.Home.WriteFile("program/set.cfg", "k=" + NameToBytes(FUser.Home.Path("incoming")));
  for (const char* folder : {"program", "program/"}) {
    FKey.SetText(u"Path"_qs, FUser.Home.Path(folder));
    EXPECT_EQ(Found({.Kind = "keyvalue",
                     .Directory = "installFOLDER",
                     .Path = "set.cfg",
                     .Name = "k",
                     .RegistryKey = NameToBytes(kKey),
                     .RegistryName = "Path"}),
              QStringList(FUser.Home.Path("incoming\\")));
  }
}
