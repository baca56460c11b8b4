#include "volindex/readers/ntfs/NtfsScan.h"

#include <algorithm>

#include "volindex/index/RunThreads.h"
#include "volindex/index/Wtf8.h"

namespace volindex::ntfs {

namespace {

constexpr std::size_t kShareBytes = 1u << 20;
constexpr std::size_t kAhead = 8;  // records between the one parsed and the one asked for
constexpr std::uint64_t kMaxRecords = 1u << 28;
// Far more than any volume has; an attribute list made to repeat itself must not fill the memory.
constexpr std::size_t kMaxHolders = 4u << 20;

bool IsFileInUse(TBytes record) {
  return std::memcmp(record.data(), "FILE", 4) == 0 && (Load<std::uint16_t>(record, 0x16) & 1) != 0;
}

void PrefetchLine([[maybe_unused]] const std::byte* line) {
#ifdef __has_builtin
#if __has_builtin(__builtin_prefetch)
  __builtin_prefetch(line);
#endif
#endif
}

// Asks for the lines that a record's parsing touches first, while records before it are being parsed.
void Prefetch(TBytes record) {
  for (std::size_t line = 0; line < 512; line += 64)
    PrefetchLine(record.data() + line);
  PrefetchLine(record.data() + record.size() - 1);
}

// True if the record itself holds all that its list names.
bool IsWhole(const TRecordFacts& facts, TFileReference self) {
  return std::all_of(facts.Holders.begin(), facts.Holders.end(),
                     [self](const THolder& holder) { return holder.Record == self; });
}

}  // namespace

std::string_view TNtfsScan::TWorker::TextOf(const TFileName& name) {
  Name.clear();
  AppendWtf8(name.Utf16, Name);
  return Name;
}

TNtfsScan::TNtfsScan(const TNtfsVolume& volume, TDriver driver, TIndexBuilder& builder,
                     const TScanControl& control, unsigned threads)
    : FVolume(volume),
      FDriver(driver),
      FBuilder(builder),
      FControl(control),
      FThreads(std::max(threads, 1u)) {}

TReadResult TNtfsScan::Run() {
  TFileReference root;
  if (FVolume.RecordCount() > kMaxRecords || !FindRoot(root)) return TReadResult::HandedOver;
  FBuilder.Begin(FThreads, TFolderOrder::Any);
  FSlots = std::make_unique<TFolderSlots>(FBuilder, FVolume.RecordCount(), root);
  for (;;) {
    const TReadResult result = Pass();
    if (result != TReadResult::Done) return result;
    const TFinish finish = FBuilder.Finish(FControl.Stop);
    if (finish != TFinish::TopListAgain)
      return finish == TFinish::Done ? TReadResult::Done : TReadResult::Stopped;
    FFilesOnly = true;
    FSlots->Close();
  }
}

bool TNtfsScan::FindRoot(TFileReference& root) const {
  std::vector<std::byte> record(FVolume.RecordSize());
  if (FVolume.RecordCount() <= kRootRecord || !FVolume.ReadRecords(kRootRecord, record)) return false;
  if (!ApplyFixups(record)) return false;
  const auto header = ParseRecordHeader(record);
  if (!header || !header->InUse || !header->Folder || !header->IsBase()) return false;
  root = TFileReference(kRootRecord, header->Sequence);
  return true;
}

TReadResult TNtfsScan::Pass() {
  FNext = kFirstUserRecord;
  std::vector<TWorker> workers;
  for (unsigned thread = 0; thread < FThreads; ++thread)
    workers.emplace_back(FBuilder.Shard(thread));
  RunThreads(FThreads, [&](unsigned thread) { Work(workers[thread]); });
  if (!FFailed && !FControl.Stop) JoinSpread(workers);
  if (FControl.Stop) return TReadResult::Stopped;
  return FFailed ? TReadResult::HandedOver : TReadResult::Done;
}

void TNtfsScan::Work(TWorker& worker) {
  const std::uint64_t share = kShareBytes / FVolume.RecordSize();
  worker.Buffer = TAlignedBytes(std::min<std::uint64_t>(share, FVolume.RecordCount()) * FVolume.RecordSize());
  while (!FFailed && !FControl.Stop) {
    const std::uint64_t first = FNext.fetch_add(share);
    if (first >= FVolume.RecordCount()) return;
    if (!TakeShare(worker, first)) FFailed = true;
    Report(first);
  }
}

bool TNtfsScan::TakeShare(TWorker& worker, std::uint64_t first) {
  const std::size_t size = FVolume.RecordSize();
  const auto count =
      static_cast<std::size_t>(std::min<std::uint64_t>(kShareBytes / size, FVolume.RecordCount() - first));
  const auto records = worker.Buffer.All().first(count * size);
  if (!FVolume.ReadRecords(first, records)) return false;
  worker.Shard.CountBytesRead(records.size());
  for (std::size_t i = 0; i < count; ++i) {
    if (i + kAhead < count) Prefetch(records.subspan((i + kAhead) * size, size));
    TakeRecord(worker, first + i, records.subspan(i * size, size));
  }
  return worker.Holders <= kMaxHolders;
}

void TNtfsScan::TakeRecord(TWorker& worker, std::uint64_t number, std::span<std::byte> record) {
  if (!IsFileInUse(record)) return;
  if (!ApplyFixups(record) && !Repair(number, record)) return worker.Shard.CountUnreadable();
  const auto header = ParseRecordHeader(record);
  worker.Facts.Clear();
  if (!header || !GatherFacts(FVolume, record, *header, FDriver, worker.Facts))
    return worker.Shard.CountUnreadable();
  const TFileReference self{number, header->Sequence};
  if (header->InUse && header->IsBase() && IsWhole(worker.Facts, self))
    Add(worker, self, header->Folder, worker.Facts);
  else if (header->InUse)
    Keep(worker, *header, self);
}

// A record that was being written when it was read is whole the second time.
bool TNtfsScan::Repair(std::uint64_t number, std::span<std::byte> record) const {
  return FVolume.ReadRecords(number, record) && ApplyFixups(record);
}

void TNtfsScan::Keep(TWorker& worker, const TRecordHeader& header, TFileReference self) {
  if (!header.IsBase() && worker.Facts.Empty()) return;
  worker.Holders += worker.Facts.Holders.size();
  auto& kept = header.IsBase() ? worker.Bases : worker.Extensions;
  kept.push_back({self, header.Base, header.Folder, worker.Facts});
  kept.back().Facts.KeepNames();
}

// Gives each base record what its extension records tell. An extension counts only if the base's list names
// it by number and sequence number and it names the base in the same way. A file whose length lies in a
// record that can't be had is left out.
void TNtfsScan::JoinSpread(std::vector<TWorker>& workers) {
  std::vector<const TSpread*> extensions;
  for (const TWorker& worker : workers)
    for (const TSpread& extension : worker.Extensions)
      extensions.push_back(&extension);
  const auto byRecord = [](const TSpread* a, const TSpread* b) { return a->Record < b->Record; };
  std::sort(extensions.begin(), extensions.end(), byRecord);
  const auto find = [&](TFileReference record, TFileReference base) -> const TSpread* {
    const TSpread wanted{record, base, false, {}};
    const auto found = std::lower_bound(extensions.begin(), extensions.end(), &wanted, byRecord);
    const bool right = found != extensions.end() && (*found)->Record == record && (*found)->Base == base;
    return right ? *found : nullptr;
  };
  for (TWorker& worker : workers) {
    for (TSpread& base : worker.Bases) {
      bool whole = true;
      for (const THolder& holder : base.Facts.Holders) {
        if (holder.Record == base.Record) continue;
        const TSpread* extension = find(holder.Record, base.Record);
        if (extension != nullptr) base.Facts.Take(extension->Facts, holder.Type);
        whole = whole && (extension != nullptr || holder.Type != TAttributeType::Data);
      }
      if (whole)
        Add(worker, base.Record, base.Folder, base.Facts);
      else
        worker.Shard.CountUnreadable();
    }
  }
}

void TNtfsScan::Add(TWorker& worker, TFileReference self, bool folder, const TRecordFacts& facts) {
  if (!folder || facts.IsLink(FDriver))
    AddFile(worker, self, facts);
  else if (!FFilesOnly)
    AddFolder(worker, self, facts);
}

// A folder has one name; should damage give it more, the first that has a parent is taken.
void TNtfsScan::AddFolder(TWorker& worker, TFileReference self, const TRecordFacts& facts) {
  for (const TFileName& name : facts.Names) {
    const auto parent = FSlots->IdOf(name.Parent);
    if (!parent) continue;
    const auto id = FSlots->IdOf(self);
    if (!id || !worker.Shard.SetFolder(*id, *parent, worker.TextOf(name))) FFailed = true;
    return;
  }
}

void TNtfsScan::AddFile(TWorker& worker, TFileReference self, const TRecordFacts& facts) {
  TIndexShard& shard = worker.Shard;
  const std::uint64_t length = facts.Length();
  for (const TFileName& name : facts.Names) {
    const auto parent = FSlots->IdOf(name.Parent);
    if (!parent) continue;
    if (facts.Names.size() > 1)
      shard.AddLinkedFile(*parent, worker.TextOf(name), length, {self.Record()});
    else if (shard.MayList(length))
      shard.AddFile(*parent, worker.TextOf(name), length);
    else
      shard.AddFile(*parent, {}, length);
  }
}

void TNtfsScan::Report(std::uint64_t recordsDone) {
  if (FControl.Progress) FControl.Progress(1 + static_cast<int>(98 * recordsDone / FVolume.RecordCount()));
}

}  // namespace volindex::ntfs
