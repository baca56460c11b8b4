#include "platform/Volumes.h"

#include "platform/Paths.h"
#include "platform/windows/FileEntry.h"

#include <windows.h>

#include <array>
#include <optional>

namespace {

constexpr size_t kDriveStringUnits = 4;  // "C:\" and its NUL
constexpr DWORD kLabelUnits = 261;

// The letters of the logical drives, in the system's order.
QString DriveLetters() {
  std::wstring drives(GetLogicalDriveStringsW(0, nullptr), L'\0');
  const DWORD length = GetLogicalDriveStringsW(static_cast<DWORD>(drives.size()), drives.data());
  QString letters;
  for (size_t i = 0; i + kDriveStringUnits <= length && length < drives.size(); i += kDriveStringUnits)
    letters += QChar(drives[i]);
  return letters;
}

std::optional<QString> LabelOf(const QString& root) {
  std::array<wchar_t, kLabelUnits + 1> label{};
  if (GetVolumeInformationW(WideText(root), label.data(), kLabelUnits, nullptr, nullptr, nullptr, nullptr,
                            0) == 0)
    return std::nullopt;
  return QString::fromWCharArray(label.data());
}

bool AskSpace(const QString& folder, TVolume& volume) {
  ULARGE_INTEGER available;
  ULARGE_INTEGER total;
  if (GetDiskFreeSpaceExW(WideText(folder), &available, &total, nullptr) == 0) return false;
  volume.Free = static_cast<qint64>(available.QuadPart);
  volume.Size = static_cast<qint64>(total.QuadPart);
  return true;
}

// Counted in clusters, as every system can tell it; both stay 0 if none can.
void AskClusters(const QString& root, TVolume& volume) {
  DWORD sectors = 0;
  DWORD bytes = 0;
  DWORD free = 0;
  DWORD total = 0;
  if (GetDiskFreeSpaceW(WideText(root), &sectors, &bytes, &free, &total) == 0) return;
  const qint64 cluster = qint64{sectors} * bytes;
  volume.Free = cluster * free;
  volume.Size = cluster * total;
}

std::optional<TVolume> DescribeDrive(QChar letter) {
  const QString drive = letter + QStringLiteral(":");
  // Before anything else: a look at the type touches no drive, whereas to ask an empty or distant one takes
  // its time.
  if (GetDriveTypeW(WideText(drive)) != DRIVE_FIXED) return std::nullopt;
  TVolume volume;
  volume.Root = drive + PathDelim;
  const auto label = LabelOf(volume.Root);
  if (!label) return std::nullopt;
  volume.Label = *label;
  if (!AskSpace(drive, volume)) AskClusters(volume.Root, volume);
  return volume;
}

}  // namespace

QVector<TVolume> ListFixedVolumes() {
  QVector<TVolume> volumes;
  for (const QChar letter : DriveLetters()) {
    if (const auto volume = DescribeDrive(letter)) volumes.append(*volume);
  }
  return volumes;
}

QVector<TOtherVolume> ListOtherVolumes() {
  QVector<TOtherVolume> volumes;
  for (const QChar letter : DriveLetters()) {
    const QString root = letter + QStringLiteral(":\\");
    const UINT type = GetDriveTypeW(WideText(root));
    if (type == DRIVE_REMOTE) volumes.append({root, TVolumeKind::Network});
    if (type == DRIVE_REMOVABLE || type == DRIVE_CDROM) volumes.append({root, TVolumeKind::Removable});
  }
  return volumes;
}

QString VolumeRootOf(const QString& path) {
  if (!IsAbsolutePath(path)) return {};
  const QString root = path.left(1).toUpper() + QStringLiteral(":\\");
  return GetDriveTypeW(WideText(root)) == DRIVE_NO_ROOT_DIR ? QString() : root;
}
