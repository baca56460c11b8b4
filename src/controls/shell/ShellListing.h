// What a folder or the computer level holds, listed by a thread that nobody waits for.
//
// The computer level lists the fixed volumes, the removable and network ones and the home folder, in this
// order; a folder its subfolders and then its files, both by name. Names of any bytes come as they are.
#pragma once

#include "platform/Messages.h"

#include <QString>

#include <functional>
#include <memory>
#include <vector>

enum class TShellKind { FixedVolume, RemovableVolume, NetworkVolume, Home, Folder, File };

struct TShellEntry {
  TShellKind Kind = TShellKind::File;
  QString Name;         // as it is shown
  QString Path;         // a volume's with its delimiter
  quint64 Size = 0;     // bytes, of a file
  qint64 Modified = 0;  // milliseconds since the beginning of 1970, of a file or folder
  QString SizeText;     // of a file
  QString DateText;     // of a file or folder, in the short form of the user's locale

  [[nodiscard]] bool IsFolder() const { return Kind != TShellKind::File; }
};

// The order of rows: true if the first comes before the second. Equal only for entries of one path.
[[nodiscard]] bool ComesBefore(const TShellEntry& a, const TShellEntry& b);

// One listing at a time. Main thread.
class TShellListing {
 public:
  TShellListing();
  // Waits a tenth of a second at most for the thread.
  ~TShellListing();
  TShellListing(const TShellListing&) = delete;
  TShellListing& operator=(const TShellListing&) = delete;

  // A listing that takes long tells some entries first, in their order, so that there is something to see.
  std::function<void(std::vector<TShellEntry> entries)> OnFirst;
  // All entries; readable is false for a folder that is not there or can't be opened.
  std::function<void(std::vector<TShellEntry> entries, bool readable)> OnDone;

  // The listing before is abandoned: it tells nothing any more. An empty path is the computer level. Returns
  // at once.
  void Start(const QString& path);
  void Abandon();

 private:
  class TJob;

  void Take();

  TMessageWindow FWindow;
  std::shared_ptr<TJob> FJob;  // with its thread; null if none is under way
};
