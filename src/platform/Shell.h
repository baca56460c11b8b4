// Hands things to the desktop. Main thread; returns at once, never shows anything itself.
#pragma once

#include <QString>
#include <QUrl>

// Opens a file, folder or web address with the program that the desktop has for it. False if nothing
// could be started.
bool OpenTarget(const QString& target);

// Starts a program that the system finds by its name, the parameters as one would type them. False if it
// could not be started; Linux has no such programs: always false.
bool StartProgram(const QString& program, const QString& parameters);

// The address of a target: one with a scheme ("https:...") as it stands, anything else a file's path, whose
// undecodable bytes stay as they are.
[[nodiscard]] QUrl TargetUrl(const QString& target);
