#include "volindex/TestSystem.h"

#include <cstdio>
#include <stdexcept>

namespace volindex {

namespace {

// Not a device, pipe or socket, of which some file systems tell a length.
bool IsSized(char kind) {
  return kind == 'f' || kind == 'l';
}

std::string OutputOf(const std::string& command) {
  std::string output;
  FILE* const pipe = ::popen(command.c_str(), "r");
  char block[4096];
  while (const size_t got = pipe == nullptr ? 0 : std::fread(block, 1, sizeof block, pipe))
    output.append(block, got);
  if (pipe == nullptr || ::pclose(pipe) != 0) throw std::runtime_error(command);
  return output;
}

}  // namespace

const TTextCase kOddName = {"\xff\xfe", {0xDCFF, 0xDCFE}};

const std::vector<std::string> kNoFoldersOfADisk = {"/proc", "/sys/kernel"};

const std::vector<TTextCase> kTexts = {
    {"plain/\\", u"plain/\\"},
    {"\xc3\xa4\xe2\x82\xac", u"\u00e4\u20ac"},
    {"\xf0\x9f\x98\x80", u"\U0001F600"},
    {"a\xff", {u'a', 0xDCFF}},
    {"\xc0\x80", {0xDCC0, 0xDC80}},                          // longer than need be
    {"\xed\xa0\x80", {0xDCED, 0xDCA0, 0xDC80}},              // a surrogate
    {"\xf4\x90\x80\x80", {0xDCF4, 0xDC90, 0xDC80, 0xDC80}},  // beyond the last character
    {"\xe2\x82", {0xDCE2, 0xDC82}},                          // cut
};

// By `find`, which follows no link and enters no other file system.
TAnswer AnswerOfDisk(const std::string& root) {
  const std::string output = OutputOf("find '" + root + "' -xdev -mindepth 1 -printf '%y%i %s %P\\0'");
  std::vector<TPlainFile> files;
  std::vector<std::string> folders;
  for (size_t begin = 0; begin < output.size();) {
    const std::string line = output.c_str() + begin;
    begin += line.size() + 1;
    const size_t size = line.find(' ') + 1;
    const std::string path = line.substr(line.find(' ', size) + 1);
    if (line[0] == 'd')
      folders.push_back(path);
    else
      files.push_back(
          {path, IsSized(line[0]) ? std::stoull(line.substr(size)) : 0, std::stoull(line.substr(1))});
  }
  return AnswerOf(files, folders);
}

}  // namespace volindex
