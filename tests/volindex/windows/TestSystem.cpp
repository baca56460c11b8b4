#include "volindex/TestSystem.h"

#include <windows.h>

#include <algorithm>
#include <stdexcept>

namespace volindex {

namespace {

std::wstring Wide(const std::string& text) {
  std::wstring wide(text.size(), L'\0');
  const int length = ::MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                           wide.data(), static_cast<int>(wide.size()));
  wide.resize(static_cast<size_t>(length));
  return wide;
}

std::string Narrow(const std::wstring& text) {
  std::string bytes(text.size() * 3, '\0');
  const int length = ::WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                           bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr);
  bytes.resize(static_cast<size_t>(length));
  return bytes;
}

// Beyond the limit of 260 units.
std::wstring LongPath(const std::string& path) {
  std::wstring text = Wide(path);
  std::replace(text.begin(), text.end(), L'/', L'\\');
  return text.starts_with(L"\\\\") ? text : L"\\\\?\\" + text;
}

void Require(bool done, const std::string& path) {
  if (!done) throw std::runtime_error(path);
}

TPlainFile FactsOf(const std::string& root, const std::string& relative) {
  BY_HANDLE_FILE_INFORMATION facts{};
  const HANDLE file =
      ::CreateFileW(LongPath(root + '/' + relative).c_str(), FILE_READ_ATTRIBUTES, FILE_SHARE_READ, nullptr,
                    OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
  Require(file != INVALID_HANDLE_VALUE, relative);
  const bool known = ::GetFileInformationByHandle(file, &facts) != FALSE;
  ::CloseHandle(file);
  Require(known, relative);
  return {relative, uint64_t{facts.nFileSizeHigh} << 32 | facts.nFileSizeLow,
          uint64_t{facts.nFileIndexHigh} << 32 | facts.nFileIndexLow};
}

void Walk(const std::string& root, const std::string& prefix, std::vector<TPlainFile>& files,
          std::vector<std::string>& folders) {
  WIN32_FIND_DATAW found{};
  const HANDLE search = ::FindFirstFileW((LongPath(root + '/' + prefix) + L'*').c_str(), &found);
  Require(search != INVALID_HANDLE_VALUE, prefix);
  do {
    const std::string name = Narrow(found.cFileName);
    const DWORD kind = found.dwFileAttributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT);
    if (name == "." || name == "..") continue;
    if (kind != FILE_ATTRIBUTE_DIRECTORY) {
      files.push_back(FactsOf(root, prefix + name));
    } else {
      folders.push_back(prefix + name);
      Walk(root, prefix + name + '/', files, folders);
    }
  } while (::FindNextFileW(search, &found) != FALSE);
  ::FindClose(search);
}

}  // namespace

const TTextCase kOddName = {"\xf0\x9f\x98\x80", u"\U0001F600"};

const std::vector<std::string> kNoFoldersOfADisk = {"\\\\.\\C:", "NUL", "C:\\no:name"};

const std::vector<TTextCase> kTexts = {
    {"plain/", u"plain\\"},
    {"\xc3\xa4\xe2\x82\xac", u"\u00e4\u20ac"},
    {"\xf0\x9f\x98\x80", u"\U0001F600"},
    {"\xed\xa0\x80"
     "a",
     {0xD800, u'a'}},                                // a lone first half
    {"\xed\xb3\xbf\xed\xa0\x80", {0xDCFF, 0xD800}},  // halves in the wrong order
};

TAnswer AnswerOfDisk(const std::string& root) {
  std::vector<TPlainFile> files;
  std::vector<std::string> folders;
  Walk(root, {}, files, folders);
  return AnswerOf(files, folders);
}

}  // namespace volindex
