#include "volindex/posix/ElevatedReader.h"
#include "volindex/readers/Reader.h"
#include "volindex/readers/btrfs/BtrfsReader.h"
#include "volindex/readers/ext4/Ext4Reader.h"
#include "volindex/readers/folders/FoldersReader.h"
#include "volindex/readers/ntfs/NtfsReader.h"
#include "volindex/readers/xfs/XfsReader.h"

namespace volindex {

std::vector<std::unique_ptr<TReader>> MakeReaders() {
  std::vector<std::unique_ptr<TReader>> readers;
  readers.push_back(std::make_unique<TExt4Reader>());
  readers.push_back(std::make_unique<xfs::TXfsReader>());
  readers.push_back(std::make_unique<btrfs::TBtrfsReader>());
  readers.push_back(std::make_unique<ntfs::TNtfsReader>());
  readers.push_back(std::make_unique<TElevatedReader>());
  readers.push_back(std::make_unique<TFoldersReader>());
  return readers;
}

}  // namespace volindex
