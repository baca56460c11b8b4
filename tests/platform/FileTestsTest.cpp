#include "platform/FileTests.h"

#include "fixtures/NativePath.h"
#include "fixtures/OrdinaryUser.h"
#include "fixtures/TempTree.h"
#include "platform/FileEnumeration.h"

#include <gtest/gtest.h>

namespace {

TEST(FileTests, WhatStandsAtAPath) {
  TTempTree tree;
  const QByteArray odd = HasDrives() ? "file." : "file\xff";
  tree.MakeFile(odd, 1);
  tree.MakeFolder("folder");
  tree.MakeLink("to file", odd);
  tree.MakeLink("to folder", "folder");
  tree.MakeLink("broken", "nowhere");
  tree.MakeSystemEntry("of the system");
  const QByteArray deep = tree.MakeChain(QByteArray(100, 'd'), HasDrives() ? 30 : 50);
  tree.MakeFile(deep + "/file", 1);

  const struct {
    QByteArray Name;
    bool File;
    bool Directory;
  } rows[] = {
      {odd, true, false},
      {"folder", false, true},
      {"folder/", false, true},
      {"to file", true, false},
      {"to folder", false, true},
      {"broken", false, false},
      {"of the system", true, false},
      {"missing", false, false},
      {odd + '/', false, false},
      {deep, false, true},
      {deep + "/file", true, false},
      {deep + "/none", false, false},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(FileExists(tree.Path(row.Name)), row.File) << row.Name.data();
    EXPECT_EQ(DirectoryExists(tree.Path(row.Name)), row.Directory) << row.Name.data();
    EXPECT_EQ(DirectoryReadable(tree.Path(row.Name)), row.Directory) << row.Name.data();
  }
  EXPECT_FALSE(FileExists(QString()) || DirectoryExists(QString()) || DirectoryReadable(QString()));
}

TEST(FileTests, AFolderThatMayNotBeListedIsThereAndNotReadable) {
  TTempTree tree;
  tree.MakeFile("closed/inside", 1);
  tree.MakeUnreadable("closed");
  const TOrdinaryUser user;
  EXPECT_TRUE(DirectoryExists(tree.Path("closed")));
  EXPECT_FALSE(DirectoryReadable(tree.Path("closed")));
  EXPECT_TRUE(FileExists(tree.Path("closed/inside"))) << "its entries can still be looked at";
}

TEST(FileTests, StatusIsThatOfTheEntryItself) {
  TTempTree tree;
  tree.MakeFile("dotless/file", 12);
  const QByteArray hidden = tree.Hide("dotless");
  tree.MakeFolder("plain");
  tree.MakeLink("link", "plain");
  const unsigned archive = HasDrives() ? 0x20 : 0;
  const auto ofLink = HasDrives() ? TFileStatus{kAttributeReparse | kAttributeDirectory, 0}
                                  : TFileStatus{kAttributeReparse, 5};
  const struct {
    QByteArray Name;
    TFileStatus Status;
  } rows[] = {
      {hidden + "/file", {archive, 12}},
      {hidden, {kAttributeDirectory | kAttributeHidden, 0}},
      {hidden + "//", {kAttributeDirectory | kAttributeHidden, 0}},
      {"link", ofLink},
      {"link/", ofLink},
  };
  for (const auto& row : rows) {
    const auto status = GetFileStatus(tree.Path(row.Name));
    ASSERT_TRUE(status) << row.Name.data();
    EXPECT_EQ(status->Attributes, row.Status.Attributes) << row.Name.data();
    EXPECT_EQ(status->Size, row.Status.Size) << row.Name.data();
  }
  EXPECT_FALSE(GetFileStatus(tree.Path("missing")));
  EXPECT_FALSE(GetFileStatus(QString()));
}

TEST(FileTests, WholeFilesUpToTheBound) {
  TTempTree tree;
  const QByteArray content = QByteArray("line\0\xff\n", 7).repeated(10000);
  tree.WriteFile("file", content);
  tree.MakeFile("empty", 0);
  EXPECT_EQ(ReadWholeFile(tree.Path("file")), content);
  EXPECT_EQ(ReadWholeFile(tree.Path("file"), content.size()), content);
  EXPECT_FALSE(ReadWholeFile(tree.Path("file"), content.size() - 1));
  EXPECT_EQ(ReadWholeFile(tree.Path("empty")), QByteArray());
  for (const char* const name : {"missing", "."})
    EXPECT_FALSE(ReadWholeFile(tree.Path(name))) << name;
}

}  // namespace
