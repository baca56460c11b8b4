#include "platform/PrivateProfile.h"

#include "fixtures/NativePath.h"
#include "fixtures/QtPrinters.h"
#include "fixtures/TempTree.h"
#include "platform/AnsiText.h"
#include "platform/Paths.h"

#include <gtest/gtest.h>

#include <QDir>

namespace {

// The value as bytes, "?" for the default.
QByteArray Read(const QByteArray& content, const char* section, const char* key) {
  TTempTree tree;
  tree.WriteFile("settings.ini", content);
  return NameToBytes(ReadPrivateProfile(tree.Path("settings.ini"), QString::fromUtf8(section),
                                        QString::fromUtf8(key), QStringLiteral("?")));
}

TEST(PrivateProfile, ValuesByTheRulesOfTheSystem) {
  const QByteArray content =
      "key=before any section\r\n"
      "; [Main]\r\n"
      "  [ Main ]  \r\n"
      ";Key=comment\r\n"
      "no equals sign\r\n"
      "  Key \t= a = b ; c  \r\n"
      "Key=second\r\n"
      "Quoted=\"  blanks kept \"\r\n"
      "Single='it''\r\n"
      "Half=\"open\r\n"
      "Lone=\"\r\n"
      "Empty=\r\n"
      "[Other]\n"
      "Key=other\n"
      "[main]\n"
      "Late=never seen\n";
  const struct {
    const char* Section;
    const char* Key;
    const char* Value;
  } rows[] = {
      {"Main", "Key", "a = b ; c"}, {"MAIN", "kEY", "a = b ; c"}, {"Main", "Quoted", "  blanks kept "},
      {"Main", "Single", "it'"},    {"Main", "Half", "\"open"},   {"Main", "Lone", "\""},
      {"Main", "Empty", ""},        {"Other", "Key", "other"},    {"Main", "Late", "?"},
      {"Main", "missing", "?"},     {"Missing", "Key", "?"},      {"Main", "no equals sign", "?"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(Read(content, row.Section, row.Key), row.Value) << row.Section << ' ' << row.Key;
}

// Windows: as Wine's service answers, and the one of Windows may differ again.
TEST(PrivateProfile, OddLinesAndNames) {
  const QByteArray content =
      "key=before any section\n"
      "[Main]\n"
      ";Key=comment\n"
      "Raw=\xe9\xff\n"
      "caf\xc3\xa9=name\n"
      "[no end\n"
      "Key=unfinished";
  const struct {
    const char* Section;
    const char* Key;
    const char* OnLinux;
    const char* OnWindows;
  } rows[] = {
      {"Main", "Raw", "\xe9\xff", "\xc3\xa9\xc3\xbf"},
      {"Main", "CAF\xc3\x89", "name", "?"},
      {"no end", "Key", "unfinished", "?"},
      {"", "key", "?", "before any section"},
      {"Main", ";Key", "?", "comment"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(Read(content, row.Section, row.Key), HasDrives() ? row.OnWindows : row.OnLinux) << row.Key;
}

QByteArray Utf16(const QString& text, bool bigEndian) {
  QByteArray bytes;
  for (const QChar c : text) {
    bytes += static_cast<char>(bigEndian ? c.row() : c.cell());
    bytes += static_cast<char>(bigEndian ? c.cell() : c.row());
  }
  return bytes;
}

TEST(PrivateProfile, AByteOrderMarkDecidesTheEncoding) {
  const QString text = QStringLiteral(u"[Main]\r\nLanguage=Fran\u00e7ais\r\n");
  for (const QByteArray& content : {"\xef\xbb\xbf" + text.toUtf8(), "\xff\xfe" + Utf16(text, false),
                                    "\xfe\xff" + Utf16(text, true), TextToAnsi(text)})
    EXPECT_EQ(Read(content, "Main", "Language"),
              "Fran\xc3\xa7"
              "ais")
        << content.toHex().data();
}

TEST(PrivateProfile, WhatCantBeReadGivesTheDefault) {
  TTempTree tree;
  const QString fallBack = QStringLiteral(" English ");
  for (const QString& file : {tree.Path("missing.ini"), tree.Path(), QString()})
    EXPECT_EQ(ReadPrivateProfile(file, QStringLiteral("Main"), QStringLiteral("Language"), fallBack),
              fallBack);
}

}  // namespace
