// The texts that the user sees, and the language files beside the program.
#include "fixtures/SystemTest.h"
#include "support/PLanguage.h"

#include <set>

namespace {

constexpr char kGerman[] =
    "\xef\xbb\xbf[Main]\nDisplayName=Deutsch\n"
    "[Tallyscope_M]\nm_size=Gr\xc3\xb6\xc3\x9f"
    "e\nM_Type=\nM_Hint=a = %s\nM_Twice=1\nM_TWICE=2\n"
    "[Tallyscope_FormMain]\nbtnOpen.Caption=\xc3\x96"
    "ffnen\n";

class TLanguageTest : public testing::Test {
 protected:
  TLanguageTest() { FTree.WriteFile("German.lng", kGerman); }

  void ExpectMessages(std::initializer_list<std::pair<QString, QString>> messages) const {
    for (const auto& [key, text] : messages)
      EXPECT_EQ(FLanguage.GetMessage(key, u"default"_qs), text) << qPrintable(key);
  }

  TTempTree FTree;
  TLanguage FLanguage{u"Tallyscope"_qs, FTree.Path()};
};

}  // namespace

TEST_F(TLanguageTest, TextsOfTheFileOverrideTheDefaultsAndMessagesAndFormsDontMix) {
  FLanguage.LoadLanguage(u"German"_qs);
  EXPECT_EQ(FLanguage.LanguageName() + FLanguage.DisplayName(), u"GermanDeutsch");
  ExpectMessages({{u"M_Size"_qs, u"Größe"_qs},  // case of keys
                  {u"M_Type"_qs, {}},           // an empty text wins over the default
                  {u"M_Hint"_qs, u"a = %s"_qs},
                  {u"M_Twice"_qs, u"2"_qs},
                  {u"M_None"_qs, u"default"_qs},
                  {u"btnOpen.Caption"_qs, u"default"_qs}});
  const QString form = u"Tallyscope_FormMain"_qs;
  EXPECT_EQ(FLanguage.ReadText(form, u"btnOpen.Caption"_qs, {}), u"Öffnen");
  EXPECT_EQ(FLanguage.ReadText(form, u"M_Size"_qs, u"default"_qs), u"default");
}

TEST_F(TLanguageTest, AMissingFileFallsBackToEnglish) {
  for (const QString& before : {QString(), u"German"_qs}) {
    if (!before.isEmpty()) FLanguage.LoadLanguage(before);
    FLanguage.LoadLanguage(u"None"_qs);
    EXPECT_EQ(FLanguage.LanguageName(), before) << "without that either nothing changes";
  }
  FTree.WriteFile("English.lng", "[Tallyscope_M]\nM_Size=Size!\n");
  for (const QString& name : {u"Klingon"_qs, QString()}) {
    FLanguage.LoadLanguage(name);
    EXPECT_EQ(FLanguage.LanguageName() + FLanguage.DisplayName(), u"EnglishEnglish") << "no section Main";
    ExpectMessages({{u"M_Size"_qs, u"Size!"_qs}, {u"M_Hint"_qs, u"default"_qs}});  // replaced as a whole
  }
}

TEST_F(TLanguageTest, ANameIsFoundInAnyCaseAndItsOwnFirst) {
  FTree.WriteFile("english.LNG", "[Main]\nDisplayName=English (UK)\n");
  const auto displayed = [this](const QString& name) {
    FLanguage.LoadLanguage(name);
    return FLanguage.DisplayName();
  };
  for (const QString& name : {u"german"_qs, u"GERMAN"_qs}) {
    EXPECT_EQ(displayed(name), u"Deutsch");
    EXPECT_EQ(FLanguage.LanguageName(), HasDrives() ? name : u"German"_qs);
  }
  EXPECT_EQ(displayed(u"none"_qs), u"English (UK)");
  if (HasDrives()) return;
  FTree.WriteFile("german.lng", "[Main]\nDisplayName=deutsch\n");
  FTree.MakeFolder("Dutch.lng");
  EXPECT_EQ(displayed(u"german"_qs) + displayed(u"German"_qs), u"deutschDeutsch");
  EXPECT_EQ(displayed(u"dutch"_qs), u"English (UK)") << "a folder is no language";
}

