// The file commands where the system is slow or refuses.
#include "../TabFixture.h"
#include "platform/posix/SystemCalls.h"

namespace {

class SlowDisk : public TFileOperationsTest {
 protected:
  ~SlowDisk() override { gDisk.IsOther = gDisk.Stalls = false; }

  // Moves all rows to what seems another volume. The disk goes on when the user has acted on the box that
  // tells of the copy, and that has been seen to.
  void MoveWhile(const std::function<void(QProgressDialog&)>& user) {
    gDisk.IsOther = gDisk.Stalls = true;
    bool acted = false;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &FForm, [&] {
      auto* box = FForm.findChild<QProgressDialog*>(u"FileProgress"_qs);
      if (acted) gDisk.Stalls = false;
      if (acted || box == nullptr || !box->isVisible()) return;
      acted = true;
      user(*box);
    });
    look.start(10);
    On(kTopFilesTab).Move();
  }
};

TEST_F(SlowDisk, ALongCopyIsToldAndCancelEndsItWithTheRowsBehindIt) {
  AddFileRow("root", "first");
  AddFileRow("root", "second");
  FTree.MakeFile("root/first", 3 << 20);
  MoveWhile([&](QProgressDialog& box) {
    EXPECT_EQ(box.labelText(), u"Moving \"first\""_qs);
    QTest::mouseClick(&FForm, Qt::LeftButton);
    EXPECT_TRUE(box.isVisible()) << "input beside the box is dropped";
    QTest::mouseClick(box.findChild<QPushButton*>(), Qt::LeftButton);
  });
  EXPECT_TRUE(There("root/first") && There("root/second"));
  EXPECT_TRUE(QDir(FTree.Path("to")).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
  int told = 0;
  MoveWhile([&told](QProgressDialog& box) {
    ++told;
    EXPECT_EQ(box.maximum(), 1000);
  });
  EXPECT_EQ(told, 1);
  EXPECT_TRUE(There("to/first") && There("to/second")) << "a copy that nobody cancels goes on";
  EXPECT_EQ(FForm.findChild<QProgressDialog*>(u"FileProgress"_qs), nullptr);
}

// What is put off to the next start takes its row along on each tab, the Overview's too.
TEST_F(SlowDisk, ADeleteAtRestartTakesTheRowOff) {
  FTree.MakeAll({"system/etc/tmpfiles.d/", "system/run/systemd/system/"});
  for (const TTabIndex tab : kTabs) {
    Clear();
    AddFileRow("root", "file");
    {
      const TPlannedCalls calls({.Undeletable = true, .Redirected = NameToBytes(FTree.Path("system"))});
      On(tab).Delete();
    }
    EXPECT_TRUE(There("root/file"));
    EXPECT_EQ(FList.Items().Count(), 0) << tab;
  }
}

}  // namespace
