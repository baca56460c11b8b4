// Free routines that the whole program calls: the display form of a byte count, the system's folders,
// the file path in a command line, type texts, folder sizes, text cutters.
// None translates anything, none reports an error: what fails leaves empty or unchanged text. Re-entrant.
#pragma once

#include <QString>
#include <QStringList>

// "1023 Byte", "1.50 KB", "2048.00 GB": whole bytes below 1024, then two decimals in steps of 1024 with
// the decimal separator of the user's locale and no unit above GB.
[[nodiscard]] QString SizeToText(qint64 bytes);

// The folders of the operating system and of its programs, no delimiter at the end unless a root.
[[nodiscard]] QString GetWindowsDir();
[[nodiscard]] QString GetSystemDir();

// The path of the special folder with this number; empty if there is none. Nothing is created.
[[nodiscard]] QString GetSpecialFolderPath(int number);

// The file path inside a command line: switches, quotes, resource numbers and known variables are cut or
// expanded. Where '/' is the path delimiter the two steps for switches and drive letters do not apply.
[[nodiscard]] QString ExtractCommandPath(const QString& commandLine);

// The user-visible type of files with this extension (point included). "FILE" for none; an extension
// that the system does not know gives its letters in upper case and " FILE".
[[nodiscard]] QString GetFileTypeName(const QString& extension);

// Bytes below a path: a file's own length for its path, and for a folder with its mask ("/a/*.*") all that
// lies in it. A folder is entered only if its attributes are exactly those of a plain folder and its
// name does not begin with a point. 0 for a path or mask that finds nothing. Blocks on the file system.
[[nodiscard]] quint64 FolderSizeOf(const QString& pathOrMask);

// The parts between delimiters, empty ones included; an empty text is one empty part.
[[nodiscard]] QStringList SplitToList(const QString& text, const QString& delimiter);

// With a character other than NUL: the text before its first, or after its last, occurrence (LeftOfChar:
// empty, RightOfLastChar: the whole text if it does not occur). With NUL: the first, or last, count
// characters.
[[nodiscard]] QString LeftOfChar(const QString& text, int count, QChar character);
[[nodiscard]] QString RightOfLastChar(const QString& text, int count, QChar character);

// The 1-based place of the nth occurrence counted from the end; 0 for none.
[[nodiscard]] int LastCharPos(const QString& text, QChar character, int n);

// Without all characters at either end whose code is not above the given one's.
[[nodiscard]] QString TrimBelowChar(const QString& text, QChar character);
