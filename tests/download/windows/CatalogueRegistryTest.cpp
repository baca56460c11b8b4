// The catalogue's entries that go by the registry, with what the applications write there.
#include "download/catalogue/CatalogueHome.h"
#include "fixtures/QtPrinters.h"
#include "fixtures/windows/RegistryKey.h"

TEST(CatalogueRegistry, AFolderThatTheRegistryNamesIsFound) {
  int tried = 0;
  for (const TXMLApplicationType& application : Applications(u"windows"_qs)) {
    if (application.ConfigInfoFrom() != u"reg") continue;
    TCatalogueHome home;
    home.Tree.MakeFolder("from the registry");
    const TXMLRegistryInfoType registry = application.RegistryInfo();
    TTempRegistryKey key(HKEY_CURRENT_USER, registry.RegistryKeyPath().Value());
    key.SetText(registry.RegistryKeyName().Value(), home.Tree.Path("from the registry"));
    EXPECT_EQ(home.Found(), QStringList(u"from the registry/"_qs)) << qPrintable(application.Name());
    ++tried;
  }
  EXPECT_GT(tried, 0);
}

TEST(CatalogueRegistry, SettingsLieInTheInstallationFolderThatTheRegistryNames) {
  int tried = 0;
  for (const TXMLApplicationType& application : Applications(u"windows"_qs)) {
    const TXMLConfigInfoType config = application.ConfigInfo();
    if (config.ConfigDirectory().Value() != u"InstallFolder") continue;
    ASSERT_EQ(application.ConfigInfoFrom(), u"ini");
    TCatalogueHome home;
    home.Tree.MakeFolder("incoming");
    const QString settings = u"[%1]\n%2=%3\n"_qs.arg(config.ConfigSection().Value(),
                                                     config.ConfigName().Value(), home.Tree.Path("incoming"));
    home.Tree.WriteFile("program/" + NameToBytes(config.ConfigPath().Value()), settings.toLocal8Bit());
    const TXMLInstallInfoType install = application.InstallInfo();
    TTempRegistryKey key(HKEY_CURRENT_USER, install.RegistryKeyPath().Value());
    key.SetText(install.RegistryKeyName().Value(), home.Tree.Path("program"));
    EXPECT_EQ(home.Found(), QStringList(u"incoming/"_qs)) << qPrintable(application.Name());
    ++tried;
  }
  EXPECT_GT(tried, 0);
}
