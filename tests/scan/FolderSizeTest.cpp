// Sums of folders: what counts, the crew that reads them and the thread that answers a queue of them.
#include "ScanRecorder.h"
#include "scan/FolderSizeThread.h"

#include "Truth.h"
#include "fixtures/NativePath.h"
#include "fixtures/OrdinaryUser.h"
#include "fixtures/QtPrinters.h"
#include "fixtures/TempTree.h"
#include "scan/FolderCrew.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QElapsedTimer>

#include <algorithm>
#include <mutex>
#include <random>
#include <thread>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

quint64 SizeOf(const QString& path, unsigned threads = 0) {
  TFolderCrew crew(threads);
  return GetFolderSize(path, crew);
}

void MakeHostileTree(TTempTree& tree, unsigned seed) {
  std::mt19937 random(seed);
  std::vector<QByteArray> folders{""};
  QByteArray last;
  for (int i = 0; i < 400; ++i) {
    const QByteArray name = folders[random() % folders.size()] + QByteArray::number(i) + "\xe6\x97\xa5";
    const unsigned kind = random() % 8;
    if (kind < 2) {
      tree.MakeFolder(name);
      folders.push_back(name + '/');
    } else if (kind == 2 && !last.isEmpty()) {
      tree.MakeHardLink(name, last);
    } else if (kind == 3 && !HasDrives()) {
      tree.MakeLink(name + '\xff', "..");
    } else if (kind == 4) {
      tree.MakeHole(name, static_cast<qint64>(random()) * 1000);
    } else {
      tree.MakeFile(name, random() % 3000);
      last = name;
      if (kind == 5) last = tree.Hide(name);
      if (kind == 6) tree.MakeReadOnly(name);
    }
  }
}

// The folders that a run reads, in the order in which they are begun, each with its subfolders in turn.
class TTracer : public TFolderVisitor {
 public:
  explicit TTracer(TFolderCrew& crew) : FCrew(crew) {}

  void EntryFound(unsigned, const TFolderTask& folder, TFoundFile& found) override {
    const std::lock_guard lock(FLock);
    ++Entries;
    if (!found.IsDirectory()) return;
    FFound.push_back({folder.Path + found.Name + PathDelim, found.Name.toULongLong()});
  }
  void FolderRead(unsigned thread, const TFolderTask& folder) override {
    std::unique_lock lock(FLock);
    Read << folder.Path.section(PathDelim, -2, -2);
    if (thread != 0) ++ByOthers;
    std::vector<TFolderTask> found;
    found.swap(FFound);
    lock.unlock();
    FCrew.Add(found);
  }

  QStringList Read;
  int Entries = 0;
  int ByOthers = 0;

 private:
  TFolderCrew& FCrew;
  std::mutex FLock;
  std::vector<TFolderTask> FFound;
};

// The answers of a size thread, each as "folder size", the folder by its name.
class TAnswers {
 public:
  TAnswers()
      : Window({{WM_FOLDERSIZE, [this](const TMessage& message) {
                   const auto* const info = reinterpret_cast<const TFolderSizeInfo*>(message.LParam);
                   Records << message.LParam;
                   EXPECT_EQ(message.WParam, 0U);
                   Log << u"%1 %2"_qs.arg(ExtractFileName(info->Path)).arg(info->Size);
                 }}}) {}

  [[nodiscard]] bool WaitFor(qsizetype count) {
    return Clock.WaitUntil([&] { return Log.size() >= count; });
  }

  QStringList Log;
  QList<qintptr> Records;
  TScanRecorder Clock;
  TMessageWindow Window;
};

}  // namespace

TEST(FolderSize, IsWhatTheSystemSumsInAnyTree) {
  for (unsigned seed = 1; seed <= 4; ++seed) {
    TTempTree tree;
    MakeHostileTree(tree, seed);
    const quint64 expected = AskSystem(tree.Path()).Bytes();
    ASSERT_GT(expected, 0U);
    for (const unsigned threads : {1U, 2U, 7U})
      EXPECT_EQ(SizeOf(tree.Path(), threads), expected) << "seed " << seed << ", threads " << threads;
  }
}

