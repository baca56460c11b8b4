// Texts that others have written, names of files above all, as text of an HTML page.
#pragma once

#include <QByteArray>
#include <QString>

// The text with all that is no visible character of its own told in letters: "\x1b" for a control, "\u202e"
// for what turns the direction of writing or has no form, "\xff" for a byte that is no text, "\udfff" for
// half a character. A text that begins with a mark for the letter before gets a circle to bear it.
[[nodiscard]] QString ShownText(const QString& text);

// ShownText in UTF-8, in which no character means anything to HTML: for the content of elements and for
// attributes in double quotes alike. Of a text that makes more bytes than that its middle is left out.
[[nodiscard]] QByteArray HtmlText(const QString& text, qsizetype mostBytes = 1 << 20);
