// The catalogues of both systems: what holds for every entry, and what each finds in settings as its
// application writes them (samples/<system>/<application>/, in few lines). The line "application: folder" in
// samples/<system>/folders names the folder that these settings name.
#include "download/DownloadApplication.h"
#include "download/DownloadDirectoryScan.h"
#include "download/DownloadSettings.h"
#include "fixtures/SystemTest.h"
#include "platform/Process.h"

namespace {

using TFolders = std::map<QString, QString>;

struct TCatalogue {
  [[nodiscard]] QString Sample(const QString& name) const {
    return SourceFile(u"tests/download/catalogue/samples/%1/%2"_qs.arg(FSystem, name));
  }

  [[nodiscard]] TFolders NamedFolders() const {
    TFolders folders;
    const QString lines = QString::fromUtf8(ReadWholeFile(Sample(u"folders"_qs)).value_or(QByteArray()));
    for (const QString& line : lines.split(u'\n', Qt::SkipEmptyParts))
      folders[line.section(u": "_qs, 0, 0)] = line.section(u": "_qs, 1);
    return folders;
  }

  [[nodiscard]] std::vector<TXMLApplicationType> Applications() const {
    const TXMLDownloadApplicationType catalogue = LoadDownloadApplication(FFile);
    std::vector<TXMLApplicationType> applications;
    for (int i = 0; i < catalogue.Count(); ++i)
      applications.push_back(catalogue.Application(i));
    return applications;
  }

