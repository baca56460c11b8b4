// Writes the answers of both kinds that fuzzing begins with into the folder given.
#include <filesystem>
#include <fstream>
#include <string>

#include "volindex/bulk/Answers.h"

using namespace volindex;

int main(int count, char** arguments) {
  if (count != 2) return 2;
  std::filesystem::create_directories(arguments[1]);
  TBuffer chunks;
  xfs::AddChunk(chunks, 128, 0x8000'0000'0000'001F);
  xfs::AddChunk(chunks, (1 << 20) + 64, 3);
  xfs::AddInode(chunks, 128, 0100644, 5);
  xfs::AddInode(chunks, 129, 0120777, 6, 2);
  xfs::AddInode(chunks, 131, 0040755, 8, 3);
  const TBuffer tree = btrfs::SmallTree();
  const auto write = [&](const char* name, std::string head, const TBuffer& bytes) {
    head.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    std::ofstream(std::filesystem::path(arguments[1]) / name, std::ios::binary) << head;
  };
  write("xfs", std::string("\0\2", 2), chunks);
  write("btrfs", std::string("\0", 1), tree);
}
