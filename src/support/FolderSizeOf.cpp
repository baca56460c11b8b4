// FolderSizeOf: the sum over a tree, with a list of the folders to come in place of recursion.
#include "platform/FileEnumeration.h"
#include "platform/FileTests.h"
#include "platform/Paths.h"
#include "support/Korvel_Routine_New.h"

#include <optional>

namespace {

// Hidden, system, read-only and linked folders count for nothing.
bool IsEntered(const QString& name, unsigned attributes) {
  return attributes == kAttributeDirectory && !name.startsWith(u'.');
}

quint64 SumBelow(const QString& root) {
  quint64 total = 0;
  TFileEnumeration enumeration;
  QStringList folders{root};  // each with its delimiter
  while (!folders.isEmpty()) {
    const QString folder = folders.takeLast();
    TFoundFile found;
    for (bool more = enumeration.First(folder, found); more; more = enumeration.Next(found)) {
      total += found.Size;
      if (IsEntered(found.Name, found.Attributes)) folders.append(folder + found.Name + PathDelim);
    }
  }
  return total;
}

}  // namespace

quint64 FolderSizeOf(const QString& pathOrMask) {
  const QString name = ExtractFileName(pathOrMask);
  if (name == u"*.*") return SumBelow(ExtractFilePath(pathOrMask));
  const auto status = name.isEmpty() ? std::nullopt : GetFileStatus(pathOrMask);
  if (!status) return 0;
  return status->Size + (IsEntered(name, status->Attributes) ? SumBelow(pathOrMask + PathDelim) : 0);
}
