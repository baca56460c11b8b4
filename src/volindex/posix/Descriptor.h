// An open file or folder, closed at the end.
#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <string>
#include <utility>

namespace volindex {

class TDescriptor {
 public:
  // A folder; below 0 when it can't be opened.
  explicit TDescriptor(const std::string& folder)
      : FNumber(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {}
  ~TDescriptor() {
    if (FNumber >= 0) ::close(FNumber);
  }
  TDescriptor(TDescriptor&& other) noexcept : FNumber(std::exchange(other.FNumber, -1)) {}
  TDescriptor& operator=(TDescriptor&&) = delete;

  [[nodiscard]] int Number() const { return FNumber; }

 private:
  int FNumber;
};

}  // namespace volindex
