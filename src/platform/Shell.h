// Hands things to the desktop. Main thread; returns at once, never shows anything itself.
#pragma once

#include <QString>

// Opens a file, folder or web address with the program that the desktop has for it. False if nothing
// could be started.
bool OpenTarget(const QString& target);
