#include "platform/Paths.h"

#include "fixtures/NativePath.h"
#include "fixtures/QtPrinters.h"

#include <gtest/gtest.h>

namespace {

QString Text(const char16_t* text) {
  return QString::fromUtf16(text);
}

QString Path(const char16_t* path) {
  return NativePath(Text(path));
}

TEST(Paths, PartsOfAPath) {
  const struct {
    const char16_t* Path;
    const char16_t* Dir;
    const char16_t* FilePath;
    const char16_t* Name;
    const char16_t* Ext;
  } rows[] = {
      {u"/a/b.c", u"/a", u"/a/", u"b.c", u".c"},
      {u"/a/", u"/a", u"/a/", u"", u""},
      {u"/a", u"/", u"/", u"a", u""},
      {u"/", u"/", u"/", u"", u""},
      {u"a", u"", u"", u"a", u""},
      {u"", u"", u"", u"", u""},
      {u"ab/c", u"ab", u"ab/", u"c", u""},
      {u"/a.d/b", u"/a.d", u"/a.d/", u"b", u""},
      {u"/a//b", u"/a", u"/a//", u"b", u""},
      {u"/a/.b", u"/a", u"/a/", u".b", u".b"},
      {u"x.tar.gz", u"", u"", u"x.tar.gz", u".gz"},
      {u"/a/b.", u"/a", u"/a/", u"b.", u"."},
  };
  for (const auto& row : rows) {
    const QString path = Path(row.Path);
    SCOPED_TRACE(path.toStdString());
    EXPECT_EQ(ExtractFileDir(path), Path(row.Dir));
    EXPECT_EQ(ExtractFilePath(path), Path(row.FilePath));
    EXPECT_EQ(ExtractFileName(path), Text(row.Name));
    EXPECT_EQ(ExtractFileExt(path), Text(row.Ext));
  }
}

TEST(Paths, DelimitersAtTheEnd) {
  const struct {
    const char16_t* Path;
    const char16_t* With;
    const char16_t* Without;
  } rows[] = {
      {u"/a", u"/a/", u"/a"}, {u"/a/", u"/a/", u"/a"},   {u"/", u"/", u"/"},
      {u"a/", u"a/", u"a"},   {u"/a//", u"/a//", u"/a"}, {u"//", u"//", HasDrives() ? u"/" : u"//"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(IncludeTrailingPathDelimiter(Path(row.Path)), Path(row.With));
    EXPECT_EQ(ExcludeTrailingPathDelimiter(Path(row.Path)), Path(row.Without));
  }
  EXPECT_EQ(IncludeTrailingPathDelimiter(QString()), QString(PathDelim));
  EXPECT_EQ(ExcludeTrailingPathDelimiter(QString()), QString());
}

TEST(Paths, SameFolderAsideFromDelimitersAtTheEnd) {
  EXPECT_TRUE(SameFolder(Path(u"/a/b"), Path(u"/a/b/")));
  EXPECT_TRUE(SameFolder(Path(u"/"), Path(u"//")));
  EXPECT_EQ(SameFolder(Path(u"/a/b"), Path(u"/a/B")), HasDrives());
  EXPECT_FALSE(SameFolder(Path(u"/a/\u00e4"), Path(u"/a/\u00c4"))) << "no other letters fold";
  EXPECT_FALSE(SameFolder(Path(u"/"), QString()));
}

TEST(Paths, CompareTextFoldsAsciiLettersOnly) {
  EXPECT_EQ(CompareText(Text(u"AbZ"), Text(u"aBz")), 0);
  EXPECT_NE(CompareText(Text(u"\u00c4"), Text(u"\u00e4")), 0);
  EXPECT_NE(CompareText(Text(u"["), Text(u"{")), 0) << "the neighbours of the letters";
  EXPECT_LT(CompareText(Text(u"ab"), Text(u"abc")), 0);
  EXPECT_GT(CompareText(Text(u"B"), Text(u"a")), 0);
  EXPECT_LT(CompareText(Text(u"_"), Text(u"A")), 0) << "letters compare as small ones";
}

TEST(Paths, WhatIsAbsolute) {
  const struct {
    const char16_t* Path;
    bool OnLinux;
    bool OnWindows;
  } rows[] = {
      {u"", false, false},       {u"a", false, false},        {u"/", true, false},  {u"/a", true, false},
      {u"C:\\a", false, true},   {u"c:", false, true},        {u":", false, false}, {u"\\a", false, false},
      {u"a/C:\\", false, false}, {u"\\\\s\\t", false, false},
  };
  for (const auto& row : rows)
    EXPECT_EQ(IsAbsolutePath(Text(row.Path)), HasDrives() ? row.OnWindows : row.OnLinux)
        << Text(row.Path).toStdString();
}

}  // namespace
