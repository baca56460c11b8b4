// Bringing a window of the program to the front when the user asks for it from outside. Main thread.
#pragma once

#include <QByteArray>

class QWindow;

// Shows a minimised window again, raises it and gives it the keyboard, as far as the system lets a program do
// so; false if it is not in front then, where that is known at once. The token is the desktop's leave for it
// (TSingleInstance), empty if there is none.
bool ForceForeground(QWindow& window, const QByteArray& token);
