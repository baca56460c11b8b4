#include "volindex/readers/folders/FoldersReader.h"

#include "volindex/index/RunThreads.h"
#include "volindex/readers/folders/FolderWorker.h"
#include "volindex/readers/folders/LinkSearch.h"
#include "volindex/system/ScanRoot.h"

#include <algorithm>

namespace volindex {

namespace {

// Threads that may read while the disk is waited for, of which so many begin.
unsigned MostThreads(unsigned atOnce) {
  constexpr unsigned kEach = 8;
  constexpr unsigned kMostWaiting = 32;
  return std::max(atOnce, std::min(kEach * atOnce, kMostWaiting));
}

void RunWorker(TFolderScan& scan, unsigned thread) {
  try {
    TFolderWorker(scan, thread).Run();
  } catch (...) {
    scan.Queue.Cancel();  // so that the others do not wait for this one
    throw;
  }
}

}  // namespace

TReadResult TFoldersReader::Read(const TScanRoot& root, TIndexBuilder& builder, const TScanControl& control) {
  const unsigned atOnce = FThreads != 0 ? FThreads : ThreadsFor(root);
  const unsigned threads = FThreads != 0 ? FThreads : MostThreads(atOnce);
  builder.Begin(threads, TFolderOrder::ParentsFirst);
  TFolderHandle folder;
  TEntryFacts facts;
  if (folder.OpenRoot(root.Path) != TAccess::Ok || folder.Facts(facts) != TAccess::Ok)
    return TReadResult::HandedOver;
  TFolderScan scan{0,
                   builder,
                   control,
                   folder,
                   facts,
                   TFolderQueue({{kRootFolder, nullptr, 1.0}}, atOnce),
                   TFolderProgress(control),
                   FOpenLimit != 0 ? FOpenLimit : OpenFolderLimit(),
                   std::vector<TSeenFiles>(threads),
                   FKnown};
  RunThreads(threads, [&scan](unsigned thread) { RunWorker(scan, thread); });
  // By then every worker has ended, so that nothing is added any more while files are taken back.
  TLinkSearch(scan).Run(atOnce);
  return builder.Finish(control.Stop) == TFinish::Done ? TReadResult::Done : TReadResult::Stopped;
}

}  // namespace volindex
