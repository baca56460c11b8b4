// The crew that reads folders, and the thread that answers a queue of them with their sums.
#include "ScanRecorder.h"
#include "Truth.h"
#include "fixtures/SystemTest.h"
#include "scan/FolderCrew.h"
#include "scan/FolderSizeThread.h"

#include <mutex>

namespace {

// The folders that a run reads, in the order in which they are begun, each with its subfolders in turn.
class TTracer : public TFolderVisitor {
 public:
  bool EntryFound(unsigned, const TFolderTask& folder, TFoundFile& found) override {
    if (Hangs) Hangs->release(), Answer.acquire();  // as a call of the system on a mount whose server is gone
    const std::lock_guard lock(FLock);
    ++Entries;
    if (found.IsDirectory())
      FFound.push_back({folder.Path + found.Name + PathDelim, found.Name.toULongLong(), nullptr});
    return true;
  }
  void FolderRead(unsigned thread, const TFolderTask& folder, std::vector<TFolderTask>& next) override {
    const std::lock_guard lock(FLock);
    Read << folder.Path.section(PathDelim, -2, -2);
    if (thread != 0) ++ByOthers;
    FFound.swap(next);
  }

  QSemaphore* Hangs = nullptr;
  QSemaphore Answer;
  QStringList Read;
  int Entries = 0;
  int ByOthers = 0;

 private:
  std::mutex FLock;
  std::vector<TFolderTask> FFound;
};

// The answers of a size thread, each as "folder size", the folder by its name.
struct TAnswers {
  [[nodiscard]] bool WaitFor(qsizetype count) {
    return TScanRecorder::WaitUntil([&] { return Log.size() >= count; });
  }
  void Take(const TMessage& message) {
    const auto* const info = reinterpret_cast<const TFolderSizeInfo*>(message.LParam);
    Records << message.LParam;
    EXPECT_EQ(message.WParam, 0U);
    Log << info->Path.section(PathDelim, Root) + u' ' + QString::number(info->Size);
    if (WhenAnswered) WhenAnswered();
  }

  TTempTree Tree;
  const qsizetype Root = Tree.Path().count(PathDelim) + 1;
  std::function<void()> WhenAnswered;
  QStringList Log;
  QList<qintptr> Records;
  TMessageWindow Window{{{WM_FOLDERSIZE, [this](const TMessage& message) { Take(message); }}}};
};

}  // namespace

TEST(FolderCrew, ReadsTheFirstTurnFirst) {
  TTempTree tree;
  for (const char* const name : {"3", "1/7", "1/2", "9/8", "4"})
    tree.MakeFolder(name);
  TFolderCrew crew(1);
  const auto tracer = std::make_shared<TTracer>();
  crew.Begin({tree.Path() + PathDelim, 5, nullptr}, tracer);
  ASSERT_TRUE(crew.Finish());
  EXPECT_EQ(tracer->Read.mid(1).join(u' '), u"1 2 3 4 7 9 8"_qs);
}

TEST(FolderCrew, SharesTheWork) {
  TTempTree tree;
  for (int i = 0; i < 300; ++i)
    tree.MakeFile("f" + QByteArray::number(i) + "/x", 1);
  TFolderCrew crew(2);
  int byOthers = 0;
  for (int round = 0; round < 200 && (byOthers == 0 || byOthers == 301); ++round) {
    const auto tracer = std::make_shared<TTracer>();
    crew.Begin({tree.Path() + PathDelim, 1, nullptr}, tracer);
    ASSERT_TRUE(crew.Finish());
    EXPECT_EQ(tracer->Read.size(), 301);
    byOthers = tracer->ByOthers;
  }
  EXPECT_TRUE(byOthers > 0 && byOthers < 301) << byOthers;
}

TEST(FolderCrew, AStopEndsARunWithinAFolder) {
  const int files = HasDrives() ? 1500 : 4000;
  TTempTree tree;
  for (int i = 0; i < files; ++i)
    tree.MakeHole(QByteArray::number(i), 1);
  int entries = files;
  for (int round = 0; round < 300 && entries == files; ++round) {
    const auto tracer = std::make_shared<TTracer>();
    {
      TFolderCrew crew(2);
      crew.Begin({tree.Path() + PathDelim, 1, nullptr}, tracer);
      crew.Stop();
      EXPECT_FALSE(crew.Finish());
    }
    entries = tracer->Entries;
  }
  EXPECT_LT(entries, files);
}

TEST(FolderCrew, AThreadThatHangsIsLeftBehindWithWhatItUses) {
  TTempTree tree;
  tree.MakeFile("file", 1);
  QSemaphore hangs;
  auto hanging = std::make_shared<TTracer>();
  hanging->Hangs = &hangs;
  const std::weak_ptr<TTracer> lives = hanging;
  QElapsedTimer clock;
  {
    TFolderCrew crew(2);
    crew.Begin({tree.Path() + PathDelim, 1, nullptr}, hanging);
    hangs.acquire();
    clock.start();
  }
  EXPECT_LT(clock.elapsed(), 5000);
  TTracer& left = *hanging;
  hanging.reset();
  ASSERT_FALSE(lives.expired());
  left.Answer.release();
  EXPECT_TRUE(TScanRecorder::WaitUntil([&] { return lives.expired(); }));
}

