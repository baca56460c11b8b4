// Hands things to the desktop. Main thread; returns at once, never shows anything itself.
#pragma once

#include <QString>
#include <QUrl>

// Opens a file, folder or web address with the program that the desktop has for it. False if nothing
// could be started.
bool OpenTarget(const QString& target);

// The address of a target: one with a scheme ("https:...") as it stands, anything else a file's path, whose
// undecodable bytes stay as they are.
[[nodiscard]] QUrl TargetUrl(const QString& target);
