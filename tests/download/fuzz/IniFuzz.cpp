// The input is an ini file, for the private-profile service and for the ini file held in memory.
#include "platform/PrivateProfile.h"
#include "support/ExtIniFiles.h"

#include <sys/mman.h>
#include <unistd.h>
#include <cstdlib>

namespace {

// A file in memory with these bytes, under the name that it has for its own process.
class TMemoryFile {
 public:
  TMemoryFile(const void* data, std::size_t size) : FDescriptor(memfd_create("ini", MFD_CLOEXEC)) {
    if (write(FDescriptor, data, size) != static_cast<ssize_t>(size)) std::abort();
  }
  ~TMemoryFile() { close(FDescriptor); }
  TMemoryFile(const TMemoryFile&) = delete;
  TMemoryFile& operator=(const TMemoryFile&) = delete;

  [[nodiscard]] QString Path() const { return u"/proc/self/fd/"_qs + QString::number(FDescriptor); }

 private:
  const int FDescriptor;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const TMemoryFile file(data, size);
  if (ReadPrivateProfile(file.Path(), u"s"_qs, u"k"_qs, {}).size() > static_cast<qsizetype>(size))
    std::abort();

  TExtIniFile ini;
  ini.LoadFromFile(file.Path());
  QStringList sections;
  ini.ReadSections(sections);
  for (const QString& section : sections) {
    QStringList keys;
    ini.ReadSection(section, keys);
    for (const QString& key : keys)
      if (ini.ReadString(section, key, {}).size() > static_cast<qsizetype>(size)) std::abort();
  }
  return 0;
}
