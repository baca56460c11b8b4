// What holds for every entry of both catalogues, whatever the application.
#include "download/catalogue/CatalogueHome.h"
#include "fixtures/QtPrinters.h"
#include "platform/XmlDocument.h"

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <QSet>

#include <map>

namespace {

// The values that each kind must have; all others stay empty.
const QStringList kRegistry =
    u"RegistryInfo/RegistryRegType RegistryInfo/RegistryRootKey "
    u"RegistryInfo/RegistryKeyPath RegistryInfo/RegistryKeyName"_qs.split(u' ');
const QStringList kConfig =
    u"ConfigInfo/ConfigDirectory ConfigInfo/ConfigPath ConfigInfo/ConfigSection "
    u"ConfigInfo/ConfigName"_qs.split(u' ');
const QStringList kInstall =
    u"InstallInfo/RegistryRootKey InstallInfo/RegistryKeyPath "
    u"InstallInfo/RegistryKeyName"_qs.split(u' ');
const std::map<QString, QStringList> kNeeded = {
    {u"ini"_qs, kConfig},
    {u"dat"_qs, {kConfig[0], kConfig[1], kConfig[3]}},
    {u"keyvalue"_qs, {kConfig[0], kConfig[1], kConfig[3]}},
    {u"xml"_qs, {kConfig[0], kConfig[1], kConfig[2]}},
    {u"reg"_qs, kRegistry},
};

class Catalogue : public testing::TestWithParam<const char*> {
 protected:
  [[nodiscard]] bool IsWindows() const { return FSystem == u"windows"; }
  const TComThread FComponents;
  const QString FSystem = QString::fromLatin1(GetParam());
};
INSTANTIATE_TEST_SUITE_P(Of, Catalogue, testing::Values("linux", "windows"),
                         [](const auto& tested) { return std::string(tested.param); });

// An element missing or standing twice would be read as empty or by its first place only. On Linux, which has
// no registry, an entry of kind "reg" is there for its default alone.
TEST_P(Catalogue, EveryElementStandsOnceAndHasAValueWhereItsKindNeedsOne) {
  const TXmlElement root = LoadXml(CatalogueFile(FSystem));
  QSet<QString> names;
  for (int i = 0; i < root.ChildCount(u"Application"_qs); ++i) {
    const TXmlElement application = root.ChildAt(u"Application"_qs, i);
    const QString name = application.Attribute(u"Name"_qs);
    const QString kind = application.Attribute(u"ConfigInfoFrom"_qs);
    ASSERT_TRUE(kNeeded.contains(kind)) << qPrintable(name);
    EXPECT_FALSE(names.contains(name)) << qPrintable(name);
    names.insert(name);
    const bool onlyDefault = kind == u"reg" && !IsWindows();
    const bool installed =
        application.Child(u"ConfigInfo"_qs).Child(u"ConfigDirectory"_qs).Attribute(u"Value"_qs) ==
        u"InstallFolder";
    for (const QString& path : kRegistry + kConfig + kInstall) {
      const TXmlElement parent = application.Child(path.section(u'/', 0, 0));
      const QString value = parent.Child(path.section(u'/', 1)).Attribute(u"Value"_qs);
      const bool needed =
          (!onlyDefault && kNeeded.at(kind).contains(path)) || (installed && kInstall.contains(path));
      EXPECT_EQ(parent.ChildCount(path.section(u'/', 1)), 1) << qPrintable(name + u' ' + path);
      EXPECT_EQ(value.isEmpty(), !needed) << qPrintable(name + u' ' + path);
      EXPECT_TRUE(!path.endsWith(u"RootKey") || !needed || value == u"HKEY_CURRENT_USER" ||
                  value == u"HKEY_LOCAL_MACHINE")
          << qPrintable(name) << ": any other means the current user's";
    }
    EXPECT_EQ(application.ChildCount(u"DefaultDownloadPath"_qs), 1) << qPrintable(name);
    EXPECT_EQ(application.ChildCount(u"DownloadDriveLetter"_qs), 1) << qPrintable(name);
  }
  EXPECT_GT(names.size(), 10);
}

// A variable that the system does not set, or the other system's delimiter, would find nothing.
TEST_P(Catalogue, PathsAreOfThisSystem) {
  const QSet<QString> variables =
      IsWindows() ? QSet<QString>({u"APPDATA"_qs, u"LOCALAPPDATA"_qs, u"USERPROFILE"_qs, u"ProgramData"_qs,
                                   u"ProgramFiles"_qs, u"ProgramFiles(x86)"_qs})
                  : QSet<QString>({u"HOMEPATH"_qs, u"APPDATA"_qs, u"LOCALAPPDATA"_qs});
  const QChar foreign = IsWindows() ? u'/' : u'\\';
  const QRegularExpression shape(u"^%([^%]+)%([^%]*[^%/\\\\])?$"_qs);
  for (const TXMLApplicationType& application : Applications(FSystem)) {
    const TXMLConfigInfoType config = application.ConfigInfo();
    EXPECT_FALSE(config.ConfigPath().Value().contains(foreign)) << qPrintable(application.Name());
    for (const QString& path :
         {config.ConfigDirectory().Value(), application.DefaultDownloadPath().Value()}) {
      if (path.isEmpty() || path == u"InstallFolder") continue;
      const QString variable = shape.match(path).captured(1);
      EXPECT_TRUE(variables.contains(variable) && !path.contains(foreign))
          << qPrintable(application.Name()) << ' ' << qPrintable(path);
    }
  }
}

}  // namespace
