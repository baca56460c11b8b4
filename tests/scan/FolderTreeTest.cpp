#include "scan/FolderTree.h"

#include <gtest/gtest.h>

#include <numeric>

namespace {

quint64 Sum(const TKindSizes& sizes) {
  return std::accumulate(sizes.begin(), sizes.end(), quint64{0});
}

}  // namespace

// A chain of folders in which each holds all but one byte of the one above, told from its end, and as many
// small ones beside it.
TEST(FolderTree, TheLargestHaveAPlaceAndWhatTheOthersHoldIsKept) {
  constexpr quint32 kChain = 5000;
  std::vector<TGatheredFolder> gathered(2 * kChain + 1);
  std::vector<TKindSizes> own(gathered.size());
  for (quint32 i = 1; i <= kChain; ++i) {
    gathered[i] = {true, i == kChain ? 0 : i + 1, 1000 + i};
    own[i] = {0, i == 1 ? 1001U : 1U};
    gathered[kChain + i] = {true, 0, i % 2};
    own[kChain + i] = {i % 2};
  }
  gathered[7 + kChain].There = false;
  gathered[0] = {true, 0, 1000 + kChain + kChain / 2 - 1};
  const TFolderTree tree = MakeFolderTree(
      gathered, [](quint32 folder) { return QString::number(folder); },
      [&own](quint32 folder) { return own[folder]; });
  ASSERT_EQ(tree.Folders.size(), kMostTreeFolders);
  quint64 bytes = 0;
  for (size_t i = 0; i < tree.Folders.size(); ++i) {
    const TFolderTree::TFolder& folder = tree.Folders[i];
    bytes += Sum(folder.Own);
    if (i == 0) continue;
    EXPECT_EQ(folder.Name, QString::number(kChain + 1 - i));
    EXPECT_EQ(folder.Parent, static_cast<int>(i) - 1);
  }
  EXPECT_EQ(bytes, gathered[0].Total);
  EXPECT_EQ(Sum(tree.Folders.back().Own), tree.Folders.back().Total) << "with all below it";
}
