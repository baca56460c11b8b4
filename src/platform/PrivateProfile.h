// Reads one value of an ini file by the rules of the system's private-profile service: section and key
// without regard to case, the first section and the first key of a name win, blanks around both and one
// pair of quotation marks round the value are taken off. Read only. Any thread; blocks on the file system.
//
// Windows: the service itself answers. It takes bytes without a byte-order mark for the ANSI code page, finds
// no file by a path of 260 characters or more, and may differ in lines that are no section, key or comment.
#pragma once

#include <QString>

// The default for a missing or unreadable file, section or key.
[[nodiscard]] QString ReadPrivateProfile(const QString& file, const QString& section, const QString& key,
                                         const QString& defaultValue);