  const QString FSystem;
  const QString FFile = SourceFile(u"data/DownloadApplication.%1.xml"_qs.arg(FSystem));
  const TComThread FComponents = {};
};

const QString kKinds = u"ini dat keyvalue xml reg"_qs, kInstall = u"InstallFolder"_qs;

// An element of an entry, the kinds of entries that need a value in it, and what the value looks like.
std::vector<std::array<QString, 3>> ElementRules() {
  const QString path =
      uR"(%(APPDATA|LOCALAPPDATA|USERPROFILE|ProgramData|ProgramFiles(\(x86\))?)%([^%/]*[^%/\\])?)"_qs;
  const QString files = u"ini dat keyvalue xml"_qs, registry = u"reg"_qs, any = u".+"_qs;
  const QString rootKey = u"HKEY_CURRENT_USER|HKEY_LOCAL_MACHINE"_qs;  // any other means the current user's
  return {{u"RegistryInfo/RegistryRegType"_qs, registry, any},
          {u"RegistryInfo/RegistryRootKey"_qs, registry, rootKey},
          {u"RegistryInfo/RegistryKeyPath"_qs, registry, any},
          {u"RegistryInfo/RegistryKeyName"_qs, registry, any},
          {u"ConfigInfo/ConfigDirectory"_qs, files, kInstall + u'|' + path},
          {u"ConfigInfo/ConfigPath"_qs, files, u"[^/]+"_qs},
          {u"ConfigInfo/ConfigSection"_qs, u"ini xml"_qs, any},
          {u"ConfigInfo/ConfigName"_qs, u"ini dat keyvalue"_qs, any},
          {u"InstallInfo/RegistryRootKey"_qs, kInstall, rootKey},
          {u"InstallInfo/RegistryKeyPath"_qs, kInstall, any},
          {u"InstallInfo/RegistryKeyName"_qs, kInstall, any},
          {u"./DefaultDownloadPath"_qs, kKinds, u"("_qs + path + u")?"_qs},
          {u"./DownloadDriveLetter"_qs, kKinds, u".*"_qs}};
}

// An element missing or standing twice would be read as empty or by its first place only; a variable that the
// system does not set, or the other system's delimiter, would find nothing.
TEST(Catalogue, OfWindowsHasEachElementOnceAndAValueWhereItsKindNeedsOne) {
  const TXmlElement root = LoadXml(TCatalogue{u"windows"_qs}.FFile);
  QStringList names;
  for (int i = 0; i < root.ChildCount(u"Application"_qs); ++i) {
    const TXmlElement application = root.ChildAt(u"Application"_qs, i);
    const QString kind = application.Attribute(u"ConfigInfoFrom"_qs);
    const QString folder =
        application.Child(u"ConfigInfo"_qs).Child(u"ConfigDirectory"_qs).Attribute(u"Value"_qs);
    names.append(application.Attribute(u"Name"_qs));
    ASSERT_TRUE(kKinds.split(u' ').contains(kind)) << qPrintable(names.last());
    for (const auto& [element, neededBy, shape] : ElementRules()) {
      const QString parent = element.section(u'/', 0, 0), name = element.section(u'/', 1);
      const TXmlElement holder = parent == u"." ? application : application.Child(parent);
      const QString value = holder.Child(name).Attribute(u"Value"_qs);
      const bool needed = neededBy.split(u' ').contains(kind) || (neededBy == kInstall && folder == kInstall);
      const QString pattern = QRegularExpression::anchoredPattern(needed ? shape : QString());
      EXPECT_EQ(holder.ChildCount(name), 1) << qPrintable(names.last() + u' ' + element);
      EXPECT_TRUE(QRegularExpression(pattern).match(value).hasMatch())
          << qPrintable(names.last() + u' ' + element + u' ' + value);
    }
  }
  EXPECT_GT(names.size(), 10);
  EXPECT_EQ(names.removeDuplicates(), 0);
}

// A text in braces in a bencoded file gets its length, which depends on the home's path, in front.
QByteArray WithLengths(const QByteArray& content) {
  const QRegularExpressionMatch match =
      QRegularExpression(u"\\{(.*)\\}"_qs).match(QString::fromUtf8(content));
  const QByteArray text = match.captured(1).toUtf8();
  return QByteArray(content).replace(match.captured().toUtf8(), QByteArray::number(text.size()) + ':' + text);
}

// In homes that hold the settings of one application each; "@HOME@" in a sample is the home's path.
TEST(Catalogue, OfLinuxFindsTheFolderThatEachApplicationsSettingsName) {
  const TCatalogue catalogue{u"linux"_qs};
  if (HasDrives()) GTEST_SKIP() << "the Linux catalogue names the folders of Linux";
  TFolders found;
  for (const TXMLApplicationType& application : catalogue.Applications()) {
    const QString name = application.Name(), sample = catalogue.Sample(name);
    TTestUser user;
    QDirIterator files(sample, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext()) {
      QByteArray content = ReadWholeFile(files.next()).value_or(QByteArray());
      content.replace("@HOME@", NameToBytes(user.Home.Path()));
      if (files.fileName().endsWith(u".config")) content = WithLengths(content);
      user.Home.WriteFile(NameToBytes(files.filePath().mid(sample.size() + 1)), content);
    }
    for (const auto& [each, folder] : catalogue.NamedFolders())
      if (each == name) user.Home.MakeFolder(NameToBytes(folder));
    TDownloadDirectoryScan scan;
    scan.ScanDirectories(catalogue.FFile);
    found[name] = scan.FDirectories.join(u'|').mid(user.Home.Path().size() + 1).chopped(1);
  }
  EXPECT_EQ(found, catalogue.NamedFolders());
}

// The files are found by the samples' own folders here; the readers are the same on all systems.
TEST(Catalogue, OfWindowsReadsTheFolderThatEachSettingsFileNames) {
  const TCatalogue catalogue{u"windows"_qs};
  TFolders read;
  for (const TXMLApplicationType& application : catalogue.Applications()) {
    const TXMLConfigInfoType config = application.ConfigInfo();
    const QString kind = application.ConfigInfoFrom(), section = config.ConfigSection().Value();
    const QString name = config.ConfigName().Value(), none = u"default"_qs;
    const QString file =
        catalogue.Sample(application.Name()) + u'/' + config.ConfigPath().Value().section(u'\\', -1);
    if (kind == u"reg") continue;
    read[application.Name()] = kind == u"ini"        ? ReadFromIni(file, section, name, none)
                               : kind == u"keyvalue" ? ReadFromKeyValue(file, name)
                               : kind == u"xml"      ? ReadFromXml(file, section, none)
                                                     : ReadFromDat(file, name, none);
  }
  EXPECT_EQ(read, catalogue.NamedFolders());
}

}  // namespace
