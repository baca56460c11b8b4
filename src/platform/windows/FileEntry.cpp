#include "platform/windows/FileEntry.h"

#include "platform/Paths.h"
#include "platform/windows/LongPath.h"

TFileHandle OpenEntry(const QString& path, DWORD rights, DWORD flags) {
  constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  return TakeHandle<TFileHandle>(
      CreateFileW(LongPath(path).c_str(), rights, kShareAll, nullptr, OPEN_EXISTING, flags, nullptr));
}

TSearchHandle OpenSearch(const QString& folder, WIN32_FIND_DATAW& first) {
  const std::wstring pattern = LongPath(IncludeTrailingPathDelimiter(folder)) + L'*';
  return TakeHandle<TSearchHandle>(FindFirstFileExW(
      pattern.c_str(), FindExInfoBasic, &first, FindExSearchNameMatch, nullptr, FIND_FIRST_EX_LARGE_FETCH));
}