TEST_F(TLanguageTest, AFileThatCantBeReadThrows) {
  FTree.MakeUnreadable("German.lng");
  const TOrdinaryUser user;
  EXPECT_THROW(FLanguage.LoadLanguage(u"German"_qs), TIniFileError);
}

TEST(GetSuiteLanguageName, ReadsTheSettingsOfTheSuite) {
  TTestUser user;
  EXPECT_EQ(GetSuiteLanguageName(), u"English");
  const std::pair<QByteArray, QString> rows[] = {
      {"[Main]\nOther=1\n", u"English"_qs},
      {"[Other]\nLanguage=French\n[main]\nlanguage = German \n", u"German"_qs},
      {"[Main]\nLanguage=\n", {}}};
  for (const auto& [settings, name] : rows) {
    user.Home.WriteFile(TTestUser::AppData + "/Korvel/Hearthline V7/Main.ini", settings);
    EXPECT_EQ(GetSuiteLanguageName(), name);
  }
}

namespace {

// Key, with its section before it, and text.
std::vector<std::pair<QString, QString>> TextsOf(const QString& path) {
  TExtIniFile file;
  file.LoadFromFile(path);
  QStringList sections, keys;
  file.ReadSections(sections);
  std::vector<std::pair<QString, QString>> texts;
  for (const QString& section : sections) {
    file.ReadSection(section, keys);
    for (const QString& key : keys)
      texts.emplace_back(section + u'/' + key, file.ReadString(section, key, u"-"_qs));
  }
  return texts;
}

}  // namespace

TEST(LanguageFiles, HaveTheKeysOfEnglishInTheirOrderAndTextsThatFitTheirPlaces) {
  const QString folder = SourceFile(u"data/Toolbox_Language/"_qs);
  const auto english = TextsOf(folder + u"English.lng"_qs);
  const auto shape = [](const QString& text) {
    return std::tuple(text.isEmpty(), text.count(u"%s"_qs), text.endsWith(u"..."_qs), text.count(u'&'));
  };
  const QStringList files = QDir(folder).entryList({u"*.lng"_qs}, QDir::Files);
  EXPECT_GT(files.size(), 1);
  for (const QString& file : files) {
    SCOPED_TRACE(file.toStdString());
    const auto texts = TextsOf(folder + file);
    const QByteArray content = ReadWholeFile(folder + file).value_or(QByteArray());
    EXPECT_TRUE(content.startsWith("\xef\xbb\xbf") && content.isValidUtf8());
    ASSERT_EQ(texts.size(), english.size());
    std::set<QString> seen;  // keys, and letters of the menu bar
    for (size_t i = 0; i < texts.size(); ++i) {
      const auto& [key, text] = texts[i];
      EXPECT_EQ(key, english[i].first);
      EXPECT_EQ(shape(text), shape(english[i].second)) << qPrintable(key);
      const qsizetype mark = text.indexOf(u'&');
      EXPECT_TRUE(seen.insert(key.toLower()).second) << qPrintable(key);
      EXPECT_TRUE(mark < 0 || seen.insert(text.mid(mark, 2).toLower()).second) << qPrintable(key);
    }
  }
}

TEST(LanguageFiles, EnglishHasEveryMessageThatTheProgramAsksFor) {
  static const QRegularExpression message(u"\"(M_[A-Za-z_]+)\""_qs);
  TLanguage english(u"Tallyscope"_qs, SourceFile(u"data/Toolbox_Language"_qs));
  english.LoadLanguage(u"English"_qs);
  int found = 0;
  QDirIterator files(SourceFile(u"src"_qs), {u"*.cpp"_qs}, QDir::Files, QDirIterator::Subdirectories);
  while (files.hasNext()) {
    const QString source = QString::fromUtf8(ReadWholeFile(files.next()).value_or(QByteArray()));
    for (auto matches = message.globalMatch(source); matches.hasNext(); ++found) {
      const QString key = matches.next().captured(1);
      EXPECT_FALSE(english.GetMessage(key, {}).isEmpty()) << qPrintable(key + u" in "_qs + files.filePath());
    }
  }
  EXPECT_GT(found, 0) << "the sources were not found";
}
