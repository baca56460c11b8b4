// Lists the entries of one folder: name, attribute bits, 64-bit length, time of the last change, one entry at
// a time, in the order in which the file system gives them. Hidden and system entries are included; "." and
// ".." are not.
//
// Linux: an entry's attributes come from one status call relative to the open folder. A symbolic link is a
// plain entry of its own length with kAttributeReparse and is never a folder. Devices, sockets and pipes
// have kAttributeSystem and length 0. An entry that disappears while it is listed is left out.
//
// Windows: attributes and length are the ones of the listing, with bits besides those below. A junction or a
// symbolic link to a folder is a folder with kAttributeReparse and can be listed; see ConfineTo.
#pragma once

#include <QString>

#include <memory>

enum TFileAttribute : unsigned {
  kAttributeReadOnly = 0x01,  // Linux: not writable by its owner
  kAttributeHidden = 0x02,    // Linux: the name begins with a dot
  kAttributeSystem = 0x04,    // Linux: device, socket, pipe
  kAttributeDirectory = 0x10,
  kAttributeReparse = 0x400,  // symbolic link; on Windows also a junction and other reparse points
};

struct TFoundFile {
  QString Name;
  unsigned Attributes = 0;  // bits of TFileAttribute
  quint64 Size = 0;         // bytes; 0 for a folder
  // The last change of the content, in milliseconds since the beginning of 1970 in UTC; before it below 0.
  qint64 Modified = 0;
  bool IsFolderLink =
      false;  // Windows: a folder that may be a junction or a symbolic link, not kept in a cloud

  [[nodiscard]] bool IsDirectory() const { return (Attributes & kAttributeDirectory) != 0; }
};

// One enumeration at a time per object; the object keeps its buffers from folder to folder, so a walk
// uses one object throughout. Not shared between threads. Blocks on the file system.
class TFileEnumeration {
 public:
  TFileEnumeration();
  ~TFileEnumeration();
  TFileEnumeration(const TFileEnumeration&) = delete;
  TFileEnumeration& operator=(const TFileEnumeration&) = delete;

  // From now on only folders on the same mounted file system as root list their entries; any other folder
  // is an empty one. So a walk counts nothing twice, never leaves its volume and comes to an end. Linux:
  // parts of that file system that are mounted side by side, as subvolumes are, belong to it; what shows a
  // part a second time does not. An empty root lifts the confinement, on Linux also one that can't be opened.
  //
  // Windows: what leads elsewhere is a link that this object has listed since. It is entered like any folder
  // if it leads to a folder of root's volume that lies neither in nor above root or the folder of a link that
  // was entered already; any other link is an empty folder.
  void ConfineTo(const QString& root);

  // From now on confined as the other object is, and what one of them has listed or entered holds for both.
  // Both may then be used at the same time, each by its own thread, until one is confined anew.
  void ConfineLike(const TFileEnumeration& other);

  // From now on a folder among the entries may come with kAttributeDirectory as its only attribute and
  // without a time, which saves a status call for each where the listing itself tells what is a folder.
  void SkipFolderDetails();

  // Opens the folder and gives its first entry. False if it can't be opened or holds nothing; on Linux a
  // folder on a pseudo file system (proc, sysfs, cgroup, ...) holds nothing. The path may be of any length
  // and may end in the delimiter. Closes what was open.
  [[nodiscard]] bool First(const QString& folder, TFoundFile& found);

  // The next entry; false at the end or on a read error.
  [[nodiscard]] bool Next(TFoundFile& found);

  void Close();

 private:
  class TImpl;
  std::unique_ptr<TImpl> FImpl;
};
