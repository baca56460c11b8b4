// The Windows catalogue's keys in settings as Windows applications write them. The files are found by the
// samples' own folders here; the readers are the same on all systems.
#include "download/ConfigReaders.h"
#include "download/catalogue/CatalogueHome.h"
#include "fixtures/QtPrinters.h"
#include "platform/ComThread.h"

#include <gtest/gtest.h>

#include <map>

namespace {

const TSampleFolder kFolders[] = {
    {u"eMule"_qs, u"D:\\eMule\\Incoming\\"_qs},
    {u"eMule (program folder)"_qs, u"C:\\Program Files\\eMule\\Incoming"_qs},
    {u"Nicotine+"_qs, u"D:\\Music\\from others"_qs},
    {u"Claws Mail"_qs, u"D:\\Mail\\Attachments"_qs},
    {u"Sylpheed"_qs, u"D:\\Letters"_qs},
    {u"MuWire"_qs, u"D:\\MuWire Downloads"_qs},
    {u"FrostWire"_qs, u"D:\\FrostWire\\Torrent Data"_qs},
    {u"FrostWire 4"_qs, u"D:\\Frost\\Saved"_qs},
    {u"LimeWire"_qs, u"D:\\Lime\\Saved"_qs},
    {u"NZBGet"_qs, u"C:\\ProgramData\\NZBGet"_qs},
    {u"DC++"_qs, u"D:\\DC\\"_qs},
    {u"ApexDC++"_qs, u"D:\\Apex\\"_qs},
    {u"StrongDC++"_qs, u"D:\\Strong\\"_qs},
    {u"AirDC++"_qs, u"D:\\Air & more\\"_qs},
    {u"BitComet"_qs, u"D:\\Comet\\"_qs},
    {u"Pidgin"_qs, u"D:\\From friends"_qs},
    {u"Pan"_qs, u"D:\\Usenet"_qs},
    {u"uTorrent"_qs, u"D:\\uTorrent\\active"_qs},
    {u"uTorrent (completed)"_qs, u"E:\\uTorrent\\done"_qs},
    {u"BitTorrent"_qs, u"D:\\BitTorrent\\active"_qs},
    {u"BitTorrent (completed)"_qs, u"E:\\BitTorrent\\done"_qs},
    {u"BiglyBT"_qs, u"D:\\Bigly"_qs},
    {u"Vuze"_qs, u"D:\\Vuze Downloads"_qs},
};

QString ReadSample(const TXMLApplicationType& application) {
  const TXMLConfigInfoType config = application.ConfigInfo();
  const QString kind = application.ConfigInfoFrom();
  const QString section = config.ConfigSection().Value();
  const QString name = config.ConfigName().Value();
  const QString file =
      SampleFolder(u"windows"_qs, application.Name()) + u'/' + config.ConfigPath().Value().section(u'\\', -1);
  if (kind == u"ini") return ReadFromIni(file, section, name, u"default"_qs);
  if (kind == u"keyvalue") return ReadFromKeyValue(file, name);
  if (kind == u"xml") return ReadFromXml(file, section, u"default"_qs);
  return ReadFromDat(file, name, u"default"_qs);
}

TEST(WindowsCatalogue, EachSettingsFileGivesTheFolderThatItNames) {
  const TComThread components;
  std::map<QString, QString> read;
  for (const TXMLApplicationType& application : Applications(u"windows"_qs)) {
    if (application.ConfigInfoFrom() != u"reg") read[application.Name()] = ReadSample(application);
  }
  std::map<QString, QString> named;
  for (const auto& [application, folder] : kFolders)
    named[application] = folder;
  EXPECT_EQ(read, named);
}

}  // namespace
