// What every system's file actions do with real trees.
#include "platform/FileActions.h"

#include "fixtures/SystemTest.h"

namespace {

TOpenFolder Root(const TTempTree& tree) {
  return TOpenFolder::Open(tree.Path());
}

bool Move(const TTempTree& tree, const QByteArray& from, const QString& name, const QByteArray& to) {
  TActionProgress progress;
  return MoveEntry(TOpenFolder::Open(tree.Path(from)), name, TOpenFolder::Open(tree.Path(to)), progress);
}

TEST(FileActions, FoldersBelowARootAreReachedWithoutLinks) {
  TTempTree tree;
  const QByteArray odd = HasDrives() ? "odd" : "odd\xff";
  tree.MakeFile("root/" + odd + "/inner/note", 1);
  tree.MakeLink("link to root", "root");
  tree.MakeLink("root/link", odd);
  tree.MakeLink("root/out", "..");
  const QByteArray deep =
      "root/" + QByteArray(100, 'd') + QByteArray("/" + QByteArray(100, 'd')).repeated(HasDrives() ? 20 : 45);
  tree.MakeFile(deep + "/file", 1);
  const std::tuple<QByteArray, QByteArray, bool> rows[] = {// root, folder, whether it opens
                                                           {"root", "root", true},
                                                           {"root", "root/", true},
                                                           {"root/", "root/" + odd + "//inner/", true},
                                                           {"link to root", "link to root/" + odd, true},
                                                           {"root", deep, true},
                                                           {"root", "root/link", false},
                                                           {"root", "root/link/inner", false},
                                                           {"root", "root/out/root", false},
                                                           {"root", "root/../root", false},
                                                           {"root", "root/./" + odd, false},
                                                           {"root", "root/missing", false},
                                                           {"root", "root/" + odd + "/inner/note", false},
                                                           {"root", "roots", false},
                                                           {"root/" + odd, "root", false},
                                                           {"missing", "missing", false}};
  for (const auto& [root, name, opens] : rows) {
    const TOpenFolder folder = OpenBelowRoot(NativePath(tree.Path(root)), NativePath(tree.Path(name)));
    EXPECT_EQ(folder.IsOpen(), opens) << name.left(40).data();
    EXPECT_EQ(KindOfEntry(folder, u"file"_qs), name == deep ? TEntryKind::File : TEntryKind::None);
  }
  EXPECT_FALSE(OpenBelowRoot(QString(), tree.Path()).IsOpen());
}

TEST(FileActions, AKnownRootIsTheFolderThatItWas) {
  TTempTree tree;
  tree.MakeAll({"above/root/inner/file", "other/inner/file"});
  tree.MakeLink("way", "above/root");
  for (const char* name : {"above/root", "way"}) {
    if (HasDrives() && name == std::string("way")) continue;  // refused by Wine
    const TKnownRoot root(tree.Path(name));
    const QString inner = NativePath(tree.Path(QByteArray(name) + "/inner"));
    EXPECT_TRUE(root.Open(inner).IsOpen()) << name;
    EXPECT_FALSE(root.Open(tree.Path("other")).IsOpen()) << name;
    tree.Rename("above", "hold");
    tree.MakeFolder("above");
    tree.MakeLink("above/root", "../other");
    EXPECT_TRUE(TOpenFolder::Open(inner).IsOpen()) << name;
    EXPECT_FALSE(root.Open(inner).IsOpen()) << name;
    tree.Remove("above");
    tree.Rename("hold", "above");
    EXPECT_TRUE(root.Open(inner).IsOpen()) << name;
  }
  EXPECT_FALSE(TKnownRoot(QString()).Open(tree.Path()).IsOpen());
}

TEST(FileActions, OnlyNamesOfOneEntryAreActedOn) {
  TTempTree tree;
  tree.MakeAll({"folder/file", "file", "other/"});
  QStringList names{u""_qs,
                    u"."_qs,
                    u".."_qs,
                    NativePath(u"folder/file"_qs),
                    u"folder/"_qs,
                    u"missing"_qs,
                    u"file"_qs + QChar(u'\0') + u"x"_qs};
  if (HasDrives()) names << u"fil*"_qs << u"file::$DATA"_qs;
  for (const QString& name : std::as_const(names)) {
    SCOPED_TRACE(name.toStdString());
    EXPECT_EQ(KindOfEntry(Root(tree), name), TEntryKind::None);
    EXPECT_EQ(DeleteOneFile(Root(tree), name), TDeleteStage::Failed);
    EXPECT_FALSE(Move(tree, "", name, "other"));
    EXPECT_EQ(DeleteFolderWithUndo(Root(tree), name, QString()), TActionResult::Refused);
  }
  EXPECT_EQ(DeleteOneFile(TOpenFolder(), u"file"_qs), TDeleteStage::Failed);
  EXPECT_EQ(DeleteFolderWithUndo(TOpenFolder(), u"file"_qs, QString()), TActionResult::Refused);
  EXPECT_TRUE(FileExists(tree.Path("file")) && FileExists(tree.Path("folder/file")));
}

TEST(FileActions, EachStageDeletesAFileAndAFolderNever) {
  using TDelete = bool (*)(const TOpenFolder&, const QString&);
  const TDelete stages[] = {DeletePlain, ShellDeleteSilent,
                            [](const TOpenFolder& folder, const QString& name) {
                              return DeleteOneFile(folder, name) == TDeleteStage::Plain;
                            }};
  TTempTree tree;
  const QByteArray name = HasDrives() ? "caf\xc3\xa9 a.txt" : "bad\xff \n";
  tree.MakeFolder("empty");
  for (const TDelete stage : stages) {
    tree.MakeFile(name, 3);
    EXPECT_TRUE(stage(Root(tree), NameFromBytes(name)));
    EXPECT_FALSE(GetFileStatus(tree.Path(name)));
    EXPECT_FALSE(stage(Root(tree), NameFromBytes(name))) << "it is gone";
    EXPECT_FALSE(stage(Root(tree), u"empty"_qs));
    EXPECT_TRUE(DirectoryExists(tree.Path("empty")));
  }
  EXPECT_EQ(DeleteOneFile(Root(tree), u"empty"_qs), TDeleteStage::Failed);
}

TEST(FileActions, WhatIsNoFolderIsNotDeletedAsOne) {
  TTempTree tree;
  tree.MakeFile("precious/inside", 1);
  tree.MakeLink("link", "precious");
  tree.MakeFile("file", 1);
  EXPECT_EQ(KindOfEntry(Root(tree), u"precious"_qs), TEntryKind::Folder);
  EXPECT_EQ(KindOfEntry(Root(tree), u"link"_qs), TEntryKind::File);
  for (const QString& name : {u"link"_qs, u"file"_qs})
    EXPECT_EQ(DeleteFolderWithUndo(Root(tree), name, QString()), TActionResult::Refused);
  EXPECT_TRUE(GetFileStatus(tree.Path("link")) && FileExists(tree.Path("file")) &&
              FileExists(tree.Path("precious/inside")));
  EXPECT_TRUE(HasDrives() || DeletePlain(Root(tree), u"link"_qs));
  EXPECT_TRUE(FileExists(tree.Path("precious/inside")));
}

TEST(FileActions, AMoveReplacesNothing) {
  TTempTree tree;
  tree.WriteFile("from/file", "mine");
  tree.MakeFile("from/folder/inside", 1);
  for (const QByteArray target : {"holds files", "holds folders"}) {
    const bool isFile = target == "holds files";
    for (const QByteArray name : {"/file", "/folder"})
      isFile ? tree.WriteFile(target + name, "theirs") : tree.MakeFolder(target + name);
    EXPECT_FALSE(Move(tree, "from", u"file"_qs, target)) << target.data();
    EXPECT_FALSE(Move(tree, "from", u"folder"_qs, target)) << target.data();
    EXPECT_EQ(ReadWholeFile(tree.Path(target + "/file")),
              isFile ? std::optional(QByteArray("theirs")) : std::nullopt);
    EXPECT_EQ(DirectoryExists(tree.Path(target + "/folder")), !isFile);
  }
  EXPECT_EQ(ReadWholeFile(tree.Path("from/file")), QByteArray("mine"));
  EXPECT_TRUE(FileExists(tree.Path("from/folder/inside")));
}

TEST(FileActions, AMoveTakesTheEntryItself) {
  TTempTree tree;
  const QByteArray name = HasDrives() ? "a, b.txt" : "bad\xff";
  tree.WriteFile("from/" + name, "content");
  tree.MakeAll({"from/folder/inside", "to/"});
  EXPECT_TRUE(Move(tree, "from", NameFromBytes(name), "to"));
  EXPECT_TRUE(Move(tree, "from", u"folder"_qs, "to"));
  EXPECT_EQ(ReadWholeFile(tree.Path("to/" + name)), QByteArray("content"));
  EXPECT_TRUE(FileExists(tree.Path("to/folder/inside")));
  EXPECT_FALSE(GetFileStatus(tree.Path("from/" + name)) || GetFileStatus(tree.Path("from/folder")));
  EXPECT_FALSE(Move(tree, "to", u"folder"_qs, "to/folder")) << "into itself";
  EXPECT_TRUE(FileExists(tree.Path("to/folder/inside")));
}

TEST(FileActions, AMoveOnItsOwnThreadTellsItsEnd) {
  TTempTree tree;
  tree.MakeFile("from/file", 10);
  tree.MakeFolder("to");
  for (const bool there : {true, false}) {
    TFileMove move(TOpenFolder::Open(tree.Path("from")), u"file"_qs, TOpenFolder::Open(tree.Path("to")));
    EXPECT_TRUE(move.WaitFor(10'000));
    EXPECT_EQ(move.Result(), there);
    EXPECT_TRUE(FileExists(tree.Path("to/file")));
  }
}

}  // namespace
