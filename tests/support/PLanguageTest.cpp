#include "fixtures/NativePath.h"
#include "fixtures/OrdinaryUser.h"
#include "fixtures/TempTree.h"
#include "fixtures/TestUser.h"
#include "support/PLanguage.h"

#include <gtest/gtest.h>

namespace {

class TLanguageTest : public testing::Test {
 protected:
  QString Message(const char16_t* key) const {
    return FLanguage.GetMessage(QString::fromUtf16(key), u"default"_qs);
  }

  TTempTree FTree;
  TLanguage FLanguage{u"Tallyscope"_qs, FTree.Path()};
};

constexpr char kGerman[] =
    "\xef\xbb\xbf[Main]\nDisplayName=Deutsch\n"
    "[Tallyscope_M]\nm_size=Gr\xc3\xb6\xc3\x9f"
    "e\nM_Type=\nM_Hint=a = %s\nM_Twice=1\nM_TWICE=2\n"
    "[Tallyscope_FormMain]\nbtnOpen.Caption=\xc3\x96"
    "ffnen\n";

}  // namespace

TEST_F(TLanguageTest, TextsOfTheFileOverrideTheDefaults) {
  FTree.WriteFile("German.lng", kGerman);
  FLanguage.LoadLanguage(u"German"_qs);
  EXPECT_EQ(FLanguage.LanguageName(), u"German");
  EXPECT_EQ(FLanguage.DisplayName(), u"Deutsch");
  EXPECT_EQ(Message(u"M_Size"), u"Größe") << "case of keys";
  EXPECT_EQ(Message(u"M_Type"), u"") << "an empty text wins over the default";
  EXPECT_EQ(Message(u"M_Hint"), u"a = %s");
  EXPECT_EQ(Message(u"M_Twice"), u"2");
  EXPECT_EQ(Message(u"M_None"), u"default");
}

TEST_F(TLanguageTest, MessagesAndFormsDontMix) {
  FTree.WriteFile("German.lng", kGerman);
  FLanguage.LoadLanguage(u"German"_qs);
  const QString form = u"Tallyscope_FormMain"_qs;
  EXPECT_EQ(Message(u"btnOpen.Caption"), u"default");
  EXPECT_EQ(FLanguage.ReadText(form, u"btnOpen.Caption"_qs, QString()), u"Öffnen");
  EXPECT_EQ(FLanguage.ReadText(form, u"M_Size"_qs, u"default"_qs), u"default");
  EXPECT_EQ(FLanguage.ReadText(u"Tallyscope_FormOther"_qs, u"x"_qs, u"default"_qs), u"default");
}

TEST_F(TLanguageTest, AMissingFileFallsBackToEnglish) {
  FTree.WriteFile("German.lng", kGerman);
  FLanguage.LoadLanguage(u"None"_qs);
  EXPECT_EQ(FLanguage.LanguageName(), u"") << "without that either nothing changes";
  FLanguage.LoadLanguage(u"German"_qs);
  FLanguage.LoadLanguage(u"None"_qs);
  EXPECT_EQ(FLanguage.LanguageName(), u"German");
  FTree.WriteFile("English.lng", "[Tallyscope_M]\nM_Size=Size!\n");
  for (const QString& name : {u"Klingon"_qs, QString()}) {
    FLanguage.LoadLanguage(name);
    EXPECT_EQ(FLanguage.LanguageName(), u"English");
    EXPECT_EQ(FLanguage.DisplayName(), u"English") << "no section Main";
    EXPECT_EQ(Message(u"M_Size"), u"Size!");
    EXPECT_EQ(Message(u"M_Hint"), u"default") << "the messages are replaced as a whole";
  }
}

TEST_F(TLanguageTest, ANameIsFoundInAnyCaseAndItsOwnFirst) {
  FTree.WriteFile("German.lng", kGerman);
  for (const char16_t* name : {u"german", u"GERMAN"}) {
    TLanguage language(u"Tallyscope"_qs, FTree.Path());
    language.LoadLanguage(QString::fromUtf16(name));
    EXPECT_EQ(language.LanguageName(), HasDrives() ? QString::fromUtf16(name) : u"German"_qs);
    EXPECT_EQ(language.DisplayName(), u"Deutsch");
  }
  FTree.WriteFile("english.LNG", "[Main]\nDisplayName=English (UK)\n");
  FLanguage.LoadLanguage(u"none"_qs);
  EXPECT_EQ(FLanguage.DisplayName(), u"English (UK)");
  if (HasDrives()) return;
  FTree.WriteFile("german.lng", "[Main]\nDisplayName=deutsch\n");
  FLanguage.LoadLanguage(u"german"_qs);
  EXPECT_EQ(FLanguage.DisplayName(), u"deutsch");
  FTree.MakeFolder("Dutch.lng");
  FLanguage.LoadLanguage(u"dutch"_qs);
  EXPECT_EQ(FLanguage.DisplayName(), u"English (UK)") << "a folder is no language";
}

TEST_F(TLanguageTest, AFileThatCantBeReadThrows) {
  FTree.WriteFile("German.lng", kGerman);
  FTree.MakeUnreadable("German.lng");
  const TOrdinaryUser user;
  EXPECT_THROW(FLanguage.LoadLanguage(u"German"_qs), TIniFileError);
}

TEST(GetSuiteLanguageName, ReadsTheSettingsOfTheSuite) {
  TTestUser user;
  EXPECT_EQ(GetSuiteLanguageName(), u"English");
  const QByteArray settings = TTestUser::AppData + "/Korvel/Hearthline V7/Main.ini";
  user.Home.WriteFile(settings, "[Main]\nOther=1\n");
  EXPECT_EQ(GetSuiteLanguageName(), u"English");
  user.Home.WriteFile(settings, "[Other]\nLanguage=French\n[main]\nlanguage = German \n");
  EXPECT_EQ(GetSuiteLanguageName(), u"German");
  user.Home.WriteFile(settings, "[Main]\nLanguage=\n");
  EXPECT_EQ(GetSuiteLanguageName(), u"");
}
