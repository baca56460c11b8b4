// The three commands of the Help menu. Main thread.
#pragma once

#include <QString>

// The library behind the about box and the homepage: one of this name beside the program. One that is missing
// makes both commands do nothing.
void btnAboutClick(const QString& library);
void btnHomeClick(const QString& library);
[[nodiscard]] QString ColophonLibrary();

// Opens the support forum in the browser.
void btnHelpClick();
