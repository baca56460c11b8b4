// The few looks that the forms share: the form font, and text colours that stay readable in light and dark
// palettes. Main thread.
#pragma once

#include <QColor>
#include <QFont>
#include <QIcon>

class QPalette;
class QWidget;

// Tahoma at the forms' stored height where the system has it, else the system's own font and size.
[[nodiscard]] QFont FormFont();

// The bold font of a title, larger than the given one in the relation of the stored heights.
[[nodiscard]] QFont TitleFont(const QFont& formFont);

// The stored colours (0x00BBGGRR) of a title and of a heading.
inline constexpr unsigned kTitleColor = 9588234;
inline constexpr unsigned kHeadingColor = 8388608;

// A stored colour on the palette's background: as it is on a light one, lightened on a dark one.
[[nodiscard]] QColor ReadableColor(unsigned storedColor, const QPalette& palette);

// The program's icon in every size that systems ask for.
[[nodiscard]] QIcon ProgramIcon();

// True if the palette's window background is dark.
[[nodiscard]] bool IsDark(const QPalette& palette);

// Gives the widget's text a stored colour, again at each change of the palette.
void SetTextColor(QWidget& label, unsigned storedColor);
