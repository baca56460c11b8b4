#include "platform/FileEnumeration.h"

#include "platform/FileTests.h"
#include "platform/Paths.h"
#include "platform/windows/FileEntry.h"
#include "platform/windows/Handle.h"

#include <QSet>
#include <QStringList>

#include <algorithm>
#include <cwchar>
#include <mutex>

namespace {

bool IsDotOrDotDot(const wchar_t* name) {
  return name[0] == L'.' && (name[1] == L'\0' || (name[1] == L'.' && name[2] == L'\0'));
}

// The system counts in units of 100 nanoseconds from the year 1601 on.
qint64 MillisecondsOf(const FILETIME& time) {
  constexpr qint64 kFrom1601To1970 = 11'644'473'600'000;
  const quint64 units = quint64{time.dwHighDateTime} << 32 | time.dwLowDateTime;
  return static_cast<qint64>(units / 10'000) - kFrom1601To1970;
}

// A junction or a symbolic link: its name stands for a folder elsewhere. Other reparse points, as those of
// files kept in a cloud, are the folder itself. A file system that tells no kind may mean any.
bool IsLinkToFolder(const WIN32_FIND_DATAW& entry) {
  constexpr DWORD kBoth = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
  return (entry.dwFileAttributes & kBoth) == kBoth &&
         (entry.dwReserved0 == 0 || IsReparseTagNameSurrogate(entry.dwReserved0));
}

bool IsWithin(const QString& folder, const QString& top) {
  return folder.startsWith(top, Qt::CaseInsensitive);
}

// The top of the volume that holds a real folder.
QString VolumeOf(const QString& realFolder) {
  const bool isShare = realFolder.startsWith(QLatin1String("\\\\?\\UNC\\"));
  return realFolder.section(PathDelim, 0, isShare ? 5 : 3) + PathDelim;
}

// Tells which links a confined walk may follow. Any thread.
class TConfinement {
 public:
  explicit TConfinement(const QString& root) : FReached{RealFolder(root)} {}
  void NoteLink(const QString& path) {
    const std::lock_guard lock(FLock);
    FLinks.insert(path);
  }
  [[nodiscard]] bool MayEnter(const QString& folder);

 private:
  [[nodiscard]] bool IsNew(const QString& real) const;

  // Guards both; held while a link's real folder is asked for, so that of two links to one folder only one is
  // entered.
  std::mutex FLock;
  QStringList FReached;  // the real folders whose trees the walk reaches, the root's first
  QSet<QString> FLinks;
};

bool TConfinement::IsNew(const QString& real) const {
  if (real.isEmpty() || FReached.front().isEmpty() || !IsWithin(real, VolumeOf(FReached.front())))
    return false;
  return std::none_of(FReached.begin(), FReached.end(), [&](const QString& reached) {
    return IsWithin(real, reached) || IsWithin(reached, real);
  });
}

bool TConfinement::MayEnter(const QString& folder) {
  const std::lock_guard lock(FLock);
  if (FLinks.isEmpty() || !FLinks.contains(ExcludeTrailingPathDelimiter(folder))) return true;
  const QString real = RealFolder(folder);
  if (!IsNew(real)) return false;
  FReached << real;
  return true;
}

}  // namespace

class TFileEnumeration::TImpl {
 public:
  void ConfineTo(const QString& root) {
    FConfinement = root.isEmpty() ? nullptr : std::make_shared<TConfinement>(root);
  }
  void ConfineLike(const TImpl& other) { FConfinement = other.FConfinement; }
  bool First(const QString& folder, TFoundFile& found);
  bool Next(TFoundFile& found);
  void Close() { FSearch.reset(); }

 private:
  [[nodiscard]] bool NextEntry();
  [[nodiscard]] bool TakeOrNext(TFoundFile& found);

  std::shared_ptr<TConfinement> FConfinement;  // null: not confined
  QString FFolder;                             // with its delimiter
  TSearchHandle FSearch;
  WIN32_FIND_DATAW FEntry;
};

bool TFileEnumeration::TImpl::First(const QString& folder, TFoundFile& found) {
  Close();
  if (folder.isEmpty() || (FConfinement && !FConfinement->MayEnter(folder))) return false;
  FFolder = IncludeTrailingPathDelimiter(folder);
  FSearch = OpenSearch(FFolder, FEntry);
  return FSearch && TakeOrNext(found);
}

bool TFileEnumeration::TImpl::Next(TFoundFile& found) {
  return NextEntry() && TakeOrNext(found);
}

bool TFileEnumeration::TImpl::NextEntry() {
  if (FSearch && FindNextFileW(FSearch.get(), &FEntry) != 0) return true;
  Close();
  return false;
}

bool TFileEnumeration::TImpl::TakeOrNext(TFoundFile& found) {
  while (IsDotOrDotDot(FEntry.cFileName)) {
    if (!NextEntry()) return false;
  }
  // Keeps the memory of the name before.
  found.Name.setUnicode(reinterpret_cast<const QChar*>(FEntry.cFileName),
                        static_cast<qsizetype>(std::wcslen(FEntry.cFileName)));
  found.Attributes = FEntry.dwFileAttributes;
  found.Size = SizeOf(FEntry);
  found.Modified = MillisecondsOf(FEntry.ftLastWriteTime);
  found.IsFolderLink = IsLinkToFolder(FEntry);
  if (found.IsFolderLink && FConfinement) FConfinement->NoteLink(FFolder + found.Name);
  return true;
}

TFileEnumeration::TFileEnumeration() : FImpl(std::make_unique<TImpl>()) {}

TFileEnumeration::~TFileEnumeration() = default;

void TFileEnumeration::ConfineTo(const QString& root) {
  FImpl->ConfineTo(root);
}

void TFileEnumeration::ConfineLike(const TFileEnumeration& other) {
  FImpl->ConfineLike(*other.FImpl);
}

// The details come with the listing.
void TFileEnumeration::SkipFolderDetails() {}

bool TFileEnumeration::First(const QString& folder, TFoundFile& found) {
  return FImpl->First(folder, found);
}

bool TFileEnumeration::Next(TFoundFile& found) {
  return FImpl->Next(found);
}

void TFileEnumeration::Close() {
  FImpl->Close();
}
