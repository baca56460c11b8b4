// Each call beneath an action fails in turn, or is the last one of a process that is killed, or another
// program is at work meanwhile: what was to be deleted or moved is whole then, where it was or where it was
// to be.
#include "platform/FileActions.h"

#include "SystemCalls.h"
#include "fixtures/SystemTest.h"
#include "platform/posix/FileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <cerrno>
#include <filesystem>
#include <set>
#include <thread>

namespace {

namespace fs = std::filesystem;
using TLines = std::set<std::string>;

constexpr int kErrors[] = {EIO, EACCES, EPERM, ENOSPC, EROFS, ENOENT, EINTR, EXDEV, EINVAL};

// All that an entry is, as one line. Random names and the texts that differ from run to run are left out.
std::string LineOf(const fs::path& root, const fs::path& path, bool modes) {
  static const QRegularExpression random(u"tallyscope-[0-9a-f]{16}"_qs);
  struct stat status {};
  lstat(path.c_str(), &status);
  QString line = NameFromBytes(path.lexically_relative(root).c_str());
  line.replace(random, u"tallyscope-N"_qs);
  line += u' ' + QString::number(modes ? status.st_mode : status.st_mode & S_IFMT, 8) + u' ';
  if (S_ISLNK(status.st_mode)) line += NameFromBytes(fs::read_symlink(path).c_str());
  const bool differs = path.extension() == ".trashinfo" || path.extension() == ".conf";
  if (S_ISREG(status.st_mode) && !differs)
    line += QString::number(qHash(ReadWholeFile(NameFromBytes(path.c_str())).value_or("unreadable"), 1));
  return line.toStdString();
}

TLines LinesOf(const TTempTree& tree, bool modes) {
  const fs::path root = NameToBytes(tree.Path()).toStdString();
  TLines lines;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(root))
    lines.insert(LineOf(root, entry.path(), modes));
  return lines;
}

// So that an ordinary user owns it all.
void GiveToUser(const TTempTree& tree) {
  if (geteuid() != 0) return;
  for (const fs::directory_entry& entry :
       fs::recursive_directory_iterator(NameToBytes(tree.Path()).toStdString()))
    EXPECT_EQ(lchown(entry.path().c_str(), 65534, 65534), 0);
}

// One kind of work that can break.
struct TAction {
  const char* Name;
  void (*Make)(TTempTree& tree);
  bool (*Run)(const TTempTree& tree);
  bool OtherVolume = false;
  bool NoFlags = false;
  bool AsUser = false;
};

TOpenFolder From(const TTempTree& tree) {
  return OpenBelowRoot(tree.Path(), tree.Path("from"));
}

bool Move(const TTempTree& tree) {
  TActionProgress progress;
  return MoveEntry(From(tree), u"it"_qs, TOpenFolder::Open(tree.Path("to")), progress);
}

bool PutIntoTrash(const TTempTree& tree, const QByteArray& home) {
  const TVariables user{{"HOME", home.constData()}, {"XDG_DATA_HOME", nullptr}};
  return DeleteFolderWithUndo(From(tree), u"it"_qs, QString()) == TActionResult::Done;
}

