// The lines of a text file that carries no note of its encoding but, perhaps, a byte-order mark.
#pragma once

#include <QByteArray>
#include <QStringList>

// The mark of UTF-16 (either order) or UTF-8 decides and is removed; without one the bytes are in the
// system's ANSI code page. CR, LF and CR LF end a line; empty lines are left out. Re-entrant.
[[nodiscard]] QStringList TextLines(const QByteArray& content);
