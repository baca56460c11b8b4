// What holds for every entry of both catalogues, whatever the application.
#include "Samples.h"
#include "fixtures/QtPrinters.h"
#include "platform/ComThread.h"
#include "platform/XmlDocument.h"

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <QSet>

#include <map>

namespace {

// The elements of an application and which of their values each kind must have; all others stay empty.
const std::map<QString, QStringList> kChildren = {
    {u"InstallInfo"_qs, {u"RegistryRootKey"_qs, u"RegistryKeyPath"_qs, u"RegistryKeyName"_qs}},
    {u"ConfigInfo"_qs, {u"ConfigDirectory"_qs, u"ConfigPath"_qs, u"ConfigSection"_qs, u"ConfigName"_qs}},
    {u"RegistryInfo"_qs,
     {u"RegistryRegType"_qs, u"RegistryRootKey"_qs, u"RegistryKeyPath"_qs, u"RegistryKeyName"_qs}},
};
const std::map<QString, QStringList> kNeeded = {
    {u"ini"_qs, {u"ConfigDirectory"_qs, u"ConfigPath"_qs, u"ConfigSection"_qs, u"ConfigName"_qs}},
    {u"dat"_qs, {u"ConfigDirectory"_qs, u"ConfigPath"_qs, u"ConfigName"_qs}},
    {u"keyvalue"_qs, {u"ConfigDirectory"_qs, u"ConfigPath"_qs, u"ConfigName"_qs}},
    {u"xml"_qs, {u"ConfigDirectory"_qs, u"ConfigPath"_qs, u"ConfigSection"_qs}},
    {u"reg"_qs, {u"RegistryRegType"_qs, u"RegistryRootKey"_qs, u"RegistryKeyPath"_qs, u"RegistryKeyName"_qs}},
};

class Catalogue : public testing::TestWithParam<const char*> {
 protected:
  [[nodiscard]] bool IsWindows() const { return FSystem == u"windows"; }
  const TComThread FComponents;
  const QString FSystem = QString::fromLatin1(GetParam());
};
INSTANTIATE_TEST_SUITE_P(Of, Catalogue, testing::Values("linux", "windows"),
                         [](const auto& tested) { return std::string(tested.param); });

TEST_P(Catalogue, EveryElementStandsOnce) {
  const TXmlElement root = LoadXml(CatalogueFile(FSystem));
  const QString item = u"Application"_qs;
  ASSERT_GT(root.ChildCount(item), 0);
  for (int i = 0; i < root.ChildCount(item); ++i) {
    const TXmlElement application = root.ChildAt(item, i);
    for (const QString& name : {u"DefaultDownloadPath"_qs, u"DownloadDriveLetter"_qs})
      EXPECT_EQ(application.ChildCount(name), 1)
          << qPrintable(application.Attribute(u"Name"_qs)) << ' ' << qPrintable(name);
    for (const auto& [parent, names] : kChildren) {
      ASSERT_EQ(application.ChildCount(parent), 1)
          << qPrintable(application.Attribute(u"Name"_qs)) << ' ' << qPrintable(parent);
      for (const QString& name : names)
        EXPECT_EQ(application.Child(parent).ChildCount(name), 1)
            << qPrintable(application.Attribute(u"Name"_qs)) << ' ' << qPrintable(name);
    }
  }
}

TEST_P(Catalogue, NamesAreUniqueAndAllKindsOccur) {
  QSet<QString> names;
  QSet<QString> kinds;
  for (const TXMLApplicationType& application : Applications(FSystem)) {
    EXPECT_FALSE(application.Name().isEmpty() || names.contains(application.Name()))
        << qPrintable(application.Name());
    names.insert(application.Name());
    kinds.insert(application.ConfigInfoFrom());
  }
  EXPECT_EQ(kinds, QSet<QString>({u"ini"_qs, u"reg"_qs, u"dat"_qs, u"keyvalue"_qs, u"xml"_qs}));
}

// Settings that can't be read end the search, and so the kinds that can't fail come first.
TEST_P(Catalogue, KindsStandInTheOrderOfTheirRisk) {
  const QStringList order = {u"reg"_qs, u"ini"_qs, u"keyvalue"_qs, u"xml"_qs, u"dat"_qs};
  qsizetype reached = 0;
  for (const TXMLApplicationType& application : Applications(FSystem)) {
    const qsizetype place = order.indexOf(application.ConfigInfoFrom());
    EXPECT_LE(reached, place) << qPrintable(application.Name());
    reached = place;
  }
}

// The values by the names of their elements, those of the installation apart.
std::map<QString, QString> ValuesOf(const TXMLApplicationType& application) {
  const TXMLConfigInfoType config = application.ConfigInfo();
  const TXMLRegistryInfoType registry = application.RegistryInfo();
  return {{u"ConfigDirectory"_qs, config.ConfigDirectory().Value()},
          {u"ConfigPath"_qs, config.ConfigPath().Value()},
          {u"ConfigSection"_qs, config.ConfigSection().Value()},
          {u"ConfigName"_qs, config.ConfigName().Value()},
          {u"RegistryRegType"_qs, registry.RegistryRegType().Value()},
          {u"RegistryRootKey"_qs, registry.RegistryRootKey().Value()},
          {u"RegistryKeyPath"_qs, registry.RegistryKeyPath().Value()},
          {u"RegistryKeyName"_qs, registry.RegistryKeyName().Value()}};
}

// On Linux, which has no registry, an entry of kind "reg" is there for its default alone.
TEST_P(Catalogue, EachKindHasTheValuesThatItsReaderNeedsAndNoOthers) {
  for (const TXMLApplicationType& application : Applications(FSystem)) {
    const QString kind = application.ConfigInfoFrom();
    const bool onlyDefault = kind == u"reg" && !IsWindows();
    ASSERT_TRUE(kNeeded.contains(kind)) << qPrintable(application.Name());
    for (const auto& [element, value] : ValuesOf(application)) {
      const bool needed = !onlyDefault && kNeeded.at(kind).contains(element);
      EXPECT_EQ(value.isEmpty(), !needed) << qPrintable(application.Name()) << ' ' << qPrintable(element);
    }
    EXPECT_FALSE(onlyDefault && application.DefaultDownloadPath().Value().isEmpty())
        << qPrintable(application.Name());
  }
}

TEST_P(Catalogue, AnInstallationFolderIsSaidWhereItIsUsed) {
  for (const TXMLApplicationType& application : Applications(FSystem)) {
    const bool used = application.ConfigInfo().ConfigDirectory().Value() == u"InstallFolder";
    const TXMLInstallInfoType install = application.InstallInfo();
    for (const QString& value : {install.RegistryRootKey().Value(), install.RegistryKeyPath().Value(),
                                 install.RegistryKeyName().Value()})
      EXPECT_EQ(value.isEmpty(), !used) << qPrintable(application.Name());
  }
}

// Any other name of a root would silently mean the current user's.
TEST_P(Catalogue, RootsAndTypesOfTheRegistryAreKnown) {
  const QSet<QString> roots = {QString(), u"HKEY_CURRENT_USER"_qs, u"HKEY_LOCAL_MACHINE"_qs,
                               u"HKEY_CURRENT_CONFIG"_qs};
  for (const TXMLApplicationType& application : Applications(FSystem)) {
    const TXMLRegistryInfoType registry = application.RegistryInfo();
    const QString type = registry.RegistryRegType().Value();
    EXPECT_TRUE(type.isEmpty() || type == u"REG_SZ") << qPrintable(application.Name());
    EXPECT_TRUE(roots.contains(registry.RegistryRootKey().Value())) << qPrintable(application.Name());
    EXPECT_TRUE(roots.contains(application.InstallInfo().RegistryRootKey().Value()))
        << qPrintable(application.Name());
  }
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

// The cells of the README's tables, "| application | kind | file or registry key | key | default | source |",
// by system and application.
std::map<QString, QStringList> RowsOfTheReadme() {
  std::map<QString, QStringList> rows;
  QString system;
  for (const QString& line : QString::fromUtf8(FileBytes(DataFile(u"README.md"_qs))).split(u'\n')) {
    if (line.startsWith(u"#")) system = line.section(u' ', -1).toLower();
    QStringList cells = line.split(u'|').mid(1, 6);
    if (cells.size() != 6) continue;
    for (QString& cell : cells)
      cell = cell.remove(u'`').trimmed();
    rows[system + u' ' + cells[0]] = cells;
  }
  return rows;
}

// What the README has to say of an entry, but for the source.
QStringList CellsOf(const TXMLApplicationType& application, QChar delimiter) {
  const TXMLConfigInfoType config = application.ConfigInfo();
  const TXMLRegistryInfoType registry = application.RegistryInfo();
  const QString kind = application.ConfigInfoFrom();
  const QString section = config.ConfigSection().Value();
  QString place = config.ConfigDirectory().Value() + delimiter + config.ConfigPath().Value();
  const TXMLInstallInfoType install = application.InstallInfo();
  place.replace(u"InstallFolder"_qs,
                u"%1: %2"_qs.arg(install.RegistryKeyPath().Value(), install.RegistryKeyName().Value()));
  QString key = config.ConfigName().Value();
  if (kind == u"reg") {
    place = registry.RegistryKeyPath().Value();
    key = registry.RegistryKeyName().Value();
  }
  if (kind == u"ini") key = u"[%1] %2"_qs.arg(section, key);
  if (kind == u"xml") key = section;
  return {application.Name(), kind, place, key, application.DefaultDownloadPath().Value()};
}

TEST_P(Catalogue, TheReadmeSaysWhereEveryEntryWasLookedUp) {
  const auto rows = RowsOfTheReadme();
  for (const TXMLApplicationType& application : Applications(FSystem)) {
    const auto row = rows.find(FSystem + u' ' + application.Name());
    ASSERT_NE(row, rows.end()) << qPrintable(application.Name());
    EXPECT_EQ(row->second.first(5), CellsOf(application, IsWindows() ? u'\\' : u'/'));
    EXPECT_FALSE(row->second.last().isEmpty()) << qPrintable(application.Name());
  }
}

}  // namespace
