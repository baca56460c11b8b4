#include "volindex/elevated/VolumeStream.h"

#include <algorithm>
#include <limits>
#include <span>
#include <string>
#include <utility>

namespace volindex {

namespace {

constexpr size_t kProgressLength = 2;
constexpr size_t kKindLength = 1 + 1 + 8;
constexpr size_t kFolderHead = 1 + 4 + 8 + 8 + 4 + 2;
constexpr size_t kFileHead = 1 + 4 + 8 + 2;
constexpr size_t kUnreadableLength = 1 + 4;
constexpr size_t kEndLength = 1 + 8;
constexpr size_t kNameLengthSize = 2;
constexpr size_t kSendAtOnce = size_t{64} << 10;
// All of a volume's sums stay below this, so that no total of the index can overflow.
constexpr uint64_t kMostBytes = std::numeric_limits<int64_t>::max();

// Gathers frames, so that a million folders are not as many calls.
class TFrames {
 public:
  explicit TFrames(const TStreamSink& sink) : FSink(sink) {}

  TFrames& Letter(char letter) {
    if (FBytes.size() >= kSendAtOnce) (void)Flush();
    FBytes += letter;
    return *this;
  }
  template <class TNumber>
  TFrames& Number(TNumber value) {
    FBytes.append(reinterpret_cast<const char*>(&value), sizeof value);
    return *this;
  }
  // Names are at most 65,535 bytes long.
  TFrames& Name(std::string_view name) {
    Number(static_cast<uint16_t>(name.size()));
    FBytes += name;
    return *this;
  }

  // False if any sending failed.
  [[nodiscard]] bool Flush() {
    FSent = FSent && FSink(std::as_bytes(std::span(FBytes)));
    FBytes.clear();
    return FSent;
  }

 private:
  const TStreamSink& FSink;
  std::string FBytes;
  bool FSent = true;
};

// What lies directly in each folder; folders that don't count have nothing.
// The index has totals alone, so each folder's is taken off its parent's. Sums wrap around on the way and are
// right at the end, whatever the order of the folders.
std::vector<uint64_t> OwnPart(const TVolumeIndex& index, uint64_t (TVolumeIndex::*total)(TFolderId) const) {
  std::vector<uint64_t> own(index.FolderEnd(), 0);
  for (TFolderId id = 0; id < index.FolderEnd(); ++id) {
    if (!index.HasFolder(id)) continue;
    own[id] += (index.*total)(id);
    if (id != kRootFolder) own[index.FolderParent(id)] -= (index.*total)(id);
  }
  return own;
}

// The lengths of the largest files are told with these.
std::vector<uint64_t> OwnBytes(const TVolumeIndex& index) {
  std::vector<uint64_t> own = OwnPart(index, &TVolumeIndex::FolderTotal);
  for (const TFileRecord& file : index.TopFiles())
    own[file.Folder] -= file.Size;
  return own;
}

std::vector<uint32_t> OwnFiles(const TVolumeIndex& index) {
  std::vector<uint32_t> own(index.FolderEnd(), 0);
  for (TFolderId id = 0; id < index.FolderEnd(); ++id)
    if (index.HasFolder(id)) own[id] = index.FolderFiles(id);
  for (const TFileRecord& file : index.TopFiles())
    --own[file.Folder];
  return own;
}

// The same by kind. What the name in the list tells of a file with several names may differ from what it was
// added as; so no more is taken away than there is.
std::vector<TKindBytes> OwnKinds(const TVolumeIndex& index) {
  std::vector<TKindBytes> own(index.KeepsKinds() ? index.FolderEnd() : 0);
  for (TFolderId id = 0; id < own.size(); ++id)
    if (index.HasFolder(id)) own[id] = index.FolderKinds(id);
  for (const TFileRecord& file : index.TopFiles()) {
    if (own.empty()) break;
    uint64_t& bytes = own[file.Folder][static_cast<size_t>(KindOf(file.Name))];
    bytes -= std::min(bytes, file.Size);
  }
  return own;
}

// Numbers the folders in the order in which they are sent.
class TFolderSender {
 public:
  TFolderSender(const TVolumeIndex& index, TFrames& frames)
      : FIndex(index),
        FFrames(frames),
        FBytes(OwnBytes(index)),
        FAllocated(OwnPart(index, &TVolumeIndex::FolderAllocated)),
        FFiles(OwnFiles(index)),
        FKinds(OwnKinds(index)),
        FNumbers(index.FolderEnd(), kNoFolder) {}

