// What Linux's own file actions do: links, rights, the trash, requests to systemd, copies to another volume.
#include "platform/FileActions.h"

#include "SystemCalls.h"
#include "fixtures/MountNamespace.h"
#include "fixtures/SystemTest.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace {

constexpr uid_t kUser = 65534;  // who a TOrdinaryUser is to root

QByteArray Bytes(const TTempTree& tree, const QByteArray& name) {
  return NameToBytes(tree.Path(name));
}

struct stat StatusOf(const QByteArray& path) {
  struct stat status {};
  EXPECT_EQ(lstat(path, &status), 0) << path.data();
  return status;
}

bool Move(const QString& from, const QString& name, const QString& to) {
  TActionProgress progress;
  return MoveEntry(TOpenFolder::Open(from), name, TOpenFolder::Open(to), progress);
}

TEST(FileActionsLinux, ASilentDeleteLiftsOnlyTheUsersOwnRights) {
  TTempTree tree;
  tree.MakeAll({"own/file", "foreign/file"});
  const QByteArray own = Bytes(tree, "own");
  EXPECT_EQ(geteuid() == 0 ? chown(own, kUser, kUser) : 0, 0);
  for (const mode_t mode : {0555, 0100, 0600}) {
    ASSERT_EQ(chmod(own, 0755), 0);
    tree.MakeFile("own/file", 1);
    ASSERT_EQ(chmod(own, mode), 0);
    const TOpenFolder folder = TOpenFolder::Open(tree.Path("own"));
    const TOrdinaryUser user;
    EXPECT_FALSE(DeletePlain(folder, u"file"_qs));
    EXPECT_TRUE(ShellDeleteSilent(folder, u"file"_qs));
    EXPECT_EQ(StatusOf(own).st_mode & 07777, mode);
  }
  if (geteuid() != 0) return;  // all is his own
  ASSERT_EQ(chmod(Bytes(tree, "foreign"), 0555), 0);
  const TOrdinaryUser user;
  EXPECT_EQ(DeleteOneFile(TOpenFolder::Open(tree.Path("foreign")), u"file"_qs), TDeleteStage::Failed);
  EXPECT_TRUE(FileExists(tree.Path("foreign/file")));
}

TEST(FileActionsLinux, ADeleteAtRestartIsALineForSystemd) {
  TTempTree tree;
  const QByteArray name = "a b%h*?[x]{y,z}\\\"'\xff.txt";
  tree.MakeAll({"in/" + name, "in/line\n", "in/abxh", "in/folder/"});
  const auto schedule = [&](const QString& entry) {
    const TPlannedCalls calls({.Redirected = Bytes(tree, "system")});
    return ScheduleDelete(TOpenFolder::Open(tree.Path("in")), entry);
  };
  tree.MakeFolder("system/etc/tmpfiles.d");
  EXPECT_FALSE(schedule(NameFromBytes(name))) << "systemd does not run";
  tree.MakeFolder("system/run/systemd/system");
  EXPECT_FALSE(schedule(u"folder"_qs) || schedule(u"missing"_qs) || schedule(u"line\n"_qs));
  EXPECT_TRUE(schedule(NameFromBytes(name)));

  const auto requests = NamesIn(tree.Path("system/etc/tmpfiles.d"));
  ASSERT_EQ(requests.size(), 1U);
  const QByteArray& request = requests[0];
  EXPECT_TRUE(request.startsWith("tallyscope-") && request.endsWith(".conf")) << request.data();
  const QList<QByteArray> lines =
      ReadWholeFile(tree.Path("system/etc/tmpfiles.d/" + request)).value_or("").split('\n');
  ASSERT_EQ(lines.size(), 3);
  const QByteArray line = R"(a b%%h\\*\\?\\[x\\]\\{y,z\\}\\\\\"')";
  EXPECT_EQ(lines[0], "r! \"" + Bytes(tree, "in/") + line + "\xff.txt\"");
  EXPECT_EQ(lines[1], "r! /etc/tmpfiles.d/" + request);
  if (std::system("command -v systemd-tmpfiles >/dev/null") != 0) GTEST_SKIP() << "no systemd-tmpfiles here";
  tree.WriteFile("one.conf", lines[0] + '\n');
  EXPECT_EQ(std::system("systemd-tmpfiles --remove --boot '" + Bytes(tree, "one.conf") + "'"), 0);
  EXPECT_FALSE(GetFileStatus(tree.Path("in/" + name)));
  EXPECT_TRUE(FileExists(tree.Path("in/abxh")));
}

