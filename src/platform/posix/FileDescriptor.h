// An open file descriptor that closes itself, and the opening of paths of any length.
#pragma once

#include <QByteArray>

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
