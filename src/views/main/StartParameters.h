// The program's command line as both forms read it.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

// "/scansys" and "/scandrive" as the first parameter begin a scan at once.
enum class TAutoStart { None, ScanSystem, ScanDrives };

// What the second parameter preselects, when there are exactly two.
struct TPreselection {
  std::optional<QString> Folder;      // the folder route with this folder
  std::optional<QStringList> Drives;  // check marks of the drives that hold these paths
};

// What the program prints, in UTF-8, instead of opening a window: its help or its version, when the first
// parameter asks for one of them; else empty.
[[nodiscard]] QByteArray ConsoleAnswer(const QStringList& parameters);

// The parameters without the program's name. Any thread.
class TStartParameters {
 public:
  explicit TStartParameters(QStringList parameters) : FParameters(std::move(parameters)) {}

  [[nodiscard]] int Count() const { return static_cast<int>(FParameters.size()); }
  [[nodiscard]] TAutoStart AutoStart() const;

  // The paths to scan at once: the system volume, or each later parameter that names a folder, in order.
  [[nodiscard]] QStringList AutoPaths() const;

  // Reads the list file that the second parameter may name. Blocks on the file system.
  [[nodiscard]] TPreselection Preselection() const;

 private:
  QStringList FParameters;
};
