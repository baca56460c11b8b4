#include "fixtures/NativePath.h"
#include "fixtures/TempTree.h"
#include "platform/FileEnumeration.h"
#include "platform/FileTests.h"
#include "support/Korvel_Routine_New.h"

#include <gtest/gtest.h>

namespace {

quint64 SizeBelow(const QString& folder) {
  return FolderSizeOf(folder + PathDelim + u"*.*"_qs);
}

}  // namespace

TEST(FolderSizeOf, SumsFilesOfAnyNameInPlainFolders) {
  TTempTree tree;
  tree.MakeFile("a", 1);
  tree.MakeFile(".hidden file", 20);
  tree.MakeFile("sub/caf\xc3\xa9", 300);
  tree.MakeFile(HasDrives() ? "sub/\xe6\x97\xa5\xe6\x9c\xac" : "sub/bad\xff", 4000);
  tree.MakeFile("sub/deeper/x", 50000);
  tree.MakeHole("sub/hole", qint64{1} << 40);
  EXPECT_EQ(SizeBelow(tree.Path()), 54321 + (quint64{1} << 40));
}

TEST(FolderSizeOf, FoldersThatAreNotPlainCountForNothing) {
  TTempTree tree;
  tree.MakeFile("plain/x", 1);
  tree.MakeFile(".git/x", 20);
  tree.MakeFile("plain/.cache/x", 300);
  tree.MakeFile("read only/x", 4000);
  tree.MakeReadOnly("read only");
  tree.MakeFile("hid/x", 50000);
  tree.Hide("hid");
  tree.MakeLink("loop", ".");
  const quint64 linkLength = HasDrives() ? 0 : 1;
  const auto readOnly = GetFileStatus(tree.Path("read only"));
  const bool stays = (readOnly->Attributes & kAttributeReadOnly) == 0;  // Wine has no read-only folders
  EXPECT_EQ(SizeBelow(tree.Path()), 1 + linkLength + (stays ? 4000 : 0));
}

TEST(FolderSizeOf, APathIsTheOneEntry) {
  TTempTree tree;
  const QByteArray odd = HasDrives() ? "a+b" : "a*b";
  tree.MakeFile(odd, 7);
  tree.MakeFile("dir/x", 20);
  tree.MakeFile("dir/y", 300);
  tree.MakeFile(".dir/x", 4000);
  EXPECT_EQ(FolderSizeOf(tree.Path(odd)), 7U);
  EXPECT_EQ(FolderSizeOf(tree.Path("dir")), 320U);
  for (const QString& path : {QString(), tree.Path(".dir"), tree.Path("dir/"), tree.Path("none"),
                              tree.Path("none/*.*"), tree.Path("dir/x/*.*")})
    EXPECT_EQ(FolderSizeOf(path), 0U) << qPrintable(path);
}
