#include "volindex/index/ContentKinds.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>

namespace volindex {

namespace {

struct TEndings {
  TKind Kind;
  std::string_view Endings;  // parted by blanks
};

// Where an ending serves two trades, the one that has more such files on an ordinary disk has it.
constexpr TEndings kEndings[] = {
    {TKind::Pictures,
     "ai arw avif bmp cr2 cr3 dng eps exr gif hdr heic heif ico jfif jp2 jpe jpeg jpg jxl kra nef nrw orf "
     "pbm pcx pef pgm png pnm ppm psd raf raw rw2 srw svg svgz tga tif tiff webp xcf xpm"},
    {TKind::Video,
     "3g2 3gp asf avi divx f4v flv m2ts m4v mkv mov mp4 mpe mpeg mpg mts mxf ogv rm rmvb vob webm wmv"},
    {TKind::Audio,
     "aac aif aifc aiff alac amr ape au caf dff dsf flac m4a mid midi mka mp3 mpc oga ogg opus wav wma wv"},
    {TKind::Documents,
     "azw azw3 bib chm csv djvu doc docm docx dot dotx eml epub ics log mbox md mdb mobi msg numbers odf odg "
     "odp ods odt one org ost pages pdf ppt pptm pptx ps pst pub rst rtf tex tsv txt vcf vsd vsdx xls xlsb "
     "xlsm xlsx xps"},
    {TKind::Archives,
     "7z ace apk arj bz2 cab cpio crx deb dmg ear gz img iso jar lz lz4 lzh lzma ova pkg qcow qcow2 rar rpm "
     "snap squashfs sit tar tbz tbz2 tgz txz tzst vdi vhd vhdx vmdk war whl wim xpi xz z zip zst"},
    {TKind::Code,
     "asm bash bat c cc cfg cjs clj cmake cmd conf cpp cs css cxx d dart diff dpr el erl ex exs f f90 fish "
     "fs go gradle h hh hpp hrl hs htm html hxx ini ipynb java jl js json jsx kt kts less lisp lock lua m "
     "mjs mk ml mli mm nix pas patch php pl pm po pot proto ps1 py pyi pyx r rb rs s sass scala scss sh sql "
     "svelte swift tf toml ts tsx vb vbs vim vue xhtml xml yaml yml zig zsh"},
    {TKind::Programs,
     "a appimage class com cpl dll drv dylib efi elf exe jmod ko lib msi msix mui node o obj ocx pdb pyc pyo "
     "scr so sys wasm"}};

constexpr size_t kLongestEnding = sizeof(uint64_t);  // one unit a byte
// 1,024 slots for about 300 endings: most are found, or found missing, at the first look.
constexpr unsigned kSlotBits = 10;

constexpr size_t FirstSlot(uint64_t ending) {
  return static_cast<size_t>(ending * 0x9E3779B97F4A7C15U >> (64 - kSlotBits));
}

// From the last letter back; letters of ASCII in small.
constexpr uint64_t WithLetter(uint64_t ending, char32_t letter) {
  return ending << 8 | letter | 0x20;
}

// A hash table with open addresses, made by the compiler; an ending is never 0.
class TKindTable {
 public:
  constexpr TKindTable() {
    for (const TEndings& row : kEndings) {
      for (std::string_view rest = row.Endings; !rest.empty();) {
        const std::string_view ending = rest.substr(0, rest.find(' '));
        rest.remove_prefix(std::min(rest.size(), ending.size() + 1));
        uint64_t packed = 0;
        for (size_t i = ending.size(); i-- > 0;)
          packed = WithLetter(packed, static_cast<unsigned char>(ending[i]));
        Put(packed, row.Kind);
      }
    }
  }

  [[nodiscard]] constexpr TKind Find(uint64_t ending) const {
    for (size_t slot = FirstSlot(ending);; slot = (slot + 1) % kSlots) {
      if (FKeys[slot] == ending) return FKinds[slot];
      if (FKeys[slot] == 0) return TKind::Other;
    }
  }

 private:
  static constexpr size_t kSlots = size_t{1} << kSlotBits;

  constexpr void Put(uint64_t ending, TKind kind) {
    size_t slot = FirstSlot(ending);
    while (FKeys[slot] != 0)
      slot = (slot + 1) % kSlots;
    FKeys[slot] = ending;
    FKinds[slot] = kind;
  }

