// The catalogues of both systems: what holds for every entry, and what each finds in settings as its
// application writes them (samples/<system>/<application>/, in few lines). The line "application: folder" in
// samples/<system>/folders names the folder that these settings name.
#include "download/DownloadApplication.h"
#include "download/DownloadDirectoryScan.h"
#include "download/DownloadSettings.h"
#include "fixtures/NativePath.h"
#include "fixtures/QtPrinters.h"
#include "fixtures/TestUser.h"
#include "platform/ComThread.h"
#include "platform/FileTests.h"

#include <gtest/gtest.h>

#include <QDirIterator>
#include <QRegularExpression>

#include <map>

namespace {

using TFolders = std::map<QString, QString>;

QString SourceFile(const QString& name) {
  return qEnvironmentVariable("TALLYSCOPE_SOURCE_DIR") + u'/' + name;
}

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
  const bool FWindows = FSystem == u"windows";
  const QString FFile = SourceFile(u"data/DownloadApplication.%1.xml"_qs.arg(FSystem));
  const TComThread FComponents = {};
};

const QString kSystems[] = {u"linux"_qs, u"windows"_qs};

// The elements that have a value, by kind. On Linux, which has no registry, an entry of kind "reg" is there
// for its default alone.
const QStringList kElements = QStringLiteral(
                                  "RegistryInfo/RegistryRegType RegistryInfo/RegistryRootKey "
                                  "RegistryInfo/RegistryKeyPath RegistryInfo/RegistryKeyName "
                                  "ConfigInfo/ConfigDirectory ConfigInfo/ConfigPath ConfigInfo/ConfigSection "
                                  "ConfigInfo/ConfigName InstallInfo/RegistryRootKey "
                                  "InstallInfo/RegistryKeyPath InstallInfo/RegistryKeyName")
                                  .split(u' ');
bool HasValue(const QString& element, const QString& kind, bool installed) {
  if (element.startsWith(u"RegistryInfo"_qs)) return kind == u"reg";
  if (element.startsWith(u"InstallInfo"_qs)) return installed;
  return kind == u"ini" || (kind != u"reg" && element != (kind == u"xml" ? u"ConfigInfo/ConfigName"
                                                                         : u"ConfigInfo/ConfigSection"));
}

// An element missing or standing twice would be read as empty or by its first place only.
TEST(Catalogue, EveryElementStandsOnceAndHasAValueWhereItsKindNeedsOne) {
  for (const QString& system : kSystems) {
    const TCatalogue catalogue{system};
    const TXmlElement root = LoadXml(catalogue.FFile);
    QStringList names;
    for (int i = 0; i < root.ChildCount(u"Application"_qs); ++i) {
      const TXmlElement application = root.ChildAt(u"Application"_qs, i);
      const QString name = application.Attribute(u"Name"_qs);
      const QString kind = application.Attribute(u"ConfigInfoFrom"_qs);
      ASSERT_TRUE(u"ini dat keyvalue xml reg"_qs.split(u' ').contains(kind)) << qPrintable(name);
      names.append(name);
      const bool installed =
          application.Child(u"ConfigInfo"_qs).Child(u"ConfigDirectory"_qs).Attribute(u"Value"_qs) ==
          u"InstallFolder";
      for (const QString& path : kElements) {
        const TXmlElement parent = application.Child(path.section(u'/', 0, 0));
        const QString value = parent.Child(path.section(u'/', 1)).Attribute(u"Value"_qs);
        const bool needed = HasValue(path, kind, installed) && (kind != u"reg" || catalogue.FWindows);
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
    EXPECT_EQ(names.removeDuplicates(), 0);
  }
}

// A variable that the system does not set, or the other system's delimiter, would find nothing.
TEST(Catalogue, PathsAreOfThisSystem) {
  for (const QString& system : kSystems) {
    const TCatalogue catalogue{system};
    const QStringList variables =
        (catalogue.FWindows ? u"APPDATA LOCALAPPDATA USERPROFILE ProgramData ProgramFiles "
                              u"ProgramFiles(x86)"_qs
                            : u"HOMEPATH APPDATA LOCALAPPDATA"_qs)
            .split(u' ');
    const QChar foreign = catalogue.FWindows ? u'/' : u'\\';
    const QRegularExpression shape(u"^%([^%]+)%([^%]*[^%/\\\\])?$"_qs);
    for (const TXMLApplicationType& application : catalogue.Applications()) {
      const TXMLConfigInfoType config = application.ConfigInfo();
      EXPECT_FALSE(config.ConfigPath().Value().contains(foreign)) << qPrintable(application.Name());
      for (const QString& path :
           {config.ConfigDirectory().Value(), application.DefaultDownloadPath().Value()}) {
        const bool isPath = !path.isEmpty() && path != u"InstallFolder";
        EXPECT_TRUE(!isPath || (variables.contains(shape.match(path).captured(1)) && !path.contains(foreign)))
            << qPrintable(application.Name()) << ' ' << qPrintable(path);
      }
    }
  }
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
