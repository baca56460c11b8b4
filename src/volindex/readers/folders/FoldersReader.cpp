#include "volindex/readers/folders/FoldersReader.h"

#include "volindex/index/RunThreads.h"
#include "volindex/posix/ScanRoot.h"
#include "volindex/readers/folders/FolderWorker.h"

namespace volindex {

namespace {

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
  const unsigned threads = FThreads != 0 ? FThreads : ThreadsFor(root);
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
                   TFolderQueue({kRootFolder, nullptr, 1.0}),
                   TFolderProgress(control),
                   FOpenLimit != 0 ? FOpenLimit : OpenFolderLimit()};
  RunThreads(threads, [&scan](unsigned thread) { RunWorker(scan, thread); });
  return builder.Finish(control.Stop) == TFinish::Done ? TReadResult::Done : TReadResult::Stopped;
}

}  // namespace volindex
