// Paths and texts on their way to the system's calls.
#pragma once

#include <QString>

#include <string>

// The path in the form in which the system takes every name and any length: "\\?\C:\a" for "C:\a" and
// "\\?\UNC\server\share" for "\\server\share". In this form the system looks at nothing but the delimiters,
// so "/", doubled delimiters, "." and ".." are settled here; one delimiter at the end stays. Any other path,
// a relative one or one in this form already, is given as it stands.
[[nodiscard]] std::wstring LongPath(const QString& path);

// The text as the system's calls take it, valid as long as the text is.
[[nodiscard]] inline const wchar_t* WideText(const QString& text) {
  return reinterpret_cast<const wchar_t*>(text.utf16());
}
