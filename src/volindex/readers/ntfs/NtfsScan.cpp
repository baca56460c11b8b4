#include "volindex/readers/ntfs/NtfsScan.h"

#include <algorithm>
#include <utility>

#include "volindex/index/RunThreads.h"
#include "volindex/index/Wtf8.h"

namespace volindex::ntfs {

namespace {

// What is read in one go: little enough to be parsed while the second-level cache still has it.
constexpr std::size_t kShareBytes = 128u << 10;
// Slots for these take 2 GiB, and their table 256 GiB of the disk at least. What claims more is left to the
// driver.
constexpr std::uint64_t kMaxRecords = 1u << 28;
constexpr int kTries = 4;  // a record or a file may be caught while its volume's driver changes it

bool HasMark(TBytes record, std::string_view mark) {
  return std::memcmp(record.data(), mark.data(), mark.size()) == 0;
}

bool IsBaseInUse(TBytes record) {
  return (Load<std::uint16_t>(record, 0x16) & 1) != 0 && Load<std::uint64_t>(record, 0x20) == 0;
}

}  // namespace

// One buffer a thread: a name is made when it is told and is void at the next one, so no name costs an
// allocation.
std::string_view TNtfsScan::TWorker::TextOf(const TFileName& name) {
  Text.clear();
  AppendWtf8(name.Utf16, Text);
  return Text;
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

// The root's own sequence number must be known before the threads begin, for every file in it names that
// pair.
bool TNtfsScan::FindRoot(TFileReference& root) const {
  std::vector<std::byte> bytes;
  TRecord record;
  if (!ReadRecord(kRootRecord, bytes, record) || !record.IsBaseInUse() || !record.Header.Folder) return false;
  root = record.Self;
  return true;
}

TReadResult TNtfsScan::Pass() {
  FNext = kFirstUserRecord;
  std::vector<TWorker> workers;
  for (unsigned thread = 0; thread < FThreads; ++thread)
    workers.emplace_back(FBuilder.Shard(thread));
  RunThreads(FThreads, [&](unsigned thread) { Work(workers[thread]); });
  if (FControl.Stop) return TReadResult::Stopped;
  return FFailed || FSlots->Overfull() ? TReadResult::HandedOver : TReadResult::Done;
}

void TNtfsScan::Work(TWorker& worker) {
  if (!TakeTable(worker) || !JoinSpread(worker)) FFailed = true;
}

bool TNtfsScan::TakeTable(TWorker& worker) {
  const std::uint64_t share = kShareBytes / FVolume.RecordSize();
  // All threads share this work first. None waits for the others: a slot on a page that is not prepared yet
  // is only slower.
  while (!FControl.Stop && FSlots->PreparePart()) {
  }
  worker.Buffer = TAlignedBytes(std::min<std::uint64_t>(share, FVolume.RecordCount()) * FVolume.RecordSize());
  while (!FFailed && !FControl.Stop) {
    const std::uint64_t first = FNext.fetch_add(share);
    if (first >= FVolume.RecordCount()) return true;
    if (!TakeShare(worker, first) || FSlots->Overfull()) return false;
    Report(first);
  }
  return true;
}

bool TNtfsScan::TakeShare(TWorker& worker, std::uint64_t first) {
  const std::size_t size = FVolume.RecordSize();
  const auto count =
      static_cast<std::size_t>(std::min<std::uint64_t>(kShareBytes / size, FVolume.RecordCount() - first));
  const auto records = worker.Buffer.All().first(count * size);
  if (!FVolume.ReadRecords(first, records)) return false;
  worker.Shard.CountBytesRead(records.size());
  for (std::size_t i = 0; i < count && !FControl.Stop.load(std::memory_order_relaxed); ++i)
    if (!TakeRecord(worker, first + i, records.subspan(i * size, size))) return false;
  return AddFolders(worker);
}

// Extension records are of interest only to the file that names them. What a checker has marked as bad may
// have been a file.
bool TNtfsScan::TakeRecord(TWorker& worker, std::uint64_t number, std::span<std::byte> bytes) {
  if (!HasMark(bytes, "FILE")) return !HasMark(bytes, "BAAD");
  if (!IsBaseInUse(bytes)) return true;
  if (!Understand(number, bytes, worker.Record)) return false;
  if (!worker.Record.IsBaseInUse()) return true;
  if (!worker.Record.Facts.List) return AddRecord(worker, worker.Record);
  worker.Spread.push_back(static_cast<std::uint32_t>(number));
  return true;
}

bool TNtfsScan::Understand(std::uint64_t number, std::span<std::byte> bytes, TRecord& record) const {
  // ApplyFixups may have changed the bytes when a later check refuses them; so a new try reads them anew.
  record.Self = TFileReference(number, 0);
  for (int tries = 1; !Parse(bytes, record); ++tries)
    if (tries == kTries || !FVolume.ReadRecords(number, bytes)) return false;
  return true;
}

bool TNtfsScan::Parse(std::span<std::byte> bytes, TRecord& record) const {
  record.Facts.Clear();
  if (!ApplyFixups(bytes)) return false;
  const TRecordHeader& header = record.Header;
  if (!ParseRecordHeader(bytes, record.Header)) return false;
  record.Self = TFileReference(record.Self.Record(), header.Sequence);
  return !header.InUse || GatherFacts(FVolume, bytes, header, FDriver, record.Facts);
}

bool TNtfsScan::ReadRecord(std::uint64_t number, std::vector<std::byte>& bytes, TRecord& record) const {
  bytes.resize(FVolume.RecordSize());
  return number < FVolume.RecordCount() && FVolume.ReadRecords(number, bytes) &&
         Understand(number, bytes, record);
}

// Each file is read alone, so that a volume on which every file is spread takes no more memory than any
// other.
bool TNtfsScan::JoinSpread(TWorker& worker) {
  for (const std::uint32_t number : worker.Spread) {
    for (int tries = 1; !Join(worker, number); ++tries)
      if (tries == kTries) return false;
    if (FFailed || FControl.Stop) return true;
  }
  return true;
}

// A file that is joined again may have told names already; the builder takes them for the same.
bool TNtfsScan::Join(TWorker& worker, std::uint32_t number) {
  TRecord& base = worker.Record;
  if (!ReadRecord(number, worker.BaseBytes, base)) return false;
  if (!base.IsBaseInUse()) return true;
  worker.Holders.clear();
  if (base.Facts.List && !ReadHolders(FVolume, *base.Facts.List, worker.Holders)) return false;
  worker.Waiting = {};
  return JoinHolders(worker) && TakeNames(worker, base, base.Facts.Names) && TellWaiting(worker, base);
}

// An extension record counts only if it names the base as the base names it, by number and sequence number.
// Names come last in the holders' order from behind, when the file's length is known.
bool TNtfsScan::JoinHolders(TWorker& worker) {
  TRecord& base = worker.Record;
  TRecord& extension = worker.Extension;
  for (auto holder = worker.Holders.rbegin(); holder != worker.Holders.rend(); ++holder) {
    if (holder->Record == base.Self) continue;
    if (FControl.Stop) return true;
    if (!ReadRecord(holder->Record.Record(), worker.ExtensionBytes, extension)) return false;
    if (!extension.Header.InUse || extension.Self != holder->Record || extension.Header.Base != base.Self)
      return false;
    if (!(holder->Type == TAttributeType::FileName ? TakeNames(worker, base, extension.Facts.Names)
                                                   : base.Facts.Take(extension.Facts, *holder)))
      return false;
  }
  return true;
}

bool TNtfsScan::AddRecord(TWorker& worker, const TRecord& record) {
  const auto& names = record.Facts.Names;
  // Nearly all records take one of these two ways. A folder waits until the memory of its two slots has come.
  if (names.size() == 1 && IsFolder(record)) {
    worker.Folders.push_back({record.Self, names[0]});
    FSlots->Prefetch(record.Self);
    FSlots->Prefetch(names[0].Parent);
    return true;
  }
  if (names.size() == 1) {
    const TFolderId parent = FSlots->IdOf(names[0].Parent);
    const std::uint64_t length = record.Facts.Length();
    if (parent != kNoFolder)
      worker.Shard.AddFile(parent,
                           worker.Shard.WantsName(length) ? worker.TextOf(names[0]) : std::string_view(),
                           length, record.Facts.Allocated());
    return true;
  }
  worker.Waiting = {};
  return TakeNames(worker, record, names) && TellWaiting(worker, record);
}

bool TNtfsScan::AddFolders(TWorker& worker) {
  bool good = true;
  for (const auto& [self, name] : worker.Folders) {
    const TFolderId parent = FSlots->IdOf(name.Parent);
    if (parent != kNoFolder) good = good && TellFolder(worker, self, parent, worker.TextOf(name));
  }
  worker.Folders.clear();
  return good;
}

bool TNtfsScan::TellFolder(TWorker& worker, TFileReference self, TFolderId parent, std::string_view name) {
  if (FFilesOnly) return true;
  const TFolderId id = FSlots->IdOf(self);
  return id != kNoFolder && worker.Shard.SetFolder(id, parent, name);
}

// A folder has one name.
bool TNtfsScan::TakeNames(TWorker& worker, const TRecord& base, const std::vector<TFileName>& names) {
  TWaitingName& waiting = worker.Waiting;
  for (const TFileName& name : names) {
    const TFolderId parent = FSlots->IdOf(name.Parent);
    if (parent == kNoFolder) continue;
    if (waiting.Parent != kNoFolder && IsFolder(base)) return false;
    const std::string_view text = worker.TextOf(name);
    if (parent == waiting.Parent && waiting.Text <= text) continue;
    if (parent != waiting.Parent && waiting.Parent != kNoFolder) {
      worker.Shard.AddLinkedFile(waiting.Parent, waiting.Text, base.Facts.Length(), {base.Self.Record()},
                                 base.Facts.Allocated());
      waiting.OthersTold = true;
    }
    waiting.Parent = parent;
    waiting.Text = text;
  }
  return true;
}

bool TNtfsScan::TellWaiting(TWorker& worker, const TRecord& base) {
  const TWaitingName& waiting = worker.Waiting;
  if (waiting.Parent == kNoFolder) return true;
  if (IsFolder(base)) return TellFolder(worker, base.Self, waiting.Parent, waiting.Text);
  if (waiting.OthersTold)
    worker.Shard.AddLinkedFile(waiting.Parent, waiting.Text, base.Facts.Length(), {base.Self.Record()},
                               base.Facts.Allocated());
  else
    worker.Shard.AddFile(waiting.Parent, waiting.Text, base.Facts.Length(), base.Facts.Allocated());
  return true;
}

void TNtfsScan::Report(std::uint64_t recordsDone) {
  if (FControl.Progress) FControl.Progress(1 + static_cast<int>(98 * recordsDone / FVolume.RecordCount()));
}

}  // namespace volindex::ntfs