TEST(FolderSize, CountsEveryAttributeAtEveryLevel) {
  TTempTree tree;
  tree.MakeFile("plain", 1);
  tree.MakeFile("shy", 10);
  (void)tree.Hide("shy");
  tree.MakeSystemEntry("of the system");
  tree.MakeFile("shy folder/inside", 100);
  (void)tree.Hide("shy folder");
  tree.MakeFile("locked folder/inside", 1000);
  tree.MakeReadOnly("locked folder");
  EXPECT_EQ(SizeOf(tree.Path()), 1111U);
  EXPECT_EQ(SizeOf(tree.Path() + PathDelim), 1111U);
}

// A link that leads into a tree that is summed anyhow, above it, or to a loop adds nothing where links are
// entered; elsewhere each is as long as its text.
TEST(FolderSize, OfLinks) {
  TTempTree tree;
  tree.MakeFile("top/sub/file", 10);
  tree.MakeLink("top/loop", ".");
  tree.MakeLink("top/sub/beside", "../sub");
  tree.MakeFile("outside/deep/file", 100);
  tree.MakeFile("outside/file", 1000);
  tree.MakeLink("outside/deep/up", "..");
  tree.MakeLink("top/1", "../outside/deep");
  tree.MakeLink("top/2", "../outside");
  tree.MakeLink("top/3", "../outside/deep");
  const quint64 lengths = 1 + 6 + 15 + 10 + 15;
  for (int round = 0; round < 20; ++round)
    ASSERT_EQ(SizeOf(tree.Path("top"), 3), HasDrives() ? 1110 : 10 + lengths);
  if (!HasDrives()) return;
  tree.MakeLink("top/above", "..");
  EXPECT_EQ(SizeOf(tree.Path("top"), 3), 1110U);
}

TEST(FolderSize, WhatCantBeReadAddsNothing) {
  TTempTree tree;
  tree.MakeFile("open/file", 5);
  tree.MakeFile("closed/file", 50);
  tree.MakeUnreadable("closed");
  const TOrdinaryUser user;
  EXPECT_EQ(SizeOf(tree.Path()), 5U);
  EXPECT_EQ(SizeOf(tree.Path("missing")), 0U);
  EXPECT_EQ(SizeOf(QString()), 0U) << "not the root of all";
}

TEST(FolderCrew, ReadsTheFirstTurnFirst) {
  TTempTree tree;
  for (const char* const name : {"3", "1/7", "1/2", "9/8", "4"})
    tree.MakeFolder(name);
  TFolderCrew crew(1);
  TTracer tracer(crew);
  crew.Begin(tree.Path() + PathDelim, tracer);
  crew.Finish();
  EXPECT_EQ(tracer.Read.mid(1).join(u' '), u"1 2 3 4 7 9 8"_qs);
}

TEST(FolderCrew, ACrewThatPausesLeavesAllToItsUser) {
  TTempTree tree;
  for (int i = 0; i < 50; ++i)
    tree.MakeFolder(QByteArray::number(i));
  TFolderCrew crew(3);
  TTracer tracer(crew);
  crew.Pause(true);
  crew.Begin(tree.Path() + PathDelim, tracer);
  crew.ReadUntil([&] { return tracer.Read.size() == 20; });
  EXPECT_EQ(tracer.Read.size(), 20);
  EXPECT_EQ(tracer.ByOthers, 0);
  crew.Pause(false);
  crew.Finish();
  EXPECT_EQ(tracer.Read.size(), 51);
}

TEST(FolderCrew, SharesTheWork) {
  TTempTree tree;
  for (int i = 0; i < 300; ++i)
    tree.MakeFile("f" + QByteArray::number(i) + "/x", 1);
  TFolderCrew crew(2);
  EXPECT_EQ(crew.Size(), 2U);
  int byOthers = 0;
  for (int round = 0; round < 200 && byOthers == 0; ++round) {
    TTracer tracer(crew);
    crew.Begin(tree.Path() + PathDelim, tracer);
    crew.Finish();
    EXPECT_EQ(tracer.Read.size(), 301);
    byOthers = tracer.ByOthers;
  }
  EXPECT_GT(byOthers, 0);
}

TEST(FolderCrew, AStopEndsARunWithinAFolder) {
  const int files = HasDrives() ? 1500 : 4000;
  TTempTree tree;
  for (int i = 0; i < files; ++i)
    tree.MakeHole(QByteArray::number(i), 1);
  int entries = files;
  for (int round = 0; round < 300 && entries == files; ++round) {
    TFolderCrew crew(2);
    TTracer tracer(crew);
    std::thread stopper([&crew] { crew.Stop(); });
    crew.Begin(tree.Path() + PathDelim, tracer);
    crew.Finish();
    stopper.join();
    entries = tracer.Entries;
  }
  EXPECT_LT(entries, files);
}

