#include "platform/posix/VolumeLabels.h"

#include "platform/FileEnumeration.h"
#include "platform/Paths.h"

#include <sys/stat.h>

namespace {

QByteArray UnescapeLabel(const QByteArray& name) {
  QByteArray label;
  for (qsizetype i = 0; i < name.size(); ++i) {
    bool isHex = false;
    const bool escaped = name.mid(i, 2) == "\\x" && i + 4 <= name.size();
    const int value = escaped ? name.mid(i + 2, 2).toInt(&isHex, 16) : 0;
    label += isHex ? static_cast<char>(value) : name[i];
    if (isHex) i += 3;
  }
  return label;
}

}  // namespace

QString VolumeLabel(dev_t device, const QByteArray& labelFolder) {
  TFileEnumeration links;
  TFoundFile link;
  for (bool more = links.First(NameFromBytes(labelFolder), link); more; more = links.Next(link)) {
    const QByteArray name = NameToBytes(link.Name);
    struct stat status;
    if (stat(labelFolder + '/' + name, &status) == 0 && status.st_rdev == device)
      return NameFromBytes(UnescapeLabel(name));
  }
  return {};
}
