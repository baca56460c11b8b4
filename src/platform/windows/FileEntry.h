// Paths and texts on their way to the system's calls, the opening of files and folders, and what is told of
// one entry.
#pragma once

#include "platform/windows/Handle.h"

#include <QString>

#include <string>

// Enough to ask what an entry is and where it lies.
inline constexpr DWORD kNoRights = 0;

// An existing file, or with FILE_FLAG_BACKUP_SEMANTICS a folder, links followed, whatever other programs do
// with it; null if it can't be opened.
[[nodiscard]] TFileHandle OpenEntry(const QString& path, DWORD rights, DWORD flags);

// A search over all entries of a folder, its first entry found; null if the folder can't be listed.
[[nodiscard]] TSearchHandle OpenSearch(const QString& folder, WIN32_FIND_DATAW& first);

// The length that counts, from the two halves in which the system tells it: a folder has none.
template <typename TEntry>
[[nodiscard]] quint64 SizeOf(const TEntry& entry) {
  if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return 0;
  return quint64{entry.nFileSizeHigh} << 32 | entry.nFileSizeLow;
}

// The path in the form in which the system takes every name and any length: "\\?\C:\a" for "C:\a" and
// "\\?\UNC\server\share" for "\\server\share". In this form the system looks at nothing but the delimiters,
// so "/", doubled delimiters, "." and ".." are settled here; one delimiter at the end stays. Any other path,
// a relative one or one in this form already, is given as it stands.
[[nodiscard]] std::wstring LongPath(const QString& path);

// The text as the system's calls take it, valid as long as the text is.
[[nodiscard]] inline const wchar_t* WideText(const QString& text) {
  return reinterpret_cast<const wchar_t*>(text.utf16());
}
