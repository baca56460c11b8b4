// The input is an ini file, for the private-profile service and for the ini file held in memory.
#include "platform/SystemSettings.h"
#include "support/ExtIniFiles.h"

#include <sys/mman.h>
#include <unistd.h>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const int memory = memfd_create("ini", MFD_CLOEXEC);
  const QString path = u"/proc/self/fd/"_qs + QString::number(memory);
  if (ftruncate(memory, 0) != 0 || pwrite(memory, data, size, 0) != static_cast<ssize_t>(size)) std::abort();
  const auto limit = static_cast<qsizetype>(size);
  if (ReadPrivateProfile(path, u"s"_qs, u"k"_qs, {}).size() > limit) std::abort();
  TExtIniFile ini;
  ini.LoadFromFile(path);
  QStringList sections, keys;
  ini.ReadSections(sections);
  for (const QString& section : sections) {
    ini.ReadSection(section, keys);
    for (const QString& key : keys)
      if (ini.ReadString(section, key, {}).size() > limit) std::abort();
  }
  return 0;
}
