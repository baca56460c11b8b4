// Writes the volumes that fuzzing begins with into the folder given.
#include <cstdio>
#include <filesystem>
#include <fstream>

#include "volindex/ntfs/VolumeMaker.h"

using namespace volindex::ntfs;

namespace {

void Write(const std::filesystem::path& path, const TVolumeMaker& maker) {
  const TImage image = maker.Make();
  std::ofstream(path, std::ios::binary)
      .write(reinterpret_cast<const char*>(image.data()), static_cast<std::streamsize>(image.size()));
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) {
    std::fputs("usage: volindex_ntfs_seeds <folder>\n", stderr);
    return 2;
  }
  const std::filesystem::path folder = arguments[1];
  std::filesystem::create_directories(folder);
  Write(folder / "mixed", MixedVolume());
  TVolumeMaker large(4096, 4096, 32);
  large.TableRuns({{28, 4}});
  Write(folder / "large_records", large.Put(24, TRecordMaker().Name(kRoot, u"file").Data(2000)));
  TVolumeMaker folders(512, 1024, 80);
  folders.TableRuns({{60, 8}});
  for (std::uint64_t record = 24; record < 29; ++record)
    folders.Put(record, TRecordMaker(true).Name(record == 24 ? kRoot : Reference(record - 1, 1), u"folder"));
  Write(folder / "folders", folders.Put(29, TRecordMaker().Name(Reference(28, 1), u"deep").Data(1)));
}
