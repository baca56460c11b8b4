// Which folders stay in the list, and in which order.
#include "download/DownloadDirectoryScan.h"
#include "fixtures/NativePath.h"
#include "fixtures/QtPrinters.h"
#include "fixtures/TempTree.h"

#include <gtest/gtest.h>

namespace {

class AddDirectory : public testing::Test {
 protected:
  AddDirectory() {
    for (const char* name : {"Downloads/Sub/Deep", "Down", "A", "B c \xc3\xa9"})
      FTree.MakeFolder(name);
    FTree.MakeFile("file", 1);
  }

  void Add(const QByteArray& name) { TDownloadDirectoryScan::AddDirectory(FList, FTree.Path(name)); }

  // What the list holds, relative to the tree, with "/" for the delimiter.
  [[nodiscard]] QString List() const {
    QString names;
    for (const QString& dir : FList)
      names += (names.isEmpty() ? QString() : u", "_qs) + dir.mid(FTree.Path().size() + 1);
    return names.replace(PathDelim, u'/');
  }

  TTempTree FTree;
  QStringList FList;
};

QStringList NativePaths(QStringList paths) {
  for (QString& path : paths)
    path = NativePath(path);
  return paths;
}

// What stays of the folders, none of which needs to exist. All paths are as on Linux.
QStringList Filtered(const QStringList& directories, const QStringList& locations,
                     const QStringList& volumes = {u"/"_qs}) {
  TDownloadDirectoryScan scan;
  scan.FDirectories = NativePaths(directories);
  scan.FilterByLocations(NativePaths(locations), NativePaths(volumes));
  QStringList kept;
  for (const QString& directory : directories)
    if (scan.FDirectories.contains(NativePath(directory))) kept.append(directory);
  EXPECT_EQ(NativePaths(kept), scan.FDirectories);
  return kept;
}

}  // namespace

TEST_F(AddDirectory, TheOuterOfTwoNestedFoldersStays) {
  Add("Downloads");
  Add("Downloads/Sub/");
  Add("Downloads");
  EXPECT_EQ(List(), u"Downloads/"_qs);
}

TEST_F(AddDirectory, AnOuterFolderGoesToTheEndAndTakesTheLastInnerOneAlong) {
  Add("Downloads/Sub/Deep");
  Add("A");
  Add("Downloads/Sub/");
  EXPECT_EQ(List(), u"A/, Downloads/Sub/"_qs);
  Add("Down");
  Add("Downloads/");
  EXPECT_EQ(List(), u"A/, Down/, Downloads/"_qs);
}

TEST_F(AddDirectory, ANameThatBeginsLikeAnotherIsAnotherFolder) {
  Add("Down");
  Add("Downloads");
  Add("B c \xc3\xa9");
  EXPECT_EQ(List(), u"Down/, Downloads/, B c é/"_qs);
}

TEST_F(AddDirectory, WhatIsNoFolderIsDropped) {
  Add("missing");
  Add("file");
  TDownloadDirectoryScan::AddDirectory(FList, {});
  EXPECT_EQ(List(), QString());
}

TEST_F(AddDirectory, CaseTellsFoldersApartWhereTheFileSystemDoes) {
  FTree.MakeFolder("a");
  Add("A");
  Add("a");
  EXPECT_EQ(List(), HasDrives() ? u"A/"_qs : u"A/, a/"_qs);
  EXPECT_EQ(Filtered({u"/d/A/"_qs, u"/d/\u00c4/"_qs}, {u"/D/a"_qs, u"/d/\u00e4"_qs}),
            HasDrives() ? QStringList(u"/d/A/"_qs) : QStringList());
}

// In the Japanese code page the katakana so ends in the byte of the delimiter and gets none.
TEST_F(AddDirectory, TheDelimiterIsLookedForInTheAnsiCodePage) {
  const QByteArray so = "\xe3\x82\xbd";
  const QByteArray day = "\xe6\x97\xa5";
  for (const QByteArray& name : {so, day}) {
    FTree.MakeFolder(name);
    Add(name);
  }
  const bool japanese = QString::fromUtf8(so).toLocal8Bit() == "\x83\x5c";
  EXPECT_EQ(List(), japanese ? u"ソ, 日/"_qs : u"ソ/, 日/"_qs);
}

TEST(FilterByLocations, OnlyWhatBeginsWithALocationStays) {
  const QStringList all{u"/d/abc/"_qs, u"/d/abcdef/"_qs, u"/d/x/"_qs, u"/e/y/"_qs};
  EXPECT_EQ(Filtered(all, {u"/d/abc"_qs}), QStringList({u"/d/abc/"_qs, u"/d/abcdef/"_qs}));
  EXPECT_EQ(Filtered(all, {u"/e/"_qs, u"/d/abc/"_qs}), QStringList({u"/d/abc/"_qs, u"/e/y/"_qs}));
  EXPECT_EQ(Filtered(all, {u"/"_qs}), all);
  EXPECT_EQ(Filtered(all, {u"/d/x/deeper"_qs}), QStringList());
  EXPECT_EQ(Filtered(all, {}), QStringList());
}

TEST(FilterByLocations, OfNestedFoldersTheOuterOnesStay) {
  EXPECT_EQ(Filtered({u"/d/a/b/"_qs, u"/d/a/"_qs, u"/d/a/b/c/"_qs, u"/e/"_qs}, {u"/"_qs}),
            QStringList({u"/d/a/"_qs, u"/e/"_qs}));
}

TEST(FilterByLocations, AnotherVolumeBelowALocationIsNotPartOfIt) {
  const QStringList volumes{u"/"_qs, u"/home/"_qs};
  const QStringList all{u"/home/me/dl/"_qs, u"/homework/"_qs, u"/srv/"_qs};
  const QStringList atHome{u"/home/me/dl/"_qs};
  EXPECT_EQ(Filtered(all, {u"/"_qs}, volumes), QStringList({u"/homework/"_qs, u"/srv/"_qs}));
  EXPECT_EQ(Filtered(all, {u"/home/"_qs}, volumes), atHome);
  EXPECT_EQ(Filtered(all, {u"/home"_qs}, volumes), QStringList({u"/home/me/dl/"_qs, u"/homework/"_qs}));
  EXPECT_EQ(Filtered(all, {u"/home/me"_qs}, volumes), atHome);
  EXPECT_EQ(Filtered(all, {u"/"_qs, u"/home/"_qs}, volumes), all);
}
