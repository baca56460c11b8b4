// Entries of open folders, as the calls that act on files name them, and renames that replace nothing.
#pragma once

#include "platform/FileActions.h"
#include "platform/posix/FileDescriptor.h"

#include <sys/stat.h>
#include <cerrno>
#include <initializer_list>
#include <optional>

// One entry by the descriptor of its folder, which the TOpenFolder holds, and its name there.
struct TEntryPlace {
  int Folder = -1;
  QByteArray Name;
};

// Nothing for a folder that is not open and for a name that is not that of one entry, or whose text does not
// come back from its bytes: such a name could be another entry's.
[[nodiscard]] std::optional<TEntryPlace> PlaceOf(const TOpenFolder& folder, const QString& name);

// The status of the entry itself.
[[nodiscard]] std::optional<struct stat> StatusOf(const TEntryPlace& place);

// Where an open file lies now, without any link in it; nothing if the kernel can't tell.
[[nodiscard]] std::optional<QByteArray> TruePath(int descriptor);

// What a file still is after it got another name.
struct TFileIdentity {
  explicit TFileIdentity(const struct stat& status)
      : Device(status.st_dev),
        Inode(status.st_ino),
        Size(status.st_size),
        Seconds(status.st_mtim.tv_sec),
        Nanoseconds(status.st_mtim.tv_nsec) {}
  bool operator==(const TFileIdentity&) const = default;

  dev_t Device;
  ino_t Inode;
  off_t Size;
  time_t Seconds;
  long Nanoseconds;
};

// A name that no entry has, ".tallyscope-<16 digits>.part".
[[nodiscard]] QByteArray TemporaryName();

// Gives the entry another name unless that is taken, whatever the file system: 0, or the error's number, and
// then nothing has changed.
[[nodiscard]] int RenameNoReplace(const TEntryPlace& from, const TEntryPlace& to);

// Removes the entry only if it is this file. What took its name meanwhile stays.
[[nodiscard]] bool RemoveIfStill(const TEntryPlace& place, const TFileIdentity& identity);

// Calls again what a signal broke off.
template <typename TCall>
auto Retried(const TCall& call) {
  for (;;) {
    const auto result = call();
    if (result != -1 || errno != EINTR) return result;
  }
}

// All bytes, whatever the system takes at a time.
[[nodiscard]] bool WriteAll(int file, QByteArrayView bytes);

// True if the last error is one of these.
[[nodiscard]] inline bool ErrorIsOneOf(std::initializer_list<int> errors) {
  for (const int error : errors) {
    if (errno == error) return true;
  }
  return false;
}
