// The names that users give to volumes.
#pragma once

#include <QByteArray>
#include <QString>

#include <sys/types.h>

// The label of a device from a folder of links, each named after a label and leading to its device; empty if
// no link leads there. A label's special bytes are written "\x20" in the link's name.
[[nodiscard]] QString VolumeLabel(dev_t device, const QByteArray& labelFolder);
