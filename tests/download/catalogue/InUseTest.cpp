// When the catalogue of this system assumes an application's usual folder.
#include "download/catalogue/CatalogueHome.h"
#include "fixtures/QtPrinters.h"

namespace {

// The settings are there and empty, and so the reader falls to the catalogue's default.
QByteArray EmptySettings(const QString& kind) {
  if (kind == u"xml") return "<settings/>";
  return kind == u"dat" ? "de" : "";
}

}  // namespace

// It may lie in a folder that is found in any case.
TEST(CatalogueInUse, SettingsWithoutAFolderMeanTheDefault) {
  for (const TXMLApplicationType& application : Applications(TCatalogueHome::System())) {
    const QString kind = application.ConfigInfoFrom();
    const QString usual = application.DefaultDownloadPath().Value();
    const TXMLConfigInfoType config = application.ConfigInfo();
    const QString folder = config.ConfigDirectory().Value();
    if (kind == u"reg" || kind == u"keyvalue" || usual.isEmpty() || folder == u"InstallFolder") continue;
    TCatalogueHome home;
    home.Tree.WriteFile(home.Relative(folder + PathDelim + config.ConfigPath().Value()), EmptySettings(kind));
    home.Tree.MakeFolder(home.Relative(usual));
    const QStringList found = home.Found();
    ASSERT_EQ(found.size(), 1) << qPrintable(application.Name());
    EXPECT_TRUE((NameFromBytes(home.Relative(usual)) + u'/').startsWith(found[0])) << qPrintable(found[0]);
  }
}

// But for those of kind "reg", which have no file that could be missing.
TEST(CatalogueInUse, DefaultsOfApplicationsThatAreNotInUseDoNotCount) {
  TCatalogueHome home;
  QStringList ofRegistry;
  for (const TXMLApplicationType& application : Applications(TCatalogueHome::System())) {
    const QString usual = application.DefaultDownloadPath().Value();
    if (ExpandEnvironment(usual) == home.Tree.Path() || usual.isEmpty()) continue;
    const QByteArray folder = home.Relative(usual);
    home.Tree.MakeFolder(folder);
    if (application.ConfigInfoFrom() == u"reg") ofRegistry.append(NameFromBytes(folder) + u'/');
  }
  ofRegistry.removeDuplicates();
  EXPECT_EQ(home.Found(), ofRegistry);
  EXPECT_FALSE(ofRegistry.isEmpty());
}
