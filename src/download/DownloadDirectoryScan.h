// Finds the folders into which known applications download: the two browsers that the code knows and all the
// applications of the catalogue beside the program (download/DownloadApplication.h).
#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

// A folder and the names of the applications that download into it or into a folder inside it.
struct TDownloadLocation {
  QString Directory;
  QStringList Applications;
};

// One object per scan, on one thread. Nothing is kept from one to the next.
class TDownloadDirectoryScan {
 public:
  // Each is a folder that was there when it was added and ends in the delimiter (see AddDirectory); none lies
  // inside another.
  QStringList FDirectories;

  // Fills FDirectories anew. A missing or broken catalogue leaves what the browsers gave; a browser or an
  // application whose settings can't be read is left out. Blocks on the file system.
  void ScanDirectories();
  void ScanDirectories(const QString& catalogueFile);

  // FDirectories, each with its applications in the order in which they were looked at.
  [[nodiscard]] std::vector<TDownloadLocation> Locations() const;

  // Keeps the folders below one of the locations only, and of folders inside each other the outer one. A
  // location ends where a fixed volume begins below it; the roots of these volumes end in the delimiter.
  void FilterByLocations(const QStringList& locations);
  void FilterByLocations(const QStringList& locations, const QStringList& volumeRoots);

  // Adds a folder that exists, with the delimiter at its end unless the last byte of its text in the ANSI
  // code page is one already. The last entry that holds it or lies inside it decides: a folder that holds it
  // keeps it out; one inside it goes.
  static void AddDirectory(QStringList& target, const QString& dir);

 private:
  struct TFound {
    QString Application;
    QString Directory;
  };

  void AddFound(const std::function<TFound()>& find);

  std::vector<TFound> FFound;  // all folders that are there, nested or not
};

// The download folders on these paths.
[[nodiscard]] QStringList FindDownloadLocations(const QStringList& paths);
// The same with their applications.
[[nodiscard]] std::vector<TDownloadLocation> FindDownloads(const QStringList& paths);
