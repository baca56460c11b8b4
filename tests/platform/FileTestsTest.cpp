#include "platform/FileTests.h"

#include "fixtures/OrdinaryUser.h"
#include "fixtures/TempTree.h"
#include "platform/FileEnumeration.h"

#include <gtest/gtest.h>

namespace {

TEST(FileTests, WhatStandsAtAPath) {
  TTempTree tree;
  tree.MakeFile("file\xff", 1);
  tree.MakeFolder("folder");
  tree.MakeLink("to file", "file\xff");
  tree.MakeLink("to folder", "folder");
  tree.MakeLink("broken", "nowhere");
  tree.MakeFifo("pipe");
  const QByteArray deep = tree.MakeChain(QByteArray(100, 'd'), 50);
  tree.MakeFile(deep + "/file", 1);

  const struct {
    QByteArray Name;
    bool File;
    bool Directory;
  } rows[] = {
      {"file\xff", true, false}, {"folder", false, true},       {"folder/", false, true},
      {"to file", true, false},  {"to folder", false, true},    {"broken", false, false},
      {"pipe", true, false},     {"missing", false, false},     {"file\xff/", false, false},
      {deep, false, true},       {deep + "/file", true, false}, {deep + "/none", false, false},
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
  tree.SetMode("closed", 0311);
  tree.SetMode(".", 0755);
  const TOrdinaryUser user;
  EXPECT_TRUE(DirectoryExists(tree.Path("closed")));
  EXPECT_FALSE(DirectoryReadable(tree.Path("closed")));
  EXPECT_TRUE(FileExists(tree.Path("closed/inside"))) << "its entries can still be looked at";
}

TEST(FileTests, StatusIsThatOfTheEntryItself) {
  TTempTree tree;
  tree.MakeFile(".hidden.d/file", 12);
  tree.MakeLink("link", ".hidden.d");
  const struct {
    QByteArray Name;
    unsigned Attributes;
    quint64 Size;
  } rows[] = {
      {".hidden.d/file", 0, 12},
      {".hidden.d", kAttributeDirectory | kAttributeHidden, 0},
      {".hidden.d//", kAttributeDirectory | kAttributeHidden, 0},
      {"link", kAttributeReparse, 9},
      {"link/", kAttributeReparse, 9},
  };
  for (const auto& row : rows) {
    const auto status = GetFileStatus(tree.Path(row.Name));
    ASSERT_TRUE(status) << row.Name.data();
    EXPECT_EQ(status->Attributes, row.Attributes) << row.Name.data();
    EXPECT_EQ(status->Size, row.Size) << row.Name.data();
  }
  EXPECT_FALSE(GetFileStatus(tree.Path("missing")));
  EXPECT_FALSE(GetFileStatus(QString()));
}

TEST(FileTests, WholeFilesUpToTheBound) {
  TTempTree tree;
  const QByteArray content = QByteArray("line\0\xff\n", 7).repeated(10000);
  tree.WriteFile("file", content);
  tree.MakeFile("empty", 0);
  tree.MakeFifo("pipe");
  EXPECT_EQ(ReadWholeFile(tree.Path("file")), content);
  EXPECT_EQ(ReadWholeFile(tree.Path("file"), content.size()), content);
  EXPECT_FALSE(ReadWholeFile(tree.Path("file"), content.size() - 1));
  EXPECT_EQ(ReadWholeFile(tree.Path("empty")), QByteArray());
  for (const char* const name : {"missing", "pipe", "."})
    EXPECT_FALSE(ReadWholeFile(tree.Path(name))) << name;
  const QString lengthToldAs0 = QStringLiteral("/proc/self/status");
  EXPECT_TRUE(ReadWholeFile(lengthToldAs0)->contains("VmRSS"));
  EXPECT_FALSE(ReadWholeFile(lengthToldAs0, 100));
}

}  // namespace
