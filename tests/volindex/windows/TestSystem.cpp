#include "volindex/TestSystem.h"

#include <windows.h>
#include <winioctl.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
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

struct TFound {
  std::string Name;
  DWORD Attributes;
};

bool IsFolder(const TFound& found) {
  return (found.Attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT)) ==
         FILE_ATTRIBUTE_DIRECTORY;
}

void ForEach(const std::string& folder, const std::function<void(const TFound&)>& take) {
  WIN32_FIND_DATAW data{};
  const HANDLE search = ::FindFirstFileW((LongPath(folder) + L"\\*").c_str(), &data);
  Require(search != INVALID_HANDLE_VALUE, folder);
  do {
    const std::wstring_view name = data.cFileName;
    if (name != L"." && name != L"..") take({Narrow(std::wstring(name)), data.dwFileAttributes});
  } while (::FindNextFileW(search, &data) != FALSE);
  ::FindClose(search);
}

HANDLE Open(const std::string& path, DWORD access, DWORD disposition, DWORD flags) {
  const HANDLE file =
      ::CreateFileW(LongPath(path).c_str(), access, FILE_SHARE_READ, nullptr, disposition, flags, nullptr);
  Require(file != INVALID_HANDLE_VALUE, path);
  return file;
}

TPlainFile FactsOf(const std::string& root, const std::string& relative) {
  BY_HANDLE_FILE_INFORMATION facts{};
  const HANDLE file = Open(root + '/' + relative, FILE_READ_ATTRIBUTES, OPEN_EXISTING,
                           FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT);
  const bool known = ::GetFileInformationByHandle(file, &facts) != FALSE;
  ::CloseHandle(file);
  Require(known, relative);
  return {relative, uint64_t{facts.nFileSizeHigh} << 32 | facts.nFileSizeLow,
          uint64_t{facts.nFileIndexHigh} << 32 | facts.nFileIndexLow};
}

void Walk(const std::string& root, const std::string& prefix, std::vector<TPlainFile>& files,
          std::vector<std::string>& folders) {
  const std::string folder = root + '/' + prefix;
  ForEach(folder.substr(0, folder.size() - 1), [&](const TFound& found) {
    if (!IsFolder(found)) return files.push_back(FactsOf(root, prefix + found.Name));
    folders.push_back(prefix + found.Name);
    Walk(root, prefix + found.Name + '/', files, folders);
  });
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

std::string MakeTemporaryFolder() {
  wchar_t folder[MAX_PATH + 1] = {};
  wchar_t path[MAX_PATH + 1] = {};
  const bool named =
      ::GetTempPathW(MAX_PATH, folder) != 0 && ::GetTempFileNameW(folder, L"vix", 0, path) != 0;
  if (!named || ::DeleteFileW(path) == FALSE || ::CreateDirectoryW(path, nullptr) == FALSE)
    throw std::runtime_error("no temporary folder");
  wchar_t full[MAX_PATH + 1] = {};
  return Narrow(::GetLongPathNameW(path, full, MAX_PATH) != 0 ? full : path);
}

void RemoveTree(const std::string& path) {
  ForEach(path, [&path](const TFound& found) {
    const std::string each = path + '/' + found.Name;
    if (IsFolder(found)) return RemoveTree(each);
    const bool folder = (found.Attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    folder ? ::RemoveDirectoryW(LongPath(each).c_str()) : ::DeleteFileW(LongPath(each).c_str());
  });
  ::RemoveDirectoryW(LongPath(path).c_str());
}

void MakeFolder(const std::string& path) {
  const bool made = ::CreateDirectoryW(LongPath(path).c_str(), nullptr) != FALSE;
  Require(made || ::GetLastError() == ERROR_ALREADY_EXISTS, path);
}

void MakeHardLink(const std::string& file, const std::string& path) {
  Require(::CreateHardLinkW(LongPath(path).c_str(), LongPath(file).c_str(), nullptr) != FALSE, path);
}

void MakeFile(const std::string& path, uint64_t size) {
  const HANDLE file = Open(path, GENERIC_WRITE, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL);
  DWORD ignored = 0;
  ::DeviceIoControl(file, FSCTL_SET_SPARSE, nullptr, 0, nullptr, 0, &ignored, nullptr);
  LARGE_INTEGER end{};
  end.QuadPart = static_cast<LONGLONG>(size);
  const bool made =
      ::SetFilePointerEx(file, end, nullptr, FILE_BEGIN) != FALSE && ::SetEndOfFile(file) != FALSE;
  ::CloseHandle(file);
  Require(made, path);
}

void MakeSpecialFile(const std::string& path, unsigned which) {
  const DWORD attributes = which % 2 == 0 ? FILE_ATTRIBUTE_HIDDEN : FILE_ATTRIBUTE_SYSTEM;
  ::CloseHandle(Open(path, GENERIC_WRITE, CREATE_NEW, attributes));
}

unsigned MakeChain(const std::string& root, const std::string& name) {
  constexpr unsigned kDepth = 100;
  std::string folder = root;
  for (unsigned level = 0; level < kDepth; ++level) {
    MakeFile(folder + "/file", 7);
    MakeFolder(folder + "/side");
    MakeFile(folder + "/side/file", 3);
    folder += '/' + name;
    MakeFolder(folder);
  }
  return kDepth;
}

void SetVariable(const char* name, const char* value) {
  ::_putenv_s(name, value != nullptr ? value : "");
}

TAnswer AnswerOfDisk(const std::string& root) {
  std::vector<TPlainFile> files;
  std::vector<std::string> folders;
  Walk(root, {}, files, folders);
  return AnswerOf(files, folders);
}

}  // namespace volindex
