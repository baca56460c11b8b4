#include "volindex/readers/ByteSource.h"

#include "volindex/readers/DiskBytes.h"

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace volindex {

namespace {

class TDescriptorSource : public TByteSource {
 public:
  TDescriptorSource(int descriptor, uint64_t size) : FDescriptor(descriptor), FSize(size) {}
  ~TDescriptorSource() override { ::close(FDescriptor); }
  TDescriptorSource(const TDescriptorSource&) = delete;
  TDescriptorSource& operator=(const TDescriptorSource&) = delete;

  bool ReadAt(uint64_t offset, std::span<std::byte> target) const override {
    if (!Fits(offset, target.size(), FSize)) return false;
    while (!target.empty()) {
      const ssize_t got = ::pread(FDescriptor, target.data(), target.size(), static_cast<off_t>(offset));
      if (got < 0 && errno == EINTR) continue;
      if (got <= 0) return false;
      target = target.subspan(static_cast<size_t>(got));
      offset += static_cast<uint64_t>(got);
    }
    return true;
  }

  uint64_t Size() const override { return FSize; }

 private:
  int FDescriptor;
  uint64_t FSize;
};

bool SizeOf(int descriptor, uint64_t& size) {
  struct stat facts {};
  if (::fstat(descriptor, &facts) != 0) return false;
  if (S_ISBLK(facts.st_mode)) return ::ioctl(descriptor, BLKGETSIZE64, &size) == 0;
  size = static_cast<uint64_t>(facts.st_size);
  return S_ISREG(facts.st_mode);
}

}  // namespace

std::unique_ptr<TByteSource> OpenByteSource(const std::string& path) {
  // Not blocking: to open a pipe or a drive without a medium must not wait.
  const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (descriptor < 0) return nullptr;
  uint64_t size = 0;
  if (SizeOf(descriptor, size)) return std::make_unique<TDescriptorSource>(descriptor, size);
  ::close(descriptor);
  return nullptr;
}

}  // namespace volindex
