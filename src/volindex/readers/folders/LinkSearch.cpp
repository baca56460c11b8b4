#include "volindex/readers/folders/LinkSearch.h"

#include "volindex/index/RunThreads.h"

#include <algorithm>

namespace volindex {

void TLinkSearch::Run(unsigned threads) {
  const auto& seen = FScan.Seen;
  if (std::all_of(seen.begin(), seen.end(), [](const TSeenFiles& each) { return each.Empty(); })) return;
  RunThreads(threads, [this](unsigned) { SearchParts(); });
  if (FRepeated.empty() || Stopped()) return;
  std::sort(FRepeated.begin(), FRepeated.end(), [this](const TSeenFile& a, const TSeenFile& b) {
    if (a.Number != b.Number) return a.Number < b.Number;
    if (a.Folder == kNoFolder || b.Folder == kNoFolder) return a.Folder > b.Folder;
    return FScan.Builder.CompareFolders(a.Folder, b.Folder) < 0;
  });
  std::sort(FFolders.begin(), FFolders.end());
  FFolders.erase(std::unique(FFolders.begin(), FFolders.end()), FFolders.end());
  FFound = std::make_unique<std::atomic<uint64_t>[]>(FRepeated.size());
  RunThreads(threads, [this](unsigned thread) { ListFolders(thread); });
  if (!Stopped()) Withdraw();
}

// Parts are shared out by a counter, and all that is seen of a file is in one part: the lock is for the
// results alone.
void TLinkSearch::SearchParts() {
  for (size_t part = FNextPart++; part < TSeenFiles::kParts && !Stopped(); part = FNextPart++) {
    std::vector<TSeenFile> files;
    for (const TSeenFiles& seen : FScan.Seen)
      files.insert(files.end(), seen.Part(part).begin(), seen.Part(part).end());
    TakeRepeated(files);
  }
}

void TLinkSearch::TakeRepeated(std::vector<TSeenFile>& files) {
  const auto byNumber = [](const TSeenFile& a, const TSeenFile& b) { return a.Number < b.Number; };
  std::sort(files.begin(), files.end(), byNumber);
  for (size_t i = 0; i < files.size(); ++i) {
    const bool repeated = (i > 0 && files[i - 1].Number == files[i].Number) ||
                          (i + 1 < files.size() && files[i + 1].Number == files[i].Number);
    if (!repeated) continue;
    const std::lock_guard guard(FLock);
    FRepeated.push_back(files[i]);
    if (files[i].Folder != kNoFolder) FFolders.push_back(files[i].Folder);
  }
}

void TLinkSearch::ListFolders(unsigned thread) {
  TFolderListing listing;
  TIndexShard& shard = FScan.Builder.Shard(thread);
  for (size_t next = FNextFolder++; next < FFolders.size() && !Stopped(); next = FNextFolder++)
    AddLinksIn(FFolders[next], listing, shard);
  shard.CountBytesRead(listing.BytesRead());
}

// A name that is added a second time does no harm.
void TLinkSearch::AddLinksIn(TFolderId id, TFolderListing& listing, TIndexShard& shard) {
  TFolderHandle folder;
  if (OpenFromRoot(FScan, id, folder) != TAccess::Ok) return;
  listing.Start(folder);
  while (!Stopped() && listing.Next() == TAccess::Ok) {
    TEntryFacts facts;
    if (listing.Facts(facts) != TAccess::Ok || facts.IsFolder) continue;
    const auto first = std::ranges::lower_bound(FRepeated, facts.Number, {}, &TSeenFile::Number);
    if (first == FRepeated.end() || first->Number != facts.Number) continue;
    shard.AddLinkedFile(id, listing.Name(), facts.Size, LinkKeyOf(facts), facts.Allocated);
    FFound[static_cast<size_t>(first - FRepeated.begin())].store(facts.Allocated + 1,
                                                                 std::memory_order_relaxed);
  }
}

// A record without a folder, which comes first, tells that the file is counted as a link already.
void TLinkSearch::Withdraw() {
  TIndexShard& shard = FScan.Builder.Shard(0);
  bool counted = false;
  uint64_t found = 0;
  for (size_t i = 0; i < FRepeated.size(); ++i) {
    const TSeenFile& file = FRepeated[i];
    if (i == 0 || file.Number != FRepeated[i - 1].Number) found = FFound[i], counted = found != 0;
    if (file.Folder != kNoFolder && counted)
      shard.WithdrawFile(file.Folder, file.Size, std::max<uint64_t>(found, 1) - 1, file.Kind());
    counted = true;
  }
}

}  // namespace volindex
