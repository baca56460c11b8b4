// The fixed volumes of this computer. Linux: one per block-device file system that is not removable, under
// its shortest mount point; the volume of "/" is always among them. Windows: the logical drives of type 3.
#pragma once

#include <QString>
#include <QVector>

struct TVolume {
  QString Root;     // with its delimiter: "C:\", "/", "/home/"
  QString Label;    // empty if the volume has none
  qint64 Size = 0;  // bytes
  qint64 Free = 0;  // bytes available to this user
};

// In the order of the roots: the system volume of Linux first, by drive letter on Windows. A volume whose
// information can't be read is left out. Any thread; blocks on the file system.
[[nodiscard]] QVector<TVolume> ListFixedVolumes();

// A volume that may go while the program runs.
enum class TVolumeKind { Removable, Network };
struct TOtherVolume {
  QString Root;  // with its delimiter
  TVolumeKind Kind = TVolumeKind::Removable;
};

// The removable and network volumes that are there now, in the order of the roots. None of them is touched,
// so a server that does not answer holds nobody up. Any thread.
[[nodiscard]] QVector<TOtherVolume> ListOtherVolumes();

// The mount point that holds the path (Linux) or its drive root (Windows), with its delimiter; empty if
// there is none.
[[nodiscard]] QString VolumeRootOf(const QString& path);
