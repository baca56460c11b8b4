// What the desktop does for the program: it opens files and addresses, shows files in the file manager with
// their properties, and brings a window to the front. Main thread; every call returns at once and shows
// nothing itself.
#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>
#include <QWindow>

#include <functional>

// Opens a file, folder or web address with the program that the desktop has for it. False if nothing
// could be started.
bool OpenTarget(const QString& target);

// Starts a program that the system finds by its name, the parameters as one would type them. False if it
// could not be started; Linux has no such programs: always false.
bool StartProgram(const QString& program, const QString& parameters);

// The address of a target: one with a scheme ("https:...") as it stands, anything else a file's path, whose
// undecodable bytes stay as they are.
[[nodiscard]] QUrl TargetUrl(const QString& target);

// How the window of an opened program is to appear; Windows only.
enum class TShowWindow : int { Normal = 1, Show = 5 };

// The default action of a file or folder. The window, which may be null, is the owner of what the system
// shows. False if nothing could be started.
bool OpenFile(const QString& path, QWindow* owner, TShowWindow show);

// Shows where an entry lies, marked in its folder. A Linux desktop that can't do that shows the folder.
void ShowInFileManager(const QString& path);

// Shows the desktop's own window of properties. Where a Linux desktop has none, the function is called
// instead, later and on the main thread.
void ShowPropertiesDialog(const QString& path, const std::function<void()>& otherwise);

// For a user who asks for the program from outside: shows a minimised window again, raises it and gives it
// the keyboard, as far as the system lets a program do so; false if it is not in front then, where that is
// known at once. The token is the desktop's leave for it (TSingleInstance), empty if there is none.
bool ForceForeground(QWindow& window, const QByteArray& token);
