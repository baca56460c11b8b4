// A drive with a real NTFS volume: what is read raw from its device is what the system shows of it. Run by
// mapped_drive, which makes the volume.
#include "volindex/IndexAnswer.h"
#include "volindex/system/ScanRoot.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace volindex {
namespace {

class MappedDrive : public testing::Test {
 protected:
  static std::string Drive() { return std::getenv("TALLYSCOPE_TEST_VOLUME"); }
};

TEST_F(MappedDrive, IsReadRawFirst) {
  const auto root = DescribeScanRoot(Drive());
  ASSERT_TRUE(root.has_value());
  EXPECT_TRUE(root->IsVolumeRoot);
  EXPECT_EQ(root->FileSystem, "NTFS");
  const auto readers = ReadersInUse();
  EXPECT_STREQ(readers.front()->Name(), "ntfs");
  EXPECT_TRUE(readers.front()->Accepts(*root));
}

TEST_F(MappedDrive, EveryReaderAnswersWhatAWalkFinds) {
  const TAnswer truth = AnswerOfDisk(Drive().substr(0, 2));
  EXPECT_GT(truth.FileCount, 1000U);
  EXPECT_GT(truth.FolderCount, 1000U);
  EXPECT_EQ(AnswerOfReader("ntfs", Drive()), truth);
  EXPECT_EQ(AnswerOfReader("folders", Drive()), truth);
}

TEST_F(MappedDrive, FolderOfTheDriveIsNoVolume) {
  const auto root = DescribeScanRoot(Drive() + "links");
  ASSERT_TRUE(root.has_value());
  EXPECT_FALSE(root->IsVolumeRoot);
  EXPECT_FALSE(ReadersInUse().front()->Accepts(*root));
}

}  // namespace
}  // namespace volindex
