// Path texts: the delimiter, the parts of a path, what a volume root is, and the ways between the bytes of a
// name or a text and what they say. Every rule that differs between drive letters and mount points lives
// here and nowhere else. All functions are callable from any thread.
#pragma once

#include <QByteArray>
#include <QString>

// '\\' on Windows, '/' elsewhere.
extern const QChar PathDelim;

// UTF-16 units that hold the longest path that the system's calls take, its NUL included: 260 on Windows,
// 4096 elsewhere, where a path is as many bytes and no byte makes more than one unit.
extern const int kLongestPath;

[[nodiscard]] QString IncludeTrailingPathDelimiter(const QString& path);

// Without any delimiter at the end, be it a root's, but for a text that is nothing else: "/" stays.
[[nodiscard]] QString WithoutDelimitersAtEnd(const QString& path);

// Without the delimiter at the end; a volume root keeps its own, for which the system may be asked.
[[nodiscard]] QString ExcludeTrailingPathDelimiter(const QString& path);

// The folder of a file path, without the delimiter at its end unless it is a root. "/a/b" gives "/a",
// "/a/" gives "/a".
[[nodiscard]] QString ExtractFileDir(const QString& path);

// The folder of a file path with its delimiter: "/a/b" gives "/a/".
[[nodiscard]] QString ExtractFilePath(const QString& path);

// What follows the last delimiter; empty for a path that ends in one.
[[nodiscard]] QString ExtractFileName(const QString& path);

// From the last '.' of the file name on, point included; empty if the name has none.
[[nodiscard]] QString ExtractFileExt(const QString& path);

// True for a path that stands for a whole volume; never an empty one. Windows: a path of up to 3 characters.
// Elsewhere: the mount point of a fixed volume, with or without its delimiter.
[[nodiscard]] bool IsVolumeRoot(const QString& path);

// "X:..." on Windows, that is a ':' as the second character; "/..." elsewhere.
[[nodiscard]] bool IsAbsolutePath(const QString& path);

// True if both paths lie on one volume. Windows compares the first letters without regard to case;
// elsewhere the mount points that hold the two paths are compared. An empty path is on no volume.
[[nodiscard]] bool SameVolume(const QString& a, const QString& b);

// How a volume is named behind its label: "C:" for "C:\", "/home" for "/home/", "/" for "/".
[[nodiscard]] QString VolumeName(const QString& root);

// True if the two texts name the same folder, trailing delimiters aside. Case counts; on Windows not that of
// ASCII letters.
[[nodiscard]] bool SameFolder(const QString& a, const QString& b);

// Below 0, 0 or above 0; ASCII letters compare without regard to case, all else by UTF-16 unit.
[[nodiscard]] int CompareText(const QString& a, const QString& b);

// File name bytes to text and back without loss: an invalid UTF-8 byte 0xNN is the lone surrogate
// U+DC00+NN in the text. Any other lone surrogate becomes the byte '?'. On Windows names are UTF-16 already
// and these two serve only UTF-8 that comes from files or goes out.
[[nodiscard]] QString NameFromBytes(QByteArrayView bytes);
[[nodiscard]] QByteArray NameToBytes(const QString& name);

// A reversible escape for output that must be valid text: the lone surrogate of byte 0xNN becomes
// "\xNN", any other one "\uNNNN" (small hexadecimal digits), and a backslash "\\". Text without any of these
// comes back unchanged.
[[nodiscard]] QString EscapeUndecodable(const QString& name);

// Texts in files that tell no encoding, and what one byte of them would be. Any thread.

// Windows: by the system's ANSI code page, a character that it lacks becoming its default one. Linux: as
// NameFromBytes and NameToBytes.
[[nodiscard]] QString TextFromAnsi(QByteArrayView bytes);
[[nodiscard]] QByteArray TextToAnsi(const QString& text);

// For the hot path of a walk: what NameFromBytes gives, in the memory that the text has already where nobody
// shares it.
void AssignName(QString& name, QByteArrayView bytes);