// A user whose home lies in a tree, which is the top of its volume too.
class TrashTest : public testing::Test {
 protected:
  TActionResult Delete(const QByteArray& parent, const QByteArray& name) const {
    const TPlannedCalls calls({.Redirected = Bytes(FTree, "volume")});
    return DeleteFolderWithUndo(TOpenFolder::Open(FTree.Path(parent)), NameFromBytes(name), QString());
  }

  TTempTree FTree;
  const QByteArray FHome = Bytes(FTree, "home");
  const QByteArray FOwnTrash = "volume/.Trash-" + QByteArray::number(geteuid());
  const QByteArray FSharedTrash = "volume/.Trash/" + QByteArray::number(geteuid());

 private:
  const TVariables FVariables{{"HOME", FHome.constData()}, {"XDG_DATA_HOME", nullptr}};
};

TEST_F(TrashTest, FoldersOfAnyNameGoToTheTrashAtHome) {
  FTree.MakeFolder("home");
  const QByteArray trash = "home/.local/share/Trash/";
  const QByteArray longName = QByteArray("\xc3\xa9").repeated(127) + 'x';
  FTree.MakeFile(trash + "files/taken/orphan", 1);
  FTree.WriteFile(trash + "info/told.trashinfo", "theirs");
  const std::pair<QByteArray, QByteArray> rows[] = {{"bad\xff 100%\n", "bad\xff 100%\n"},
                                                    {"taken", "taken.2"},
                                                    {"taken", "taken.3"},
                                                    {"told", "told.2"},
                                                    {longName, longName.left(238)}};
  for (const auto& [name, inTrash] : rows) {
    FTree.WriteFile("in/" + name + "/inside", name);
    EXPECT_EQ(Delete("in", name), TActionResult::Done) << name.data();
    EXPECT_FALSE(GetFileStatus(FTree.Path("in/" + name)));
    EXPECT_EQ(ReadWholeFile(FTree.Path(trash + "files/" + inTrash + "/inside")), name);
    const QList<QByteArray> info =
        ReadWholeFile(FTree.Path(trash + "info/" + inTrash + ".trashinfo")).value_or("").split('\n');
    ASSERT_EQ(info.size(), 4) << inTrash.data();
    EXPECT_EQ(info[0] + info[1], "[Trash Info]Path=" + Bytes(FTree, "in/" + name).toPercentEncoding("/"));
    const QDateTime when = QDateTime::fromString(QString::fromLatin1(info[2].mid(13)), Qt::ISODate);
    EXPECT_TRUE(info[2].startsWith("DeletionDate=") && qAbs(when.secsTo(QDateTime::currentDateTime())) < 60);
  }
  EXPECT_EQ(StatusOf(Bytes(FTree, trash + "info")).st_mode & 07777, mode_t{0755});
  EXPECT_FALSE(GetFileStatus(FTree.Path(trash + "info/taken.trashinfo"))) << "no info without its folder";
}

