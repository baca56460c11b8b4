// The Linux catalogue in home folders that hold the settings of one application each.
#include "download/catalogue/CatalogueHome.h"
#include "fixtures/QtPrinters.h"
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

// A text in braces in a bencoded file gets its length, which depends on the home's path, in front.
QByteArray WithLengths(const QByteArray& content) {
  const QRegularExpressionMatch match =
      QRegularExpression(u"\\{(.*)\\}"_qs).match(QString::fromUtf8(content));
  const QByteArray text = match.captured(1).toUtf8();
  return QByteArray(content).replace(match.captured().toUtf8(), QByteArray::number(text.size()) + ':' + text);
}

// Puts the sample's files into the home, with the home's path for each "@HOME@".
void AddSample(TCatalogueHome& home, const QString& application) {
  const QString sample = SampleFolder(u"linux"_qs, application);
  QDirIterator files(sample, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
  while (files.hasNext()) {
    QByteArray content = FileBytes(files.next()).replace("@HOME@", NameToBytes(home.Tree.Path()));
    if (files.fileName().endsWith(u".config")) content = WithLengths(content);
    home.Tree.WriteFile(NameToBytes(files.filePath().mid(sample.size() + 1)), content);
  }
}

TEST(LinuxCatalogue, FindsTheFolderThatEachApplicationsSettingsName) {
  QStringList entries;
  for (const TXMLApplicationType& application : Applications(u"linux"_qs))
    entries.append(application.Name());
  for (const auto& [application, folder] : kFolders) {
    TCatalogueHome home;
    AddSample(home, application);
    home.Tree.MakeFolder(NameToBytes(folder));
    EXPECT_EQ(home.Found(), QStringList{folder + u'/'}) << qPrintable(application);
    EXPECT_TRUE(entries.removeOne(application));
  }
  EXPECT_EQ(entries, QStringList()) << "entries without a sample";
}

}  // namespace
