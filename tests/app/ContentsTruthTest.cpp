// The sizes that the Contents tab shows beside those that the system's own find sums up.
#include <gtest/gtest.h>

#include "ContentsFixture.h"
#include "fixtures/NativePath.h"
#include "scan/Truth.h"

namespace {

class ContentsTruth : public TContentsTest {};

}  // namespace

TEST_F(ContentsTruth, EverySizeShownIsTheSumOfFind) {
  FTree.MakeFile("h/films/.deep/x", 12345);
  FTree.Hide("h/films");
  FTree.MakeFile("h/same/one", 4000);
  FTree.MakeHardLink("h/same/two", "h/same/one");
  FTree.MakeHardLink("h/other/three", "h/same/one");
  FTree.MakeHole("h/other/hole", qint64{5} << 40);
  FTree.MakeFile("h/\xe6\x97\xa5\xe6\x9c\xac/caf\xc3\xa9", 77);
  FTree.MakeFile("h/file", 1023);
  FTree.MakeReadOnly("h/file");
  FTree.MakeFolder("h/nothing");
  FTree.MakeFile("h" + QByteArray("/deep").repeated(60) + "/x", 3);
  FTree.MakeFile("h/100%/%APP%", 9);
  if (!HasDrives()) {
    FTree.MakeFile("h/a/x", 1);
    FTree.MakeFile("h/A/x", 2000);
    FTree.MakeFile("h/bad\xff/\xfe", 300);
    FTree.MakeLink("h/bad\xff/up", "..");
    FTree.MakeLink("h/link", "films");
    FTree.MakeLink("h/loop", "loop");
    FTree.MakeSystemEntry("h/same/pipe");
  }
  Enter();
  ASSERT_TRUE(Pick("h"));
  ASSERT_TRUE(WaitForSizes());
  ASSERT_GE(Shown().Items().Count(), HasDrives() ? 8 : 13);
  const TTruth truth(FTree.Path("h"));
  for (const TListItem* item : Shown().Items()) {
    const TRzShellListData& row = TRzShellList::ShellData(*item);
    const QByteArray path = NameToBytes(row.Path());
    quint64 bytes = 0;
    for (const auto& [file, size] : truth.Files)
      if (file == path || file.startsWith(path + PathDelim.toLatin1())) bytes += size;
    EXPECT_EQ(item->SubItems().Text(0), SizeToText(static_cast<qint64>(bytes)))
        << qPrintable(item->Caption());
    EXPECT_EQ(*static_cast<const qint64*>(row.Data), static_cast<qint64>(bytes))
        << qPrintable(item->Caption());
  }
}