TEST_F(TrashTest, AVolumeHasATrashOfItsOwn) {
  const TVariables nowhere{{"HOME", "/nowhere"}};
  const auto put = [&](const QByteArray& name) {
    FTree.MakeFile("in/" + name + "/inside", 1);
    return Delete("in", name);
  };
  const auto holds = [&](const QByteArray& trash, const QByteArray& name) {
    return FileExists(FTree.Path(trash + "/files/" + name + "/inside"));
  };
  FTree.MakeFolder("volume/.Trash");
  EXPECT_EQ(put("all may remove"), TActionResult::Done);
  EXPECT_TRUE(holds(FOwnTrash, "all may remove"));
  EXPECT_EQ(StatusOf(Bytes(FTree, FOwnTrash)).st_mode & 07777, mode_t{0700});
  ASSERT_EQ(chmod(Bytes(FTree, "volume/.Trash"), 01777), 0);
  EXPECT_EQ(put("shared"), TActionResult::Done);
  EXPECT_TRUE(holds(FSharedTrash, "shared"));
  const auto info = ReadWholeFile(FTree.Path(FSharedTrash + "/info/shared.trashinfo"));
  EXPECT_TRUE(info && info->contains("\nPath=" + Bytes(FTree, "in/shared").mid(1) + '\n'))
      << "from its top on";

  FTree.Rename("volume/.Trash", "volume/elsewhere");
  FTree.MakeLink("volume/.Trash", "elsewhere");
  EXPECT_EQ(put("by a link"), TActionResult::Done);
  EXPECT_TRUE(holds(FOwnTrash, "by a link"));

  FTree.Rename(FOwnTrash, "volume/mine");
  FTree.MakeLink(FOwnTrash, "mine");
  EXPECT_EQ(put("both links"), TActionResult::Refused);
  EXPECT_TRUE(FileExists(FTree.Path("in/both links/inside")));
  if (geteuid() != 0) return;
  FTree.Remove(FOwnTrash);
  FTree.MakeFolder(FOwnTrash);
  ASSERT_EQ(chown(Bytes(FTree, FOwnTrash), kUser, kUser), 0);
  EXPECT_EQ(put("somebody else's"), TActionResult::Refused);
}

TEST_F(TrashTest, SomeFoldersMustStay) {
  FTree.MakeAll({"users/home/inside", "users/homes/inside"});
  FTree.MakeLink("home", "users/home");
  EXPECT_EQ(Delete("users", "home"), TActionResult::Refused);
  EXPECT_EQ(Delete("", "users"), TActionResult::Refused);
  EXPECT_EQ(Delete("users", "homes"), TActionResult::Done);
  EXPECT_TRUE(FileExists(FTree.Path("users/home/inside")));
}

TEST_F(TrashTest, MountPointsAndWhatHoldsOneStay) {
  FTree.MakeAll({"home/", "in/above/mounted/"});
  const auto refused = RunWithOwnMounts([&]() -> std::optional<bool> {
    if (!TmpfsMount(Bytes(FTree, "in/above/mounted"))) return std::nullopt;
    return Delete("in/above", "mounted") == TActionResult::Refused &&
           Delete("in", "above") == TActionResult::Refused;
  });
  EXPECT_TRUE(refused.value_or(true));
}

// Two folders on different volumes, both ways: one of the two is in memory.
class OtherVolumeTest : public testing::TestWithParam<bool> {
 protected:
  void SetUp() override {
    if (StatusOf(Bytes(FFrom, "")).st_dev == StatusOf(Bytes(FTo, "")).st_dev)
      GTEST_SKIP() << "/dev/shm is no volume of its own";
  }

  struct TPlace {
    explicit TPlace(bool inMemory) : Temp{{"TMPDIR", inMemory ? "/dev/shm" : nullptr}} {}
    TVariables Temp;
    TTempTree Tree;
  };
  TPlace FFromPlace{GetParam()};
  TPlace FToPlace{!GetParam()};
  TTempTree &FFrom = FFromPlace.Tree, &FTo = FToPlace.Tree;
};

// user:1234 read, group nothing, the most: read and write; so the group's bits of the mode say rw.
constexpr char kAccessList[] =
    "\2\0\0\0\1\0\6\0\xff\xff\xff\xff\2\0\4\0\xd2\4\0\0\4\0\0\0\xff\xff\xff\xff"
    "\x10\0\6\0\xff\xff\xff\xff\x20\0\0\0\xff\xff\xff\xff";

