#include "Volumes.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

#include "volindex/IndexAnswer.h"
#include "volindex/system/ScanRoot.h"

namespace volindex {

namespace fs = std::filesystem;

bool Try(const std::string& command, std::string& output) {
  const TTestTree scratch;
  const std::string log = scratch.Path("log");
  const bool succeeded =
      std::system(("PATH=$PATH:/usr/sbin:/sbin; { " + command + "; } >" + log + " 2>&1").c_str()) == 0;
  std::ostringstream said;
  said << std::ifstream(log).rdbuf();
  output = said.str();
  return succeeded;
}

bool Shell(const std::string& command) {
  std::string output;
  const bool succeeded = Try(command, output);
  EXPECT_TRUE(succeeded) << command << "\n" << output;
  return succeeded;
}

void WriteFile(const std::string& path, const std::string& content) {
  std::ofstream(path) << content;
}

namespace {

void MakeOddities(const std::string& root, bool anyBytes) {
  fs::create_directories(root + "/odd/empty");
  for (const char* name :
       {"a\nb", " lead", "dots...", "a:b*c?\"<>|", "\xC3\xA4\xF0\x9F\x98\x80", "-rf", "back\\slash"})
    WriteFile(root + "/odd/" + name, name);
  if (anyBytes) WriteFile(root + "/odd/bad\xFF\xFEname", "bad");
  WriteFile(root + "/odd/" + std::string(255, 'n'), "long");
  fs::create_symlink("odd", root + "/short link");
  fs::create_symlink(std::string(900, 't'), root + "/odd/long link");
  mkfifo((root + "/odd/pipe").c_str(), 0600);
}

void MakeHardLinks(const std::string& root) {
  fs::create_directories(root + "/links/z");
  WriteFile(root + "/links/z/first made", std::string(5000, 'l'));
  for (const char* name : {"/links/m", "/links/z/again", "/aaa"})
    fs::create_hard_link(root + "/links/z/first made", root + name);
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

// Data at both ends: mke2fs cuts a hole at the end of a file off, if the volume has inline data.
void MakeSparse(const std::string& path) {
  std::ofstream file(path);
  file.put('x').seekp((std::streamoff{9} << 30) - 1).put('y');
}

}  // namespace

void MakeVariedTree(const std::string& root, bool anyBytes) {
  fs::create_directories(root + "/lost+found");  // which mke2fs makes if it is not there
  MakeOddities(root, anyBytes);
  MakeHardLinks(root);
  MakeDeep(root);
  MakeWide(root);
  MakeSparse(root + "/sparse");
}

TMountedVolume::TMountedVolume(const std::string& size, const std::string& make, const std::string& mount) {
  fs::create_directory(FRoot);
  if (!TryHere("truncate -s " + size + " $image && { " + make + "; }")) {
    ADD_FAILURE() << FRefusal;
  } else if (TryHere("losetup --find --show $image")) {
    FDevice = FRefusal.substr(0, FRefusal.find('\n'));
    if (TryHere(mount)) FRefusal.clear();
  }
}

TMountedVolume::~TMountedVolume() {
  if (FDevice.empty()) return;
  (void)TryHere("umount $root");
  (void)TryHere("losetup --detach $device");
}

bool TMountedVolume::TryHere(const std::string& command) {
  return Try("image=" + FImage + "; root=" + FRoot + "; device=" + FDevice + "; " + command, FRefusal);
}

std::optional<TVolumeIndex> TMountedVolume::Read(TReader& reader, const std::string& path) {
  const auto root = DescribeScanRoot(path);
  if (!root || !reader.Accepts(*root)) return std::nullopt;
  TIndexBuilder builder;
  for (const std::string& mount : root->MountsBelow)
    builder.CoverPath(mount);
  const std::atomic<bool> stop{false};
  if (reader.Read(*root, builder, {stop, {}}) != TReadResult::Done) return std::nullopt;
  return builder.TakeIndex();
}

void TMountedVolume::ExpectSame(TReader& reader) const {
  const auto index = Read(reader, FRoot);
  ASSERT_TRUE(index);
  EXPECT_EQ(AnswerOf(*index), AnswerOfDisk(FRoot));
}

}  // namespace volindex
