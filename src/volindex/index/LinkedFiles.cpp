// The two halves of one question: under which of its names does a file count? TLinkedFiles keeps the names in
// the first pass and forgets those that can't be the answer; where texts had to be left out TOpenLinks takes
// the file in with the folders of its names, has the second pass tell the names (Note) and gives the answer
// (Settle).
//
// TakeNumber needs no bound: it walks over nothing but what PutNumber has written.
#include "volindex/index/LinkedFiles.h"

#include <algorithm>
#include <atomic>
#include <limits>
#include <tuple>
#include <utility>

namespace volindex {

namespace {

constexpr size_t kFirstBlock = 512;
constexpr size_t kLargestBlock = 16 * 1024;
constexpr size_t kLongestNumber = 10;  // bytes
constexpr size_t kNumbers = 6;
constexpr size_t kAnyText = std::numeric_limits<size_t>::max();

// Sorts before any name, so that it stands for all of a folder.
constexpr std::string_view kBeforeNames("\0", 1);

void PutNumber(uint64_t number, std::string& bytes) {
  for (; number > 0x7F; number >>= 7)
    bytes += static_cast<char>(number | 0x80);
  bytes += static_cast<char>(number);
}

uint64_t TakeNumber(const char*& at) {
  uint64_t number = 0;
  for (unsigned shift = 0;; shift += 7) {
    const auto byte = static_cast<unsigned char>(*at++);
    number |= uint64_t{byte & 0x7FU} << shift;
    if (byte <= 0x7F) return number;
  }
}

TLinkedName TakeName(const char*& at) {
  TLinkedName name;
  name.File = TakeNumber(at);
  const uint64_t deviceAndKind = TakeNumber(at);
  name.Device = static_cast<uint32_t>(deviceAndKind / kKinds);
  name.Kind = static_cast<TKind>(deviceAndKind % kKinds);
  name.Parent = static_cast<TFolderId>(TakeNumber(at));
  name.Size = TakeNumber(at);
  name.Allocated = TakeNumber(at);
  const size_t length = TakeNumber(at);
  name.HasText = length != 0;
  name.Text = {at, name.HasText ? length - 1 : 0};
  at += name.Text.size();
  return name;
}

}  // namespace

TLinkedFiles::TLinkedFiles(const TFolderTable& folders, bool pathsKnown, size_t textRoom)
    : FFolders(folders), FPathsKnown(pathsKnown), FTextRoom(pathsKnown ? kAnyText : textRoom / kParts) {}

void TLinkedFiles::Add(TFolderId parent, std::string_view name, uint64_t size, TLinkKey key,
                       uint64_t allocated, TKind kind) {
  TPart& part = FParts[key.File % kParts];
  const bool hasText = FTextRoom - part.TextBytes >= name.size();
  part.Put(
      {key.File, size, allocated, key.Device, parent, kind, hasText, hasText ? name : std::string_view()});
  if (part.Count >= part.CompactAt) Compact(part);
}

void TLinkedFiles::TPart::Put(const TLinkedName& name) {
  const size_t most = kNumbers * kLongestNumber + name.Text.size();
  if (Blocks.empty() || Blocks.back().capacity() - Blocks.back().size() < most) {
    const size_t wanted =
        Blocks.empty() ? kFirstBlock : std::min(2 * Blocks.back().capacity(), kLargestBlock);
    Blocks.emplace_back().reserve(std::max(wanted, most));
  }
  std::string& block = Blocks.back();
  for (const uint64_t number : {name.File, uint64_t{name.Device} * kKinds + static_cast<uint64_t>(name.Kind),
                                uint64_t{name.Parent}, name.Size, name.Allocated})
    PutNumber(number, block);
  PutNumber(name.HasText ? name.Text.size() + 1 : 0, block);
  block += name.Text;
  TextBytes += name.Text.size();
  ++Count;
}

void TLinkedFiles::TPart::AppendTo(std::vector<TLinkedName>& names) const {
  names.reserve(names.size() + Count);
  for (const std::string& block : Blocks) {
    for (const char* at = block.data(); at != block.data() + block.size();)
      names.push_back(TakeName(at));
  }
}

void TLinkedFiles::Sort(const TFolderTable& folders, std::vector<TLinkedName>& names) {
  std::sort(names.begin(), names.end(), [&folders](const TLinkedName& a, const TLinkedName& b) {
    if (a.File != b.File) return a.File < b.File;
    if (a.Device != b.Device) return a.Device < b.Device;
    return folders.ComparePaths(a.Parent, a.Text, b.Parent, b.Text) < 0;
  });
}

// Without paths a name gives way only to another one in its folder, and one without text to none.
void TLinkedFiles::Compact(TPart& part) const {
  std::vector<TLinkedName> names;
  part.AppendTo(names);
  if (FPathsKnown) {
    Sort(FFolders, names);
  } else {
    std::sort(names.begin(), names.end(), [](const TLinkedName& a, const TLinkedName& b) {
      return std::tie(a.File, a.Device, a.Parent, a.HasText, a.Text) <
             std::tie(b.File, b.Device, b.Parent, b.HasText, b.Text);
    });
  }
  TPart rest;
  const TLinkedName* last = nullptr;
  for (const TLinkedName& name : names) {
    const bool repeated =
        last != nullptr && name.SameFile(*last) && (FPathsKnown || name.Parent == last->Parent);
    if (!repeated) rest.Put(name);
    last = &name;
  }
  // Twice or four times what is left, so that a compaction is paid for by as many new names. Without paths
  // fewer fall away each time, hence the longer wait.
  rest.CompactAt = std::max(kFirstCompaction, (FPathsKnown ? 2 : 4) * rest.Count);
  part = std::move(rest);
}

bool TOpenLinks::Empty() const {
  return std::all_of(FParts.begin(), FParts.end(), [](const TPart& part) { return part.Files.empty(); });
}

// The folders in the order of their paths, each before those in it: whatever the names are, a folder's come
// before those of the next one if this does not lie in it. So all is decided but where the first one holds
// the second, this the third, and so on.
TFolderId TOpenLinks::FirstFolder(const TFolderTable& folders, std::span<TLinkedName> names) {
  const auto order = [&folders](TFolderId a, TFolderId b) {
    return folders.ComparePaths(a, kBeforeNames, b, kBeforeNames);
  };
  std::sort(names.begin(), names.end(),
            [&order](const TLinkedName& a, const TLinkedName& b) { return order(a.Parent, b.Parent) < 0; });
  TPart& part = FParts[names.front().File % TLinkedFiles::kParts];
  const size_t before = part.Places.size();
  for (size_t i = 0; i < names.size(); ++i) {
    const TFolderId folder = names[i].Parent;
    const bool last = i + 1 == names.size();
    if (!last && names[i + 1].Parent == folder) continue;
    const TFolderId below = last ? kNoFolder : folders.ChildTowards(folder, names[i + 1].Parent);
    if (below == kNoFolder && part.Places.size() == before) return folder;
    part.Places.push_back({folder, below});
    if (below == kNoFolder) break;
  }
  part.Files.push_back({names.front().File, names.front().Size, names.front().Allocated,
                        static_cast<uint32_t>(part.Places.size()), names.front().Kind});
  return kNoFolder;
}

void TOpenLinks::Note(const TFolderTable& folders, TFolderId parent, std::string_view name, uint64_t file) {
  TPart& part = FParts[file % TLinkedFiles::kParts];
  const auto found = std::ranges::lower_bound(part.Files, file, {}, &TFile::File);
  if (found == part.Files.end() || found->File != file) return;
  const auto places = part.Places.begin();
  const auto end = places + found->Places;
  const auto place = std::lower_bound(
      places + static_cast<std::ptrdiff_t>(part.Begin(static_cast<size_t>(found - part.Files.begin()))), end,
      parent, [&folders](const TPlace& each, TFolderId wanted) {
        return folders.ComparePaths(each.Folder, kBeforeNames, wanted, kBeforeNames) < 0;
      });
  if (place == end || place->Folder != parent) return;
  // Threads only ever change it from a folder to none, and it does not matter which of them comes first.
  const std::atomic_ref<TFolderId> below(place->Below);
  const TFolderId next = below.load(std::memory_order_relaxed);
  if (next != kNoFolder && folders.ComparePaths(parent, name, next, kBeforeNames) < 0)
    below.store(kNoFolder, std::memory_order_relaxed);
}

// The last place of a file has nothing below.
void TOpenLinks::Settle(TFolderTable& folders, TFolderKinds* kinds) const {
  for (const TPart& part : FParts) {
    for (size_t file = 0; file < part.Files.size(); ++file) {
      size_t place = part.Begin(file);
      while (part.Places[place].Below != kNoFolder)
        ++place;
      folders.AddContent(part.Places[place].Folder, part.Files[file].Size, 1, part.Files[file].Allocated);
      if (kinds != nullptr)
        kinds->Add(part.Places[place].Folder, part.Files[file].Kind, part.Files[file].Size);
    }
  }
}

}  // namespace volindex