QByteArray Attribute(const QByteArray& path, const char* name) {
  QByteArray value(1000, '\0');
  const ssize_t size = lgetxattr(path, name, value.data(), 1000);
  return size < 0 ? QByteArray("none") : value.left(size);
}

TEST_P(OtherVolumeTest, AFileArrivesWithAllThatItIs) {
  const QByteArray from = Bytes(FFrom, "file");
  const QByteArray to = Bytes(FTo, "file");
  FFrom.MakeHole("file", 20 << 20);
  const int file = open(from, O_WRONLY);
  ASSERT_EQ(pwrite(file, "middle", 6, 10 << 20), 6);
  close(file);
  EXPECT_EQ(geteuid() == 0 ? chown(from, 1234, 4321) : 0, 0);
  ASSERT_EQ(chmod(from, 04640), 0);
  const bool hasList = setxattr(from, "system.posix_acl_access", kAccessList, sizeof kAccessList - 1, 0) == 0;
  setxattr(from, "user.note", "kept", 4, 0);
  const timespec times[] = {{1'000'000, 123'456'789}, {2'000'000, 987'654'321}};
  ASSERT_EQ(utimensat(AT_FDCWD, from, times, 0), 0);
  const struct stat before = StatusOf(from);
  const auto content = ReadWholeFile(FFrom.Path("file"));
  ASSERT_EQ(utimensat(AT_FDCWD, from, times, 0), 0);
  const QByteArray note = Attribute(from, "user.note");

  ASSERT_TRUE(Move(FFrom.Path(), u"file"_qs, FTo.Path()));
  EXPECT_FALSE(GetFileStatus(FFrom.Path("file")));
  const struct stat after = StatusOf(to);
  EXPECT_EQ(after.st_atim.tv_sec, 1'000'000);
  EXPECT_EQ(after.st_mtim.tv_sec, 2'000'000);
  EXPECT_EQ(after.st_mtim.tv_nsec, 987'654'321);
  EXPECT_THAT((std::array{after.st_mode, after.st_uid, after.st_gid}),
              ElementsAre(before.st_mode, before.st_uid, before.st_gid));
  EXPECT_LT(after.st_blocks, 4096) << "holes stay holes";
  EXPECT_EQ(Attribute(to, "user.note"), note);
  EXPECT_EQ(Attribute(to, "system.posix_acl_access"),
            hasList ? QByteArray(kAccessList, sizeof kAccessList - 1) : QByteArray("none"));
  EXPECT_EQ(ReadWholeFile(FTo.Path("file")), content);
}

TEST_P(OtherVolumeTest, TheTargetFolderGivesNoRights) {
  FFrom.MakeFile("file", 10);
  const size_t size = sizeof kAccessList - 1;
  if (setxattr(Bytes(FTo, ""), "system.posix_acl_default", kAccessList, size, 0) != 0)
    GTEST_SKIP() << "no lists of rights here";
  ASSERT_TRUE(Move(FFrom.Path(), u"file"_qs, FTo.Path()));
  EXPECT_EQ(Attribute(Bytes(FTo, "file"), "system.posix_acl_access"), QByteArray("none"));
}

TEST_P(OtherVolumeTest, LinksCrossAsLinksAndFoldersDoNot) {
  FFrom.MakeLink("link", "no/where");
  FFrom.MakeAll({"folder/inside", "there/"});
  EXPECT_TRUE(Move(FFrom.Path(), u"link"_qs, FFrom.Path("there")));
  EXPECT_TRUE(Move(FFrom.Path("there"), u"link"_qs, FFrom.Path()));
  EXPECT_TRUE(Move(FFrom.Path(), u"link"_qs, FTo.Path()));
  EXPECT_FALSE(Move(FFrom.Path(), u"folder"_qs, FTo.Path()));
  EXPECT_EQ(GetFileFacts(TOpenFolder::Open(FTo.Path()), u"link"_qs)->LeadsTo, u"no/where"_qs);
  EXPECT_FALSE(GetFileStatus(FFrom.Path("link")) || GetFileStatus(FTo.Path("folder")));
  EXPECT_TRUE(FileExists(FFrom.Path("folder/inside")));
}