TEST(FolderSizeThread, AnswersItsQueueInOrderWithOneRecord) {
  TAnswers answers;
  answers.Tree.MakeFile("a/file", 1);
  answers.Tree.MakeFile("b/deep/file", 2);
  answers.Tree.MakeFolder("empty");
  TGetFolderSizeThread thread(&answers.Window);
  for (const char* const name : {"b", "a/", "missing", "b", "empty"})
    thread.AddFolder(answers.Tree.Path(name));
  ASSERT_TRUE(answers.WaitFor(5));
  const QString slashed = u"a"_qs + PathDelim + u" 1"_qs;
  EXPECT_THAT(answers.Log, ElementsAre(u"b 2"_qs, slashed, u"missing 0"_qs, u"b 2"_qs, u"empty 0"_qs));
  EXPECT_EQ(answers.Records, QList<qintptr>(5, answers.Records.front()));
  thread.AddFolder(answers.Tree.Path("a"));
  ASSERT_TRUE(answers.WaitFor(6)) << "after it has come to rest";
}

TEST(FolderSizeThread, SumsAreThoseOfAnotherListing) {
  TAnswers answers;
  TTempTree& tree = answers.Tree;
  tree.MakeFile("films/.deep/x", 12345);
  tree.MakeFile("same/one", 4000);
  tree.MakeHardLink("same/two", "same/one");
  tree.MakeHardLink("other/three", "same/one");
  tree.MakeHole("other/hole", qint64{1} << 40);
  tree.MakeFile("\xe6\x97\xa5\xe6\x9c\xac/caf\xc3\xa9", 77);
  // The other listing takes no longer paths on Windows.
  tree.MakeFile(QByteArray("deep/").repeated(HasDrives() ? 30 : 60) + "x", 3);
  tree.MakeFile("100%/%APP%", 9);
  QByteArrayList folders{tree.Hide("films"), "same", "other", "\xe6\x97\xa5\xe6\x9c\xac", "deep", "100%"};
  if (!HasDrives()) {
    tree.MakeFile("a/x", 1);
    tree.MakeFile("A/x", 2000);
    tree.MakeFile("odd/bad\xff/\xfe", 300);
    tree.MakeLink("odd/bad\xff/up", "..");
    tree.MakeSystemEntry("same/pipe");
    folders += {"a", "A", "odd"};
  }
  TGetFolderSizeThread thread(&answers.Window);
  QStringList expected;
  for (const QByteArray& folder : folders) {
    thread.AddFolder(tree.Path(folder));
    expected << NameFromBytes(folder) + u' ' + QString::number(TTruth(tree.Path(folder)).Bytes);
  }
  ASSERT_TRUE(answers.WaitFor(folders.size()));
  EXPECT_EQ(answers.Log, expected);
}

// By its owner, who comes to take no answer any more, or within the handler of one.
TEST(FolderSizeThread, ATerminationEndsTheAnswersAndWaitsForNone) {
  for (const bool withinHandler : {false, true}) {
    TAnswers answers;
    answers.Tree.MakeFile("a/file", 1);
    auto thread = std::make_unique<TGetFolderSizeThread>(&answers.Window);
    if (withinHandler) answers.WhenAnswered = [&] { thread->Terminate(); };
    for (int i = 0; i < 3; ++i)
      thread->AddFolder(answers.Tree.Path("a"));
    ASSERT_TRUE(answers.WaitFor(1));
    QElapsedTimer clock;
    clock.start();
    thread->Terminate();
    EXPECT_LT(clock.elapsed(), 2000);
    const QStringList before = answers.Log;
    thread.reset();
    PumpMessages();
    EXPECT_EQ(answers.Log, before) << "an answer came after the end";
    EXPECT_TRUE(!withinHandler || before.size() == 1);
  }
}

// No answer tells of the part that was summed.
TEST(FolderSizeThread, ATerminationCutsASumShort) {
  const int folders = HasDrives() ? 300 : 2000;
  TAnswers answers;
  for (int i = 0; i < folders; ++i)
    answers.Tree.MakeFile(QByteArray::number(i) + "/file", 1);
  QElapsedTimer clock;
  {
    TGetFolderSizeThread thread(&answers.Window);
    for (int i = 0; i < 100; ++i)
      thread.AddFolder(answers.Tree.Path());
    clock.start();
  }
  EXPECT_LT(clock.elapsed(), 1000);
  PumpMessages();
  EXPECT_TRUE(answers.Log.isEmpty());
}
