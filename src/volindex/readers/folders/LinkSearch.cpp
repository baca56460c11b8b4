#include "volindex/readers/folders/LinkSearch.h"

#include "volindex/index/RunThreads.h"

#include <algorithm>

namespace volindex {

namespace {

template <class T>
void SortOnce(std::vector<T>& values) {
  std::sort(values.begin(), values.end());
  values.erase(std::unique(values.begin(), values.end()), values.end());
}

}  // namespace

void TLinkSearch::Run(unsigned threads) {
  const auto& seen = FScan.Seen;
  if (std::all_of(seen.begin(), seen.end(), [](const TSeenFiles& each) { return each.Empty(); })) return;
  RunThreads(threads, [this](unsigned thread) { WithdrawParts(thread); });
  if (FFolders.empty()) return;
  SortOnce(FNumbers);
  SortOnce(FFolders);
  RunThreads(threads, [this](unsigned thread) { ListFolders(thread); });
}

void TLinkSearch::WithdrawParts(unsigned thread) {
  for (size_t part = FNextPart++; part < TSeenFiles::kParts && !Stopped(); part = FNextPart++) {
    std::vector<TSeenFile> files;
    for (const TSeenFiles& seen : FScan.Seen)
      files.insert(files.end(), seen.Part(part).begin(), seen.Part(part).end());
    WithdrawRepeated(files, FScan.Builder.Shard(thread));
  }
}

void TLinkSearch::WithdrawRepeated(std::vector<TSeenFile>& files, TIndexShard& shard) {
  const auto byNumber = [](const TSeenFile& a, const TSeenFile& b) { return a.Number < b.Number; };
  std::sort(files.begin(), files.end(), byNumber);
  for (size_t i = 0; i < files.size(); ++i) {
    const bool repeated = (i > 0 && files[i - 1].Number == files[i].Number) ||
                          (i + 1 < files.size() && files[i + 1].Number == files[i].Number);
    if (!repeated || files[i].Folder == kNoFolder) continue;
    shard.WithdrawFile(files[i].Folder, files[i].Size);
    const std::lock_guard guard(FLock);
    FNumbers.push_back(files[i].Number);
    FFolders.push_back(files[i].Folder);
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
void TLinkSearch::AddLinksIn(TFolderId id, TFolderListing& listing, TIndexShard& shard) const {
  TFolderHandle folder;
  if (OpenFromRoot(FScan, id, folder) != TAccess::Ok) return;
  listing.Start(folder);
  while (!Stopped() && listing.Next() == TAccess::Ok) {
    TEntryFacts facts;
    if (listing.Facts(facts) != TAccess::Ok || facts.IsFolder) continue;
    if (std::binary_search(FNumbers.begin(), FNumbers.end(), facts.Number))
      shard.AddLinkedFile(id, listing.Name(), facts.Size, LinkKeyOf(facts));
  }
}

}  // namespace volindex