TEST_P(OtherVolumeTest, AnotherUsersFileLosesTheRightToActForHim) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can give files away";
  FFrom.MakeFile("file", 10);
  const QByteArray from = Bytes(FFrom, "file");
  ASSERT_EQ(chmod(from, 06755), 0);
  for (const QByteArray& folder : {Bytes(FFrom, ""), Bytes(FTo, "")})
    ASSERT_EQ(chmod(folder, 0777), 0);
  const TOrdinaryUser user;
  EXPECT_TRUE(Move(FFrom.Path(), u"file"_qs, FTo.Path()));
  EXPECT_EQ(StatusOf(Bytes(FTo, "file")).st_mode & 07777, mode_t{0755});
}

TEST_P(OtherVolumeTest, AStoppedCopyLeavesTheSource) {
  FFrom.MakeFile("file", 3 << 20);
  TActionProgress progress;
  progress.Stop = true;
  const TOpenFolder from = TOpenFolder::Open(FFrom.Path());
  const TOpenFolder to = TOpenFolder::Open(FTo.Path());
  EXPECT_FALSE(MoveEntry(from, u"file"_qs, to, progress));
  EXPECT_EQ(progress.Total, 3 << 20);
  EXPECT_TRUE(FileExists(FFrom.Path("file")));
  EXPECT_THAT(NamesIn(FTo.Path()), IsEmpty());
  progress.Stop = false;
  EXPECT_TRUE(MoveEntry(from, u"file"_qs, to, progress));
  EXPECT_EQ(progress.Done, 3 << 20);
}

INSTANTIATE_TEST_SUITE_P(BothWays, OtherVolumeTest, testing::Bool());

TEST(FileActionsLinux, WhatAWindowOfPropertiesTells) {
  TTempTree tree;
  tree.WriteFile(".file", "some content");
  tree.MakeHardLink("second", ".file");
  const QByteArray path = Bytes(tree, ".file");
  ASSERT_EQ(chmod(path, 02640), 0);
  const timespec times[] = {{1'000'000, 0}, {2'000'000, 0}};
  ASSERT_EQ(utimensat(AT_FDCWD, path, times, 0), 0);
  const TOpenFolder folder = TOpenFolder::Open(tree.Path());
  const auto facts = GetFileFacts(folder, u".file"_qs);
  ASSERT_TRUE(facts);
  EXPECT_EQ(facts->Attributes, kAttributeHidden);
  EXPECT_EQ(facts->Size, 12);
  EXPECT_EQ(facts->SizeOnDisk, StatusOf(path).st_blocks * 512);
  EXPECT_THAT((std::array{facts->Accessed.toSecsSinceEpoch(), facts->Modified.toSecsSinceEpoch()}),
              ElementsAre(1'000'000, 2'000'000));
  EXPECT_THAT((std::array<quint64, 2>{facts->Mode, facts->Links}), ElementsAre(02640, 2));
  EXPECT_TRUE(geteuid() != 0 || facts->Owner + u':' + facts->Group == u"root:root");
  TActionProgress progress;
  EXPECT_EQ(FileChecksum(folder, u".file"_qs, progress),
            QCryptographicHash::hash("some content", QCryptographicHash::Sha256).toHex());
  EXPECT_EQ(progress.Done, 12);
  tree.MakeSystemEntry("pipe");
  tree.MakeLink("link", ".file");
  for (const QString& name : {u"pipe"_qs, u"link"_qs, u"missing"_qs})
    EXPECT_FALSE(FileChecksum(folder, name, progress)) << name.toStdString();
  progress.Stop = true;
  EXPECT_FALSE(FileChecksum(folder, u".file"_qs, progress));
}

}  // namespace
