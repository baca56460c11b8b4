// How many columns a text takes on a terminal, and texts cut to a number of columns.
#pragma once

#include <QList>
#include <QString>

// Unlike a conversion of the whole text this keeps a lone surrogate as one character.
[[nodiscard]] QList<char32_t> CodePoints(const QString& text);

// East Asian wide characters and pictures take two columns, combining marks none.
[[nodiscard]] int TextColumns(const QString& text);

// The text on one line of at most so many columns. Of a longer one the end stays, behind "...". Control
// characters, line breaks and bytes that are no text show as "?".
[[nodiscard]] QString FitToColumns(const QString& text, int columns);