// Content, a hole in the middle and one at the end, and what else a file has.
void MakeWholeFile(TTempTree& tree) {
  tree.MakeFolder("to");
  tree.MakeHole("from/it", 300'000);
  const QByteArray path = NameToBytes(tree.Path("from/it"));
  const TFileDescriptor file = OpenPath(path, O_WRONLY);
  for (const off_t place : {0, 150'000})
    EXPECT_EQ(pwrite(file.Get(), QByteArray(40'000, place == 0 ? 'a' : 'b'), 40'000, place), 40'000);
  EXPECT_EQ(chmod(path, 0640), 0);
  setxattr(path, "user.note", "kept", 4, 0);  // where the file system has any
}

void MakeFolderWithFile(TTempTree& tree) {
  tree.MakeFolder("to");
  tree.MakeFile("from/it/inside", 10);
  const QByteArray volumeTrash = ".Trash-" + QByteArray::number(geteuid());
  for (const QByteArray& trash : {volumeTrash, QByteArray("home/.local/share/Trash")})
    for (const char* const part : {"/files", "/info"})
      tree.MakeFolder(trash + part);
}

const TAction kActions[] = {
    {"plain delete", MakeWholeFile, [](const TTempTree& tree) { return DeletePlain(From(tree), u"it"_qs); }},
    {"silent delete",
     [](TTempTree& tree) {
       tree.MakeFile("from/it", 10);
       tree.MakeReadOnly("from");
       GiveToUser(tree);
     },
     [](const TTempTree& tree) { return ShellDeleteSilent(From(tree), u"it"_qs); }, false, false, true},
    {"delete at restart",
     [](TTempTree& tree) {
       tree.MakeFile("from/it", 10);
       tree.MakeAll({"etc/tmpfiles.d/", "run/systemd/system/"});
     },
     [](const TTempTree& tree) { return ScheduleDelete(From(tree), u"it"_qs); }},
    {"trash at home", MakeFolderWithFile,
     [](const TTempTree& tree) { return PutIntoTrash(tree, NameToBytes(tree.Path("home"))); }},
    {"trash of the volume", MakeFolderWithFile,
     [](const TTempTree& tree) { return PutIntoTrash(tree, "/nowhere"); }},
    {"rename", MakeWholeFile, Move},
    {"rename of a folder", MakeFolderWithFile, Move},
    {"rename without flags", MakeWholeFile, Move, false, true},
    {"rename of a folder without flags", MakeFolderWithFile, Move, false, true},
    {"copy", MakeWholeFile, Move, true},
    {"copy without flags", MakeWholeFile, Move, true, true},
    {"copy of a link",
     [](TTempTree& tree) {
       tree.MakeFolder("to");
       tree.MakeLink("from/it", "no/where");
     },
     Move, true},
    {"copy of a pipe",
     [](TTempTree& tree) {
       tree.MakeFolder("to");
       tree.MakeSystemEntry("from/it");
     },
     Move, true},
};

// In memory where the system has a place for that: flushing a disk thousands of times takes minutes.
class FileActionsFaults : public testing::Test {
  const TVariables FPlace{{"TMPDIR", fs::exists("/dev/shm") ? "/dev/shm" : nullptr}};
};
using FileActionsRace = FileActionsFaults;

// What one run left and how often it called the system.
struct TOutcome {
  bool Done = false;
  int Calls = 0;
  QByteArray Struck;
  TLines Before;
  TLines After;
};

bool RunIn(const TTempTree& tree, const TAction& action, TCallPlan plan) {
  plan.OtherVolume = action.OtherVolume;
  plan.NoFlags = action.NoFlags;
  plan.Redirected = NameToBytes(tree.Path());
  const auto user = action.AsUser ? std::make_unique<TOrdinaryUser>() : nullptr;
  const TPlannedCalls calls(plan);
  return action.Run(tree);
}

TOutcome RunOnce(const TAction& action, const TCallPlan& plan, bool modes) {
  TTempTree tree;
  action.Make(tree);
  TOutcome outcome;
  outcome.Before = LinesOf(tree, modes);
  outcome.Done = RunIn(tree, action, plan);
  outcome.Calls = TPlannedCalls::Count();
  outcome.Struck = TPlannedCalls::Struck();
  outcome.After = LinesOf(tree, modes);
  return outcome;
}

TEST_F(FileActionsFaults, WhateverFailsLeavesAllAsItWasOrAllDone) {
  // A home trash that can't be used is no trash: the volume's is taken.
  const TLines otherTrash = RunOnce(kActions[4], {}, true).After;
  for (const TAction& action : kActions) {
    const TOutcome whole = RunOnce(action, {}, true);
    ASSERT_TRUE(whole.Done) << action.Name;
    ASSERT_NE(whole.Before, whole.After) << action.Name;
    for (int call = 1; call <= whole.Calls; ++call) {
      for (const int error : kErrors) {
        const TOutcome outcome = RunOnce(action, {.At = call, .Error = error}, true);
        // Rights that can't be set are not what a move fails for, nor can lifted ones be laid down again.
        const bool otherRights = outcome.Struck == "chmod" || outcome.Struck.startsWith("fchmod");
        const bool fullSource = error == ENOSPC && outcome.Struck == "renameat" && action.OtherVolume;
        EXPECT_TRUE(outcome.Done || !fullSource) << "files must get away from a full disk";
        const bool asItShould = outcome.Done ? outcome.After == whole.After || outcome.After == otherTrash
                                             : outcome.After == outcome.Before;
        EXPECT_TRUE(asItShould || otherRights)
            << action.Name << ", call " << call << ' ' << outcome.Struck.constData() << ", error " << error
            << (outcome.Done ? " done " : " failed ") << testing::PrintToString(outcome.After);
      }
    }
  }
}

// What is under a temporary name after a crash is litter, and a folder or file of its own accord.
TLines WithoutLitter(const TLines& lines) {
  TLines rest;
  std::copy_if(lines.begin(), lines.end(), std::inserter(rest, rest.end()),
               [](const std::string& line) { return line.find("tallyscope-N.part") == std::string::npos; });
  return rest;
}

bool Holds(const TLines& lines, const TLines& part) {
  return std::includes(lines.begin(), lines.end(), part.begin(), part.end());
}

// True if the process was killed at the call, false if it came to its end before.
bool KilledAt(const TAction& action, int call, const TTempTree& tree) {
  const pid_t child = fork();
  if (child == 0) {
    static_cast<void>(RunIn(tree, action, {.At = call}));
    _exit(0);
  }
  int status = 0;
  EXPECT_EQ(waitpid(child, &status, 0), child);
  return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
}

TEST_F(FileActionsFaults, AKilledProcessLosesNothing) {
  for (const TAction& action : kActions) {
    const TOutcome whole = RunOnce(action, {}, false);
    TLines either = whole.Before;
    either.insert(whole.After.begin(), whole.After.end());
    int call = 1;
    for (bool killed = true; killed; ++call) {
      TTempTree tree;
      action.Make(tree);
      killed = KilledAt(action, call, tree);
      const TLines left = WithoutLitter(LinesOf(tree, false));
      EXPECT_TRUE(Holds(left, whole.Before) || Holds(left, whole.After))
          << action.Name << ", killed before call " << call << testing::PrintToString(left);
      EXPECT_TRUE(Holds(either, left)) << action.Name << ", call " << call << testing::PrintToString(left);
    }
    EXPECT_EQ(call - 2, whole.Calls) << action.Name;
  }
}

TEST_F(FileActionsFaults, AFullDiskAtAnyByteLeavesTheSource) {
  const TAction& copy = kActions[9];
  for (qint64 room = 0; room < 80'000; room += room < 10 ? 1 : 3'989) {
    const TOutcome outcome = RunOnce(copy, {.Room = room}, true);
    EXPECT_FALSE(outcome.Done) << room;
    EXPECT_EQ(outcome.After, outcome.Before) << room;
  }
}

// What a crash of the whole computer leaves is what was flushed, in this order.
TEST_F(FileActionsFaults, ACopyIsOnDiskBeforeItsSourceGoesAndShortWritesAndSignalsChangeNothing) {
  const TLines whole = RunOnce(kActions[9], {}, true).After;
  EXPECT_EQ(RunOnce(kActions[9], {.WriteAtOnce = 4'099, .Interrupted = true}, true).After, whole);
  EXPECT_TRUE(RunOnce(kActions[9], {}, true).Done);
  static const QRegularExpression order(
      u" write .*futimens fsync .*renameat2 openat fsync .*renameat .*unlinkat $"_qs);
  EXPECT_TRUE(order.match(QString::fromLatin1(TPlannedCalls::Names())).hasMatch())
      << TPlannedCalls::Names().data();
}

// Runs a move of a file with something done before each of its calls in turn, and then looks at what is
// there.
void RunWithAnother(const std::function<void(TTempTree&)>& meanwhile,
                    const std::function<void(const TTempTree&, const std::string&)>& look) {
  for (const TAction& action : kActions) {
    if (action.Make != MakeWholeFile || action.Run != Move) continue;
    const int calls = RunOnce(action, {}, false).Calls;
    for (int call = 1; call <= calls; ++call) {
      TTempTree tree;
      action.Make(tree);
      RunIn(tree, action, {.At = call, .Meanwhile = [&] { meanwhile(tree); }});
      look(tree, action.Name + std::string(" at call ") + std::to_string(call));
    }
  }
}

// Once, at any call, or again before the two calls after that.
TEST_F(FileActionsFaults, AFileThatIsSavedMeanwhileIsNotLost) {
  int saved = 0;
  const auto isSaved = [&](const TTempTree& tree, const std::string& when) {
    const QByteArray last = QByteArray::number(saved);
    EXPECT_TRUE(ReadWholeFile(tree.Path("from/it")) == last || ReadWholeFile(tree.Path("to/it")) == last)
        << when;
    saved = 0;
  };
  const auto once = [&](TTempTree& tree) {
    if (saved++ == 0) tree.WriteFile("from/it", "1");
    saved = 1;
  };
  const auto again = [&](TTempTree& tree) {
    if (saved == 3) return;
    tree.WriteFile("from/new", QByteArray::number(++saved));
    tree.Rename("from/new", "from/it");
  };
  RunWithAnother(once, isSaved);
  RunWithAnother(again, isSaved);
}

TEST_F(FileActionsFaults, ATargetThatAppearsMeanwhileStays) {
  bool appeared = false;
  bool looked = false;
  RunWithAnother(
      [&](TTempTree& tree) {
        if (!std::exchange(looked, true)) appeared = !GetFileStatus(tree.Path("to/it"));
        if (appeared && !GetFileStatus(tree.Path("to/it"))) tree.WriteFile("to/it", "theirs");
      },
      [&](const TTempTree& tree, const std::string& when) {
        looked = false;
        if (!std::exchange(appeared, false)) return;
        EXPECT_EQ(ReadWholeFile(tree.Path("to/it")), QByteArray("theirs")) << when;
        EXPECT_TRUE(FileExists(tree.Path("from/it"))) << when;
      });
}

TEST_F(FileActionsFaults, AnEmptyFolderIsNotReplacedWithoutFlagsEither) {
  TTempTree tree;
  MakeFolderWithFile(tree);
  tree.MakeFolder("to/it");
  const TPlannedCalls calls({.NoFlags = true});
  EXPECT_FALSE(Move(tree));
  EXPECT_TRUE(FileExists(tree.Path("from/it/inside")));
}

// Another program swaps a folder above the entry for a link to a precious tree, over and over: what lies in
// the precious tree stays. "root/above" is a folder now and a link to "precious" then; what is meant is
// "root/above/parent/...".
class TSwaps {
 public:
  explicit TSwaps(const QByteArray& root) : FFolder(OpenPath(root, O_PATH | O_DIRECTORY)) {
    FThread = std::thread([this] {
      while (!FEnd) {
        EXPECT_EQ(renameat2(FFolder.Get(), "above", FFolder.Get(), "spare", RENAME_EXCHANGE), 0);
        ++FCount;
      }
    });
  }
  ~TSwaps() {
    FEnd = true;
    FThread.join();
  }
  TSwaps(const TSwaps&) = delete;
  TSwaps& operator=(const TSwaps&) = delete;

  [[nodiscard]] int Count() const { return FCount; }

 private:
  const TFileDescriptor FFolder;
  std::atomic<bool> FEnd{false};
  std::atomic<int> FCount{0};
  std::thread FThread;
};

using TAct = bool (*)(const TOpenFolder& parent, const TOpenFolder& other);

bool MoveThere(const TOpenFolder& parent, const TOpenFolder& other) {
  TActionProgress progress;
  return MoveEntry(parent, u"file"_qs, other, progress) && DeletePlain(other, u"file"_qs);
}

constexpr std::array<TAct, 5> kActs{
    [](const TOpenFolder& parent, const TOpenFolder&) { return DeletePlain(parent, u"file"_qs); },
    [](const TOpenFolder& parent, const TOpenFolder&) { return ShellDeleteSilent(parent, u"file"_qs); },
    &MoveThere,
    [](const TOpenFolder& parent, const TOpenFolder& other) {
      const TPlannedCalls calls({.OtherVolume = true});
      return MoveThere(parent, other);
    },
    [](const TOpenFolder& parent, const TOpenFolder&) {
      return DeleteFolderWithUndo(parent, u"folder"_qs, QString()) == TActionResult::Done;
    }};

TEST_F(FileActionsRace, SwappedFoldersNeverLeadElsewhere) {
  const int swaps = std::max(qEnvironmentVariableIntValue("TALLYSCOPE_SWAPS"), 4'000);
  TTempTree tree;
  tree.MakeAll({"home/", "other/", "root/above/parent/"});
  tree.MakeLink("root/spare", "../precious");
  tree.WriteFile("precious/parent/file", "precious");
  tree.WriteFile("precious/parent/folder/inside", "precious");
  const QByteArray home = NameToBytes(tree.Path("home"));
  const TVariables user{{"HOME", home.constData()}, {"XDG_DATA_HOME", nullptr}};
  const TOpenFolder other = TOpenFolder::Open(tree.Path("other"));
  const TFileDescriptor parent = OpenPath(NameToBytes(tree.Path("root/above/parent")), O_PATH | O_DIRECTORY);

  std::array<int, kActs.size()> done{};
  int refused = 0;
  {
    const TSwaps swapping(NameToBytes(tree.Path("root")));
    for (size_t i = 0; swapping.Count() < swaps || refused < 100 || i < 500; ++i) {
      mkdirat(parent.Get(), "folder", 0755);
      const TFileDescriptor file(openat(parent.Get(), "file", O_CREAT | O_WRONLY | O_CLOEXEC, 0644));
      const TOpenFolder opened = OpenBelowRoot(tree.Path("root"), tree.Path("root/above/parent"));
      if (!opened.IsOpen()) ++refused;
      if (kActs[i % kActs.size()](opened, other)) ++done[i % kActs.size()];
    }
  }
  for (const int count : done)
    EXPECT_GT(count, 0);
  for (const char* const name : {"precious/parent/file", "precious/parent/folder/inside"})
    EXPECT_EQ(ReadWholeFile(tree.Path(name)), QByteArray("precious"));
}

}  // namespace
