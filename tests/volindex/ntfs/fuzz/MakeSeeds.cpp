// Writes the volumes that fuzzing begins with into the folder given.
#include <filesystem>
#include <fstream>

#include "volindex/ntfs/VolumeMaker.h"

using namespace volindex::ntfs;

int main(int count, char** arguments) {
  if (count != 2) return 2;
  std::filesystem::create_directories(arguments[1]);
  TVolumeMaker large(4096, 4096, 32);
  large.TableRuns({{28, 4}}).Put(24, TRecordMaker(true).Name(kRoot, u"folder"));
  large.Put(25, TRecordMaker().Name(Reference(24, 1), u"file").Data(2000));
  unsigned seed = 0;
  for (const TVolumeMaker& maker : {MixedVolume(), large}) {
    const TImage image = maker.Make();
    std::ofstream(std::filesystem::path(arguments[1]) / std::to_string(seed++), std::ios::binary)
        .write(reinterpret_cast<const char*>(image.data()), static_cast<std::streamsize>(image.size()));
  }
}
