#include "fixtures/TempTree.h"
#include "platform/FileEnumeration.h"
#include "platform/FileTests.h"
#include "platform/Paths.h"
#include "platform/XmlDocument.h"

#include <gtest/gtest.h>

#include <map>

namespace {

TEST(SpecialFiles, LinksAndPipesAreEntriesOfTheirOwn) {
  TTempTree tree;
  tree.MakeLink("link to folder", ".");
  tree.MakeLink(".broken link", "nowhere at all");
  tree.MakeSystemEntry("pipe");
  const std::map<QByteArray, std::pair<unsigned, quint64>> expected = {
      {"link to folder", {kAttributeReparse, 1}},
      {".broken link", {kAttributeReparse | kAttributeHidden, 14}},
      {"pipe", {kAttributeSystem, 0}},
  };
  std::map<QByteArray, std::pair<unsigned, quint64>> entries;
  TFileEnumeration files;
  TFoundFile found;
  for (bool more = files.First(tree.Path(), found); more; more = files.Next(found))
    entries[NameToBytes(found.Name)] = {found.Attributes, found.Size};
  EXPECT_EQ(entries, expected);
}

TEST(SpecialFiles, AFileOfTheKernelTellsNoLength) {
  const QString lengthToldAs0 = QStringLiteral("/proc/self/status");
  EXPECT_TRUE(ReadWholeFile(lengthToldAs0)->contains("VmRSS"));
  EXPECT_FALSE(ReadWholeFile(lengthToldAs0, 100));
}

TEST(SpecialFiles, APipeIsNeverRead) {
  TTempTree tree;
  tree.MakeSystemEntry("pipe");
  EXPECT_FALSE(ReadWholeFile(tree.Path("pipe")));
  EXPECT_THROW((void)LoadXml(tree.Path("pipe")), TXmlError);
}

TEST(SpecialFiles, EntriesThatVanishMeanwhileAreLeftOut) {
  TTempTree tree;
  const std::vector<QByteArray> names{"a", "b", "c", "d"};
  for (const QByteArray& name : names)
    tree.MakeFile(name, 1);
  TFileEnumeration files;
  TFoundFile found;
  ASSERT_TRUE(files.First(tree.Path(), found));
  for (const QByteArray& name : names) {
    if (name != NameToBytes(found.Name)) tree.Remove(name);
  }
  EXPECT_FALSE(files.Next(found));
  EXPECT_FALSE(files.Next(found)) << "stays at the end";
}

}  // namespace
