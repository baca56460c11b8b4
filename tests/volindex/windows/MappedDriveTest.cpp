// A drive with a real NTFS volume: what is read raw from its device is what the system shows of it. Run by
// mapped_drive, which makes the volume.
#include "volindex/IndexAnswer.h"
#include "volindex/system/ScanRoot.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace volindex {
namespace {

std::string Drive() {
  return std::getenv("TALLYSCOPE_TEST_VOLUME");
}

TEST(MappedDrive, IsReadRawFirstAndAFolderOfItIsNoVolume) {
  const auto readers = ReadersInUse();
  EXPECT_STREQ(readers.front()->Name(), "ntfs");
  for (const bool isDrive : {true, false}) {
    const auto root = DescribeScanRoot(Drive() + (isDrive ? "" : "links"));
    ASSERT_TRUE(root.has_value());
    EXPECT_EQ(root->IsVolumeRoot, isDrive);
    EXPECT_TRUE(!isDrive || root->FileSystem == "NTFS");
    EXPECT_EQ(readers.front()->Accepts(*root), isDrive);
  }
}

TEST(MappedDrive, EveryReaderAnswersWhatAWalkFinds) {
  const TAnswer truth = AnswerOfDisk(Drive().substr(0, 2));
  EXPECT_TRUE(truth.FileCount > 1000 && truth.FolderCount > 1000);
  for (const char* reader : {"ntfs", "folders"})
    EXPECT_EQ(AnswerOfReader(reader, Drive()), truth) << reader;
}

}  // namespace
}  // namespace volindex
