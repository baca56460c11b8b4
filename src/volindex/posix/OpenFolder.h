// An open folder of which the system is asked, closed at the end.
#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <string>
#include <utility>

namespace volindex {

class TOpenFolder {
 public:
  // The number is below 0 when it can't be opened.
  explicit TOpenFolder(const std::string& path)
      : FNumber(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {}
  ~TOpenFolder() {
    if (FNumber >= 0) ::close(FNumber);
  }
  TOpenFolder(TOpenFolder&& other) noexcept : FNumber(std::exchange(other.FNumber, -1)) {}
  TOpenFolder& operator=(TOpenFolder&&) = delete;

  [[nodiscard]] int Number() const { return FNumber; }

 private:
  int FNumber;
};

}  // namespace volindex