  // Sends the folder behind those above it that have not been sent.
  void Send(TFolderId id) {
    FPath.clear();
    while (FNumbers[id] == kNoFolder) {
      FPath.push_back(id);
      if (id == kRootFolder) break;
      id = FIndex.FolderParent(id);
    }
    for (auto folder = FPath.rbegin(); folder != FPath.rend(); ++folder)
      SendOne(*folder);
  }

  [[nodiscard]] uint32_t NumberOf(TFolderId id) const { return FNumbers[id]; }

 private:
  void SendOne(TFolderId id) {
    FNumbers[id] = FSent++;
    FFrames.Letter('D').Number(FNumbers[FIndex.FolderParent(id)]).Number(FBytes[id]);
    FFrames.Number(FAllocated[id]).Number(FFiles[id]).Name(FIndex.FolderName(id));
    for (uint8_t kind = 1; kind < kKinds && !FKinds.empty(); ++kind)
      if (FKinds[id][kind] != 0) FFrames.Letter('K').Number(kind).Number(FKinds[id][kind]);
  }

  const TVolumeIndex& FIndex;
  TFrames& FFrames;
  const std::vector<uint64_t> FBytes;
  const std::vector<uint64_t> FAllocated;
  const std::vector<uint32_t> FFiles;
  const std::vector<TKindBytes> FKinds;  // empty if the index keeps none
  std::vector<uint32_t> FNumbers;
  std::vector<TFolderId> FPath;
  uint32_t FSent = 0;
};

std::string_view NameIn(TBytes frame, size_t head) {
  return {reinterpret_cast<const char*>(frame.data()) + head, frame.size() - head};
}

// One that a folder of a disk can hold.
bool IsName(std::string_view name) {
  return !name.empty() && name != "." && name != ".." &&
         name.find_first_of(std::string_view("/\0", 2)) == name.npos;
}

}  // namespace

bool SendMark(const TStreamSink& sink) {
  return sink(std::as_bytes(std::span(kStreamMark)));
}

bool SendProgress(const TStreamSink& sink, int percent) {
  return TFrames(sink).Letter('P').Number(static_cast<uint8_t>(percent)).Flush();
}

bool SendIndex(const TStreamSink& sink, const TVolumeIndex& index) {
  TFrames frames(sink);
  TFolderSender folders(index, frames);
  for (TFolderId id = 0; id < index.FolderEnd(); ++id)
    if (index.HasFolder(id)) folders.Send(id);
  for (const TFileRecord& file : index.TopFiles())
    frames.Letter('F').Number(folders.NumberOf(file.Folder)).Number(file.Size).Name(file.Name);
  std::vector<uint32_t> unreadable;
  for (const TFolderId id : index.Unreadable())
    unreadable.push_back(folders.NumberOf(id));
  std::sort(unreadable.begin(), unreadable.end());
  for (const uint32_t number : unreadable)
    frames.Letter('U').Number(number);
  return frames.Letter('E').Number(index.BytesRead()).Flush();
}

TStreamParser::TStreamParser(TIndexBuilder& builder, uint64_t mostFolders, std::function<void(int)> progress)
    : FBuilder(builder), FMostFolders(mostFolders), FProgress(std::move(progress)) {
  FBuilder.Begin(1, TFolderOrder::ParentsFirst);
}

// Only a frame's beginning is kept between two calls: at most its head and a name of 65,535 bytes.
TStreamState TStreamParser::Feed(TBytes bytes) {
  if (FState == TStreamState::Wrong || bytes.empty()) return FState;
  FRest.insert(FRest.end(), bytes.begin(), bytes.end());
  TBytes rest = FRest;
  if (!FBegun && rest.size() >= kStreamMark.size()) {
    FBegun = NameIn(rest.first(kStreamMark.size()), 0) == kStreamMark;
    if (!FBegun) FState = TStreamState::Wrong;
    rest = rest.subspan(kStreamMark.size());
  }
  while (FBegun && FState == TStreamState::Reading && !rest.empty()) {
    const size_t length = FrameLength(rest);
    if (length == 0) break;
    if (!Take(rest.first(length))) FState = TStreamState::Wrong;
    rest = rest.subspan(length);
  }
  if (FState == TStreamState::Done && !rest.empty()) FState = TStreamState::Wrong;
  FRest.erase(FRest.begin(), FRest.end() - static_cast<std::ptrdiff_t>(rest.size()));
  return FState;
}

// A letter that is none stands for a frame of its own, which nobody takes.
size_t TStreamParser::FrameLength(TBytes bytes) {
  const auto letter = static_cast<char>(bytes.front());
  const size_t head = letter == 'D' ? kFolderHead : letter == 'F' ? kFileHead : 0;
  if (head == 0) {
    const size_t length = letter == 'P'   ? kProgressLength
                          : letter == 'U' ? kUnreadableLength
                          : letter == 'E' ? kEndLength
                          : letter == 'K' ? kKindLength
                                          : 1;
    return bytes.size() < length ? 0 : length;
  }
  if (bytes.size() < head) return 0;
  const size_t length = head + Load<uint16_t>(bytes, head - kNameLengthSize);
  return bytes.size() < length ? 0 : length;
}

bool TStreamParser::Take(TBytes frame) {
  switch (static_cast<char>(frame.front())) {
    case 'P': {
      const auto percent = std::to_integer<int>(frame[1]);
      if (percent > 0 && percent < 100) FProgress(percent);
      return percent < 100;
    }
    case 'D':
      return TakeFolder(frame);
    case 'K':
      return TakeKind(frame);
    case 'F':
      return TakeFile(frame);
    case 'U':
      return TakeUnreadable(frame);
    case 'E':
      AddFolderContent();
      FBuilder.Shard(0).CountBytesRead(Load<uint64_t>(frame, 1));
      FState = TStreamState::Done;
      return FFolders != 0;
    default:
      return false;
  }
}

bool TStreamParser::TakeFolder(TBytes frame) {
  const auto parent = Load<uint32_t>(frame, 1);
  const auto bytes = Load<uint64_t>(frame, 5);
  const auto allocated = Load<uint64_t>(frame, 13);
  const std::string_view name = NameIn(frame, kFolderHead);
  TFolderId id = kRootFolder;
  AddFolderContent();
  if (FFolders == 0) {
    if (parent != kRootFolder || !name.empty()) return false;
  } else {
    if (parent >= FFolders || FFolders >= FMostFolders || !IsName(name)) return false;
    id = FBuilder.ReserveFolder();
    if (!FBuilder.Shard(0).SetFolder(id, parent, name)) return false;
  }
  ++FFolders;
  if (!Count(bytes, FBytes) || !Count(allocated, FAllocated)) return false;
  FFolder = id;
  FFolderBytes[static_cast<size_t>(TKind::Other)] = bytes;
  FFolderFiles = Load<uint32_t>(frame, 21);
  FFolderAllocated = allocated;
  return true;
}

void TStreamParser::AddFolderContent() {
  if (FFolder == kNoFolder) return;
  FBuilder.Shard(0).AddUnlisted(FFolder, FFolderBytes, FFolderFiles, FFolderAllocated);
  FFolder = kNoFolder;
  FFolderBytes = {};
}

// A kind gets no more than is left of the folder's bytes.
bool TStreamParser::TakeKind(TBytes frame) {
  const auto kind = std::to_integer<size_t>(frame[1]);
  if (FFolder == kNoFolder || kind == 0 || kind >= kKinds || FFolderBytes[kind] != 0) return false;
  uint64_t& rest = FFolderBytes[static_cast<size_t>(TKind::Other)];
  FFolderBytes[kind] = std::min(rest, Load<uint64_t>(frame, 2));
  rest -= FFolderBytes[kind];
  return true;
}

bool TStreamParser::TakeFile(TBytes frame) {
  const auto folder = Load<uint32_t>(frame, 1);
  const auto bytes = Load<uint64_t>(frame, 5);
  const std::string_view name = NameIn(frame, kFileHead);
  AddFolderContent();
  if (folder >= FFolders || FFiles >= kTopCount || !IsName(name) || !Count(bytes, FBytes)) return false;
  ++FFiles;
  FBuilder.Shard(0).AddFile(folder, name, bytes);
  return true;
}

// By rising numbers, so that none comes twice.
bool TStreamParser::TakeUnreadable(TBytes frame) {
  const auto folder = Load<uint32_t>(frame, 1);
  if (folder >= FFolders || folder < FUnreadableEnd) return false;
  FUnreadableEnd = uint64_t{folder} + 1;
  FBuilder.Shard(0).AddUnreadable(folder);
  return true;
}

bool TStreamParser::Count(uint64_t bytes, uint64_t& sum) {
  if (bytes > kMostBytes - sum) return false;
  sum += bytes;
  return true;
}

}  // namespace volindex
