// An open file descriptor that closes itself, the opening of paths of any length, and what the status of an
// entry says.
#pragma once

#include "platform/FileEnumeration.h"

#include <QByteArray>

#include <sys/stat.h>
#include <unistd.h>
#include <utility>

class TFileDescriptor {
 public:
  TFileDescriptor() = default;
  explicit TFileDescriptor(int descriptor) : FDescriptor(descriptor) {}
  TFileDescriptor(TFileDescriptor&& other) noexcept : FDescriptor(std::exchange(other.FDescriptor, -1)) {}
  TFileDescriptor& operator=(TFileDescriptor&& other) noexcept {
    std::swap(FDescriptor, other.FDescriptor);
    return *this;
  }
  TFileDescriptor(const TFileDescriptor&) = delete;
  TFileDescriptor& operator=(const TFileDescriptor&) = delete;
  ~TFileDescriptor() {
    if (IsOpen()) close(FDescriptor);
  }

  [[nodiscard]] bool IsOpen() const { return FDescriptor >= 0; }
  [[nodiscard]] int Get() const { return FDescriptor; }

 private:
  int FDescriptor = -1;
};

// open() with O_CLOEXEC for a path of any length: one that the system would refuse as too long is opened
// in groups of components, each relative to the one before. Not open on failure and for an empty path.
[[nodiscard]] TFileDescriptor OpenPath(const QByteArray& path, int flags);

// Bits of TFileAttribute. A link has no permissions of its own and is never read-only.
[[nodiscard]] inline unsigned AttributesOf(mode_t mode, bool hidden) {
  unsigned attributes = hidden ? unsigned{kAttributeHidden} : 0U;
  if (S_ISLNK(mode)) return attributes | kAttributeReparse;
  if ((mode & S_IWUSR) == 0) attributes |= kAttributeReadOnly;
  if (S_ISDIR(mode)) return attributes | kAttributeDirectory;
  return S_ISREG(mode) ? attributes : attributes | kAttributeSystem;
}

// The length that counts: files and links have one.
[[nodiscard]] inline quint64 LengthOf(mode_t mode, off_t size) {
  return S_ISREG(mode) || S_ISLNK(mode) ? static_cast<quint64>(size) : 0;
}
