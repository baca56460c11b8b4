// The language files beside the program: every one has the keys of English.lng, in its order, and texts that
// fit their places.
#include "platform/FileTests.h"
#include "support/ExtIniFiles.h"
#include "support/PLanguage.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

#include <set>

namespace {

QString SourceRoot() {
  return qEnvironmentVariable("TALLYSCOPE_SOURCE_DIR");
}

QString LanguageFolder() {
  return SourceRoot() + u"/data/Toolbox_Language"_qs;
}

QStringList LanguageNames() {
  QStringList names = QDir(LanguageFolder()).entryList({u"*.lng"_qs}, QDir::Files, QDir::Name);
  return names.replaceInStrings(u".lng"_qs, QString());
}

QString PathOf(const QString& name) {
  return LanguageFolder() + u'/' + name + u".lng"_qs;
}

struct TText {
  QString Section, Key, Value;
};

std::vector<TText> TextsOf(const QString& name) {
  TExtIniFile file;
  file.LoadFromFile(PathOf(name));
  QStringList sections;
  file.ReadSections(sections);
  std::vector<TText> texts;
  for (const QString& section : sections) {
    QStringList keys;
    file.ReadSection(section, keys);
    for (const QString& key : keys)
      texts.push_back({section, key, file.ReadString(section, key, u"-"_qs)});
  }
  return texts;
}

class TEachLanguage : public testing::TestWithParam<QString> {};

}  // namespace

TEST_P(TEachLanguage, HasTheKeysOfEnglishInTheirOrder) {
  const auto english = TextsOf(u"English"_qs);
  const auto texts = TextsOf(GetParam());
  const QByteArray content = ReadWholeFile(PathOf(GetParam())).value_or(QByteArray());
  EXPECT_TRUE(content.startsWith("\xef\xbb\xbf") && content.isValidUtf8());
  std::set<QString> seen;
  ASSERT_EQ(texts.size(), english.size());
  for (size_t i = 0; i < texts.size(); ++i) {
    EXPECT_EQ(texts[i].Section + texts[i].Key, english[i].Section + english[i].Key);
    EXPECT_TRUE(seen.insert((texts[i].Section + texts[i].Key).toLower()).second) << qPrintable(texts[i].Key);
    EXPECT_EQ(texts[i].Value.isEmpty(), english[i].Value.isEmpty()) << qPrintable(texts[i].Key);
    EXPECT_EQ(texts[i].Value.count(u"%s"_qs), english[i].Value.count(u"%s"_qs)) << qPrintable(texts[i].Key);
    EXPECT_EQ(texts[i].Value.endsWith(u"..."_qs), english[i].Value.endsWith(u"..."_qs))
        << qPrintable(texts[i].Key);
  }
}

INSTANTIATE_TEST_SUITE_P(All, TEachLanguage, testing::ValuesIn(LanguageNames()),
                         [](const auto& name) { return QString(name.param).remove(u' ').toStdString(); });

TEST(LanguageFiles, EnglishHasEveryMessageThatTheProgramAsksFor) {
  static const QRegularExpression message(u"\"(M_[A-Za-z_]+)\""_qs);
  TLanguage english(u"Tallyscope"_qs, LanguageFolder());
  english.LoadLanguage(u"English"_qs);
  int found = 0;
  QDirIterator files(SourceRoot() + u"/src"_qs, {u"*.cpp"_qs}, QDir::Files, QDirIterator::Subdirectories);
  while (files.hasNext()) {
    QFile file(files.next());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    for (auto matches = message.globalMatch(QString::fromUtf8(file.readAll())); matches.hasNext(); ++found) {
      const QString key = matches.next().captured(1);
      EXPECT_FALSE(english.GetMessage(key, QString()).isEmpty())
          << qPrintable(key + u" in "_qs + file.fileName());
    }
  }
  EXPECT_GT(found, 0) << "the sources were not found";
}
