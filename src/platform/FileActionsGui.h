// What the desktop does with a file for the program: opening it, showing it in the file manager and its
// properties. Main thread; returns at once and shows nothing itself.
#pragma once

#include <QString>
#include <QWindow>

#include <functional>

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