  std::array<uint64_t, kSlots> FKeys{};
  std::array<TKind, kSlots> FKinds{};
};

constexpr TKindTable kKindTable;

// A name that begins with its only point has no ending.
template <typename TUnit>
TKind KindOfUnits(std::basic_string_view<TUnit> name) {
  using TCode = std::make_unsigned_t<TUnit>;
  size_t end = name.size();
  uint64_t ending = 0;
  bool number = true;
  for (size_t at = end; at-- > 1;) {
    const auto unit = static_cast<TCode>(name[at]);
    if (unit == '.') {
      if (!number || at + 1 == end) return ending != 0 ? kKindTable.Find(ending) : TKind::Other;
      end = at;
      ending = 0;
      continue;
    }
    const bool digit = unit >= '0' && unit <= '9';
    if (unit >= 0x80 || (end - at > kLongestEnding && !(number && digit))) return TKind::Other;
    number = (number || at + 1 == end) && digit;
    ending = WithLetter(ending, unit);
  }
  return TKind::Other;
}

// Whether all eight bytes are: their upper halves tell, with room for six more in the lower ones.
bool AreDigits(uint64_t bytes) {
  constexpr uint64_t kEach = 0x0101010101010101;
  constexpr uint64_t kUpper = 0xF0 * kEach;
  return (bytes & kUpper) == 0x30 * kEach && ((bytes + 0x06 * kEach) & kUpper) == 0x30 * kEach;
}

// The same for most names at once: the last eight bytes as a number, the first letter of an ending lowest, in
// which each byte that is a point is found by its upper bit.
TKind KindOfBytes(std::string_view name) {
  constexpr uint64_t kEach = 0x0101010101010101;
  constexpr uint64_t kLow = 0x7F * kEach;
  uint64_t tail = 0;
  std::memcpy(&tail, name.data() + name.size() - kLongestEnding, kLongestEnding);
  const uint64_t differs = tail ^ '.' * kEach;
  const uint64_t points = ~(((differs & kLow) + kLow) | differs | kLow);
  const auto after = static_cast<unsigned>(std::countl_zero(points));  // bits behind the last point
  // The ninth byte from behind is the point of the longest endings.
  if (points == 0 && name[name.size() - kLongestEnding - 1] != '.' && !AreDigits(tail)) return TKind::Other;
  if (points == 0 || after == 0) return KindOfUnits(name);
  const uint64_t ending = tail >> (64 - after);
  const char last = name.back();
  if (last >= '0' && last <= '9') return KindOfUnits(name);
  if ((ending & ~kLow) != 0) return TKind::Other;
  return kKindTable.Find((ending | 0x20 * kEach) & (~uint64_t{0} >> (64 - after)));
}

}  // namespace

TKind KindOf(std::string_view name) {
  return name.size() > kLongestEnding ? KindOfBytes(name) : KindOfUnits(name);
}

TKind KindOf(std::u16string_view name) {
  return KindOfUnits(name);
}

TFolderKinds::~TFolderKinds() {
  for (std::atomic<uint64_t*>& chunk : FChunks)
    std::free(chunk.load());
}

TFolderKinds::TPlace TFolderKinds::PlaceOf(TFolderId id) {
  const uint64_t block = (uint64_t{id} >> kFirstChunkBits) + 1;
  const auto chunk = static_cast<unsigned>(std::bit_width(block) - 1);
  const uint64_t first = ((uint64_t{1} << chunk) - 1) << kFirstChunkBits;
  return {chunk, static_cast<size_t>(id - first) * kKinds};
}

// The system gives pages of zeros when they are first written to, so that room for folders that never come
// costs nothing.
uint64_t* TFolderKinds::MakeChunk(unsigned chunk) {
  const std::lock_guard guard(FGrowLock);
  if (uint64_t* const there = FChunks[chunk].load(std::memory_order_acquire); there != nullptr) return there;
  void* const room = std::calloc(size_t{1} << (kFirstChunkBits + chunk), sizeof(TKindBytes));
  if (room == nullptr) throw std::bad_alloc();
  FChunks[chunk].store(static_cast<uint64_t*>(room), std::memory_order_release);
  return static_cast<uint64_t*>(room);
}

void TFolderKinds::Add(TFolderId id, TKind kind, uint64_t bytes) {
  const auto [chunk, cell] = PlaceOf(id);
  uint64_t* cells = FChunks[chunk].load(std::memory_order_acquire);
  // The lock in MakeChunk is taken once a chunk and thread at most.
  if (cells == nullptr) cells = MakeChunk(chunk);
  std::atomic_ref(cells[cell + static_cast<size_t>(kind)]).fetch_add(bytes, std::memory_order_relaxed);
}

void TFolderKinds::Add(TFolderId id, const TKindBytes& bytes) {
  for (size_t kind = 0; kind < kKinds; ++kind)
    if (bytes[kind] != 0) Add(id, static_cast<TKind>(kind), bytes[kind]);
}

void TFolderKinds::Remove(TFolderId id, TKind kind, uint64_t bytes) {
  Add(id, kind, uint64_t{0} - bytes);
}

void TFolderKinds::Clear(TFolderId id) {
  const auto [chunk, cell] = PlaceOf(id);
  uint64_t* const cells = FChunks[chunk].load(std::memory_order_acquire);
  if (cells != nullptr) std::fill_n(cells + cell, kKinds, uint64_t{0});
}

TKindBytes TFolderKinds::Of(TFolderId id) const {
  const auto [chunk, cell] = PlaceOf(id);
  TKindBytes bytes{};
  if (const uint64_t* const cells = FChunks[chunk].load(std::memory_order_acquire); cells != nullptr)
    std::copy_n(cells + cell, kKinds, bytes.begin());
  return bytes;
}

}  // namespace volindex
