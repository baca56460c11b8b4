// The window of properties for desktops that have none. Main thread.
#pragma once

#include <QString>

class QWidget;
class TLanguage;

// Shows what the system tells of an entry: kind, place, sizes, times, owner, rights, links, and its checksum
// on demand. It is read off the main thread. The window is no modal one, belongs to the owner and goes with
// it; the language outlives both.
void ShowOwnProperties(QWidget& owner, const QString& path, const TLanguage& language);
