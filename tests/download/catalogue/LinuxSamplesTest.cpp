// The Linux catalogue in home folders that hold the settings of one application each.
#include "Samples.h"
#include "download/DownloadDirectoryScan.h"
#include "fixtures/QtPrinters.h"
#include "fixtures/TempTree.h"
#include "fixtures/Variables.h"
#include "platform/KnownFolders.h"
#include "platform/Paths.h"

#include <gtest/gtest.h>

#include <QDirIterator>
#include <QRegularExpression>

namespace {

const TSampleFolder kFolders[] = {
    {u"gPodder"_qs, u"gPodder/Downloads"_qs},
    {u"qBittorrent"_qs, u"Torrents/Linux images, signed"_qs},
    {u"KTorrent"_qs, u"isos"_qs},
    {u"aMule"_qs, u"shared files"_qs},
    {u"Nicotine+"_qs, u"Music/from others"_qs},
    {u"Persepolis"_qs, u"Fetched"_qs},
    {u"ClipGrab"_qs, u"Clips"_qs},
    {u"Clementine"_qs, u"Radio plays"_qs},
    {u"RSS Guard"_qs, u"Feeds"_qs},
    {u"Falkon"_qs, u"From the web"_qs},
    {u"Linphone"_qs, u"Received"_qs},
    {u"Claws Mail"_qs, u"Attachments"_qs},
    {u"Sylpheed"_qs, u"Letters"_qs},
    {u"aria2"_qs, u"aria"_qs},
    {u"aria2 (older place)"_qs, u"loads"_qs},
    {u"MuWire"_qs, u"MuWire Downloads"_qs},
    {u"FrostWire"_qs, u"Frost/Data"_qs},
    {u"LimeWire"_qs, u"Lime/Done"_qs},
    {u"EiskaltDC++"_qs, u"Hub"_qs},
    {u"AirDC++"_qs, u"Air & more"_qs},
    {u"Pidgin"_qs, u"From friends"_qs},
    {u"Pan"_qs, u"Usenet"_qs},
    {u"Guayadeque"_qs, u"Shows"_qs},
    {u"BiglyBT"_qs, u"Bigly"_qs},
    {u"Vuze"_qs, u"Frog"_qs},
};

// A home folder of its own, which is what the program takes for the user's.
class THome {
 public:
  // The sample's files, with this home's path for each "@HOME@". A text in braces in a bencoded file gets its
  // length, which depends on that path, in front.
  void AddSample(const QString& application) {
    const QString sample = SampleFolder(u"linux"_qs, application);
    QDirIterator files(sample, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext()) {
      QByteArray content = FileBytes(files.next()).replace("@HOME@", FHome);
      if (files.fileName().endsWith(u".config")) content = WithLengths(content);
      FTree.WriteFile(NameToBytes(files.filePath().mid(sample.size() + 1)), content);
    }
  }

  // A path as the catalogue has it, made relative to this home.
  [[nodiscard]] QByteArray Relative(const QString& path) const {
    const QString expanded = ExpandEnvironment(path);
    EXPECT_TRUE(expanded.startsWith(FTree.Path() + u'/')) << qPrintable(path);
    return NameToBytes(expanded.mid(FTree.Path().size() + 1));
  }

  // What the finder gives, relative to this home.
  [[nodiscard]] QStringList Found() const {
    TDownloadDirectoryScan scan;
    scan.ScanDirectories(CatalogueFile(u"linux"_qs));
    return scan.FDirectories.replaceInStrings(FTree.Path() + u'/', QString());
  }

  TTempTree FTree;

 private:
  static QByteArray WithLengths(const QByteArray& content) {
    const QRegularExpressionMatch match =
        QRegularExpression(u"\\{(.*)\\}"_qs).match(QString::fromUtf8(content));
    const QByteArray text = match.captured(1).toUtf8();
    return QByteArray(content).replace(match.captured().toUtf8(),
                                       QByteArray::number(text.size()) + ':' + text);
  }

  const QByteArray FHome = NameToBytes(FTree.Path());
  const TVariables FVariables{{"HOME", FHome.constData()}, {"XDG_CONFIG_HOME", nullptr},
                              {"XDG_DATA_HOME", nullptr},  {"HOMEPATH", nullptr},
                              {"APPDATA", nullptr},        {"LOCALAPPDATA", nullptr}};
};

TEST(LinuxCatalogue, FindsTheFolderThatEachApplicationsSettingsName) {
  for (const auto& [application, folder] : kFolders) {
    THome home;
    home.AddSample(application);
    home.FTree.MakeFolder(NameToBytes(folder));
    EXPECT_EQ(home.Found(), QStringList{folder + u'/'}) << qPrintable(application);
  }
}

TEST(LinuxCatalogue, EachEntryHasASample) {
  QStringList entries;
  for (const TXMLApplicationType& application : Applications(u"linux"_qs))
    entries.append(application.Name());
  QStringList samples;
  for (const TSampleFolder& sample : kFolders)
    samples.append(sample.Application);
  EXPECT_EQ(samples, entries);
}

// The settings are there and empty, and so the reader falls to the catalogue's default.
QByteArray EmptySettings(const QString& kind) {
  if (kind == u"xml") return "<settings/>";
  return kind == u"dat" ? "de" : "";
}

TEST(LinuxCatalogue, SettingsWithoutAFolderMeanTheDefault) {
  for (const TXMLApplicationType& application : Applications(u"linux"_qs)) {
    const QString kind = application.ConfigInfoFrom();
    const QString usual = application.DefaultDownloadPath().Value();
    if (kind == u"reg" || kind == u"keyvalue" || usual.isEmpty()) continue;
    THome home;
    const TXMLConfigInfoType config = application.ConfigInfo();
    home.FTree.WriteFile(home.Relative(config.ConfigDirectory().Value() + u'/' + config.ConfigPath().Value()),
                         EmptySettings(kind));
    home.FTree.MakeFolder(home.Relative(usual));
    EXPECT_EQ(home.Found(), QStringList{NameFromBytes(home.Relative(usual)) + u'/'})
        << qPrintable(application.Name());
  }
}

TEST(LinuxCatalogue, DefaultsOfApplicationsThatAreNotInUseDoNotCount) {
  THome home;
  for (const TXMLApplicationType& application : Applications(u"linux"_qs)) {
    const QString usual = application.DefaultDownloadPath().Value();
    if (usual.startsWith(u"%HOMEPATH%/")) home.FTree.MakeFolder(home.Relative(usual));
  }
  EXPECT_EQ(home.Found(), QStringList{u"gPodder/Downloads/"_qs});
}

}  // namespace
