// The two general routines that need the desktop: the icon of a path and opening a target. Main thread.
#pragma once

#include <QIcon>
#include <QString>

// The icon of a file by its path, which is first passed through ExtractCommandPath; the file need not
// exist. A null icon if the system fails to give one.
[[nodiscard]] QIcon GetFileIconHandle(const QString& path);

// Opens a file, folder or web address. "%WINDOWS%", "%SYSTEM%", "%APP%\" and "%APP%/" are replaced first.
// A command line of "rundll32.exe" starts that program. A target that can't be opened fails silently.
void OpenWithShell(const QString& target);