TEST(FolderSizeThread, AnswersItsQueueInOrderWithOneRecord) {
  TTempTree tree;
  tree.MakeFile("a/file", 1);
  tree.MakeFile("b/deep/file", 2);
  tree.MakeFolder("empty");
  TAnswers answers;
  TGetFolderSizeThread thread(&answers.Window);
  for (const char* const name : {"b", "a", "missing", "b", "empty"})
    thread.AddFolder(tree.Path(name));
  ASSERT_TRUE(answers.WaitFor(5));
  EXPECT_THAT(answers.Log, ElementsAre(u"b 2"_qs, u"a 1"_qs, u"missing 0"_qs, u"b 2"_qs, u"empty 0"_qs));
  EXPECT_EQ(answers.Records, QList<qintptr>(5, answers.Records.front()));
  thread.AddFolder(tree.Path("a"));
  ASSERT_TRUE(answers.WaitFor(6)) << "after it has come to rest";
}

TEST(FolderSizeThread, ThePathComesBackAsItWasQueued) {
  TTempTree tree;
  tree.MakeFile("a/file", 1);
  QStringList paths;
  TScanRecorder clock;
  TMessageWindow window{{WM_FOLDERSIZE, [&](const TMessage& message) {
                           paths << reinterpret_cast<const TFolderSizeInfo*>(message.LParam)->Path;
                         }}};
  TGetFolderSizeThread thread(&window);
  const QStringList asked{tree.Path("a"), tree.Path("a") + PathDelim};
  for (const QString& path : asked)
    thread.AddFolder(path);
  ASSERT_TRUE(clock.WaitUntil([&] { return paths.size() == 2; }));
  EXPECT_EQ(paths, asked);
}

// The answer waits for this thread, which comes to take it no more.
TEST(FolderSizeThread, ATerminationDoesNotWaitForAnAnswer) {
  TTempTree tree;
  tree.MakeFile("a/file", 1);
  for (const bool destroyed : {false, true}) {
    TAnswers answers;
    auto thread = std::make_unique<TGetFolderSizeThread>(&answers.Window);
    for (int i = 0; i < 3; ++i)
      thread->AddFolder(tree.Path("a"));
    ASSERT_TRUE(answers.WaitFor(1));
    QElapsedTimer clock;
    clock.start();
    if (destroyed)
      thread.reset();
    else
      thread->Terminate();
    EXPECT_LT(clock.elapsed(), 2000);
    const QStringList before = answers.Log;
    thread.reset();
    PumpMessages();
    EXPECT_EQ(answers.Log, before) << "an answer came after the end";
  }
}

TEST(FolderSizeThread, ATerminationWithinTheHandlerEndsTheAnswers) {
  TTempTree tree;
  std::unique_ptr<TGetFolderSizeThread> thread;
  TScanRecorder clock;
  int answers = 0;
  TMessageWindow window{{WM_FOLDERSIZE, [&](const TMessage&) {
                           ++answers;
                           thread->Terminate();
                         }}};
  thread = std::make_unique<TGetFolderSizeThread>(&window);
  thread->AddFolder(tree.Path());
  thread->AddFolder(tree.Path());
  ASSERT_TRUE(clock.WaitUntil([&] { return answers > 0; }));
  thread.reset();
  PumpMessages();
  EXPECT_EQ(answers, 1);
}

// No answer tells of the part that was summed.
TEST(FolderSizeThread, ATerminationCutsASumShort) {
  const int folders = HasDrives() ? 300 : 2000;
  TTempTree tree;
  for (int i = 0; i < folders; ++i)
    tree.MakeFile(QByteArray::number(i) + "/file", 1);
  TAnswers answers;
  QElapsedTimer clock;
  {
    TGetFolderSizeThread thread(&answers.Window);
    for (int i = 0; i < 100; ++i)
      thread.AddFolder(tree.Path());
    clock.start();
  }
  EXPECT_LT(clock.elapsed(), 1000);
  PumpMessages();
  EXPECT_THAT(answers.Log, IsEmpty());
}
