#include "download/DownloadApplication.h"
#include "fixtures/QtPrinters.h"
#include "fixtures/TempTree.h"
#include "platform/ComThread.h"

#include <gtest/gtest.h>

namespace {

constexpr char kFull[] = R"(<?xml version="1.0" encoding="UTF-8"?>
<DownloadApplication>
  <Application Name="first" ConfigInfoFrom="ini">
    <RegistryInfo>
      <RegistryRegType Value="r0"/><RegistryRootKey Value="r1"/><RegistryKeyPath Value="r2"/>
      <RegistryKeyName Value="r3"/>
    </RegistryInfo>
    <DefaultDownloadPath Value="path"/><DefaultDownloadPath Value="second"/>
    <DownloadDriveLetter Value="letter"/>
    <InstallInfo>
      <RegistryRootKey Value="i1"/><RegistryKeyPath Value="i2"/><RegistryKeyName Value="i3"/>
    </InstallInfo>
    <ConfigInfo>
      <ConfigDirectory Value="c1"/><ConfigPath Value="c2"/><ConfigSection Value="c3"/><ConfigName Value="c4"/>
    </ConfigInfo>
  </Application>
  <Other/>
  <Application/>
</DownloadApplication>)";

class CatalogueView : public testing::Test {
 protected:
  TXMLDownloadApplicationType Load(const QByteArray& content) {
    FTree.WriteFile("catalogue", content);
    return LoadDownloadApplication(FTree.Path("catalogue"));
  }
  const TComThread FComponents;
  TTempTree FTree;
};

QStringList ValuesOf(const TXMLApplicationType& application) {
  const auto install = application.InstallInfo();
  const auto config = application.ConfigInfo();
  const auto registry = application.RegistryInfo();
  return {application.Name(),
          application.ConfigInfoFrom(),
          application.DefaultDownloadPath().Value(),
          application.DownloadDriveLetter().Value(),
          install.RegistryRootKey().Value(),
          install.RegistryKeyPath().Value(),
          install.RegistryKeyName().Value(),
          config.ConfigDirectory().Value(),
          config.ConfigPath().Value(),
          config.ConfigSection().Value(),
          config.ConfigName().Value(),
          registry.RegistryRegType().Value(),
          registry.RegistryRootKey().Value(),
          registry.RegistryKeyPath().Value(),
          registry.RegistryKeyName().Value()};
}

}  // namespace

TEST_F(CatalogueView, EachValueComesFromItsOwnElement) {
  const auto root = Load(kFull);
  ASSERT_EQ(root.Count(), 2);
  EXPECT_EQ(ValuesOf(root.Application(0)).join(u' '),
            u"first ini path letter i1 i2 i3 c1 c2 c3 c4 r0 r1 r2 r3"_qs);
  EXPECT_EQ(ValuesOf(root.Application(1)).join(QString()), QString()) << "an application without anything";
}

TEST_F(CatalogueView, ValuesCanBeSetInMemory) {
  const auto root = Load("<DownloadApplication><Application/></DownloadApplication>");
  TXMLApplicationType application = root.Application(0);
  application.SetName(u"n"_qs);
  application.SetConfigInfoFrom(u"dat"_qs);
  application.ConfigInfo().ConfigName().SetValue(u"key"_qs);
  EXPECT_EQ(ValuesOf(root.Application(0)).join(u' ').simplified(), u"n dat key"_qs);
}

TEST_F(CatalogueView, AnEmptyCatalogueHasNoApplications) {
  EXPECT_EQ(Load("<DownloadApplication/>").Count(), 0);
}

TEST_F(CatalogueView, WhatIsNoCatalogueIsAnError) {
  EXPECT_THROW((void)LoadDownloadApplication(FTree.Path("missing")), TXmlError);
  EXPECT_THROW((void)Load("no XML"), TXmlError);
  EXPECT_THROW((void)Load("<Applications><Application/></Applications>"), TXmlError);
}
