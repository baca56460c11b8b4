#include "Volumes.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace volindex::ext4 {
namespace fs = std::filesystem;

bool Shell(const std::string& command) {
  const TTestTree scratch;
  const std::string log = scratch.Path("log");
  const std::string line = "PATH=$PATH:/usr/sbin:/sbin; { " + command + "; } >" + log + " 2>&1";
  const bool succeeded = std::system(line.c_str()) == 0;
  if (!succeeded) ADD_FAILURE() << command << "\n" << std::ifstream(log).rdbuf();
  return succeeded;
}

void WriteFile(const std::string& path, const std::string& content) {
  std::ofstream(path) << content;
}

// Data at both ends: mke2fs cuts a hole at the end of a file off, if the volume has inline data.
void MakeSparse(const std::string& path, std::uint64_t size) {
  std::ofstream file(path);
  file.put('x').seekp(static_cast<std::streamoff>(size) - 1).put('y');
}

namespace {

void MakeOddities(const std::string& root) {
  fs::create_directory(root + "/odd");
  for (const char* name : {"a\nb", "\xC3\xA4\xC3\xB6", "bad\xFF\xFEname", "-rf", "back\\slash"})
    WriteFile(root + "/odd/" + name, name);
  WriteFile(root + "/odd/" + std::string(255, 'n'), "long");
  fs::create_symlink("odd", root + "/short link");
  fs::create_symlink(std::string(900, 't'), root + "/odd/long link");
  mkfifo((root + "/odd/pipe").c_str(), 0600);
  fs::create_directory(root + "/odd/empty");
}

void MakeHardLinks(const std::string& root) {
  fs::create_directories(root + "/links/z");
  WriteFile(root + "/links/z/first made", std::string(5000, 'l'));
  fs::create_hard_link(root + "/links/z/first made", root + "/links/m");
  fs::create_hard_link(root + "/links/z/first made", root + "/links/z/again");
  fs::create_hard_link(root + "/links/z/first made", root + "/aaa");
}

void MakeDeep(const std::string& root) {
  std::string path = root;
  for (int depth = 0; depth < 150; ++depth) {
    path += "/d" + std::to_string(depth);
    fs::create_directory(path);
    if (depth % 10 == 0) WriteFile(path + "/leaf", std::string(static_cast<std::size_t>(depth), 'd'));
  }
}

void MakeWide(const std::string& root) {
  for (int folder = 0; folder < 60; ++folder) {
    const std::string path = root + "/wide " + std::to_string(folder);
    fs::create_directory(path);
    for (int file = 0; file < folder; ++file)
      WriteFile(path + "/file number " + std::to_string(file),
                std::string(static_cast<std::size_t>(file * 7), 'w'));
  }
}

}  // namespace

void MakeVariedTree(const std::string& root) {
  fs::create_directories(root + "/lost+found");  // which mke2fs makes if it is not there
  MakeOddities(root);
  MakeHardLinks(root);
  MakeDeep(root);
  MakeWide(root);
  MakeSparse(root + "/sparse", std::uint64_t{9} << 30);
}

bool MakeImage(const std::string& image, const std::string& size, const std::string& options,
               const std::string& tree) {
  return Shell("truncate -s " + size + " " + image + " && mke2fs -q -F " + options + " -d " + tree + " " +
               image);
}

std::vector<std::byte> LoadFile(const std::string& path) {
  std::vector<std::byte> bytes(fs::file_size(path));
  std::ifstream(path, std::ios::binary)
      .read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  return bytes;
}

TOutcome Scan(const TByteSource& source, TVolumeState state) {
  const std::atomic<bool> stop{false};
  TIndexBuilder builder;
  TOutcome outcome;
  outcome.Result = ReadVolume(source, state, builder, {stop, {}}, 2);
  if (outcome.Result == TReadResult::Done) outcome.Index = builder.TakeIndex();
  return outcome;
}

TOutcome ScanImage(const std::string& image) {
  const auto source = OpenByteSource(image);
  EXPECT_NE(source, nullptr) << image;
  return source ? Scan(*source) : TOutcome();
}

}  // namespace volindex::ext4
