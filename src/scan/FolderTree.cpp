// From all folders of a path to those worth a place: TLargestFolders chooses, MakeFolderTree gives the chosen
// ones their places, AddContents gives what lies in every other folder to the nearest one above that has one.
// It costs a few passes over the folders and at most 1,500 names; those of all others are never asked for.
#include "scan/FolderTree.h"

#include "platform/Paths.h"

#include <QHash>
#include <QStringView>

#include <algorithm>
#include <numeric>

namespace {

constexpr int kNoPlace = -1;

// The numbers of the folders that get a place: the largest, each behind the one that it lies in, which is no
// smaller.
class TLargestFolders {
 public:
  explicit TLargestFolders(const std::vector<TGatheredFolder>& gathered)
      : FGathered(gathered), FDepths(gathered.size(), 0) {}

  [[nodiscard]] std::vector<quint32> Choose() {
    const quint64 smallest = std::max<quint64>(FGathered[0].Total / kSmallestTreePart, 1);
    std::vector<quint32> chosen;
    for (quint32 folder = 1; folder < FGathered.size(); ++folder)
      if (FGathered[folder].There && FGathered[folder].Total >= smallest) chosen.push_back(folder);
    for (const quint32 folder : chosen)
      FindDepth(folder);
    const auto before = [this](quint32 a, quint32 b) {
      if (FGathered[a].Total != FGathered[b].Total) return FGathered[a].Total > FGathered[b].Total;
      return FDepths[a] != FDepths[b] ? FDepths[a] < FDepths[b] : a < b;
    };
    const size_t count = std::min(chosen.size(), kMostTreeFolders - 1);
    std::partial_sort(chosen.begin(), chosen.begin() + static_cast<std::ptrdiff_t>(count), chosen.end(),
                      before);
    chosen.resize(count);
    return chosen;
  }

 private:
  // Climbs to a folder whose depth is known; 0 is the scanned one's alone.
  void FindDepth(quint32 folder) {
    FPath.clear();
    for (; folder != 0 && FDepths[folder] == 0; folder = FGathered[folder].Parent)
      FPath.push_back(folder);
    quint32 depth = FDepths[folder];
    for (auto below = FPath.rbegin(); below != FPath.rend(); ++below)
      FDepths[*below] = ++depth;
  }

  const std::vector<TGatheredFolder>& FGathered;
  std::vector<quint32> FDepths;
  std::vector<quint32> FPath;
};

void Add(const TKindSizes& sizes, TKindSizes& sum) {
  std::transform(sizes.begin(), sizes.end(), sum.begin(), sum.begin(), std::plus());
}

// Gives what lies in each folder to the nearest one above it, or itself, that has a place.
void AddContents(const std::vector<TGatheredFolder>& gathered,
                 const std::function<TKindSizes(quint32 folder)>& ownOf, std::vector<int>& places,
                 TFolderTree& tree) {
  std::vector<quint32> path;
  for (quint32 folder = 0; folder < gathered.size(); ++folder) {
    if (!gathered[folder].There) continue;
    quint32 above = folder;
    for (path.clear(); places[above] == kNoPlace; above = gathered[above].Parent)
      path.push_back(above);
    for (const quint32 below : path)
      places[below] = places[above];
    Add(ownOf(folder), tree.Folders[static_cast<size_t>(places[folder])].Own);
  }
}

// The folders in which a walk has found files, and those on the way to them.
class TWalkedFolders {
 public:
  explicit TWalkedFolders(const QString& root) : FRootLength(root.size()) { FNumbers.insert({}, 0); }

  void Add(const TFileBlock& files) {
    TKindSizes& own = FOwn[NumberOf(QStringView(files.Path()).mid(FRootLength))];
    for (int i = 0; i < files.Count(); ++i) {
      const QStringView name = files.NameOf(i);
      const int kind = Tallyscope_GetKindOfName(reinterpret_cast<const char16_t*>(name.utf16()),
                                                static_cast<quint32>(name.size()));
      own[static_cast<size_t>(kind)] += files.SizeOf(i);
    }
  }

  [[nodiscard]] TFolderTree MakeTree() {
    for (size_t folder = FFolders.size(); folder-- > 0;) {
      const TKindSizes& own = FOwn[folder];
      FFolders[folder].Total += std::accumulate(own.begin(), own.end(), quint64{0});
      if (folder != 0) FFolders[FFolders[folder].Parent].Total += FFolders[folder].Total;
    }
    return MakeFolderTree(
        FFolders, [this](quint32 folder) { return FNames[folder].toString(); },
        [this](quint32 folder) { return FOwn[folder]; });
  }

 private:
  // Of a path below the root with its delimiter. A walk tells a folder's files one after the other.
  quint32 NumberOf(QStringView path) {
    if (path == FLastPath) return FLast;
    FLastPath = path;
    std::vector<QStringView> missing;
    auto found = FNumbers.constFind(path);
    for (; found == FNumbers.constEnd(); found = FNumbers.constFind(path)) {
      missing.push_back(path);
      path = path.left(path.chopped(1).lastIndexOf(PathDelim) + 1);
    }
    FLast = *found;
    for (auto below = missing.rbegin(); below != missing.rend(); ++below)
      FLast = AddFolder(*below, path.size(), FLast), path = *below;
    return FLast;
  }

  quint32 AddFolder(QStringView path, qsizetype aboveLength, quint32 parent) {
    const auto number = static_cast<quint32>(FFolders.size());
    FFolders.push_back({true, parent, 0});
    FOwn.emplace_back();
    FNames.push_back(path.mid(aboveLength).chopped(1));
    FNumbers.insert(path, number);
    return number;
  }

  const qsizetype FRootLength;
  std::vector<TGatheredFolder> FFolders{{true, 0, 0}};
  std::vector<TKindSizes> FOwn{{}};
  std::vector<QStringView> FNames{{}};  // in the paths of the files' blocks
  QHash<QStringView, quint32> FNumbers;
  QStringView FLastPath;
  quint32 FLast = 0;
};

QString NameOfFolder(quint32 folder) {
  std::vector<char16_t> name(static_cast<size_t>(kLongestPath));
  while (Tallyscope_GetFolderName(folder, name.data(), static_cast<quint32>(name.size())) == 0) {
    // No folder's name is as long; the bound is for a number that has no name.
    if (name.size() > 0xFFFF) return {};
    name.resize(2 * name.size());
  }
  return QString::fromUtf16(name.data());
}

TKindSizes OwnOfFolder(quint32 number) {
  TTallyscopeFolder folder{};
  (void)Tallyscope_GetFolder(number, &folder);
  TKindSizes own;
  std::ranges::copy(folder.Own, own.begin());
  return own;
}

}  // namespace

TFolderTree MakeFolderTree(const std::vector<TGatheredFolder>& gathered,
                           const std::function<QString(quint32 folder)>& nameOf,
                           const std::function<TKindSizes(quint32 folder)>& ownOf) {
  TFolderTree tree;
  if (gathered.empty()) return tree;
  std::vector<int> places(gathered.size(), kNoPlace);
  places[0] = 0;
  tree.Folders.push_back({{}, 0, gathered[0].Total, {}});
  for (const quint32 folder : TLargestFolders(gathered).Choose()) {
    places[folder] = static_cast<int>(tree.Folders.size());
    tree.Folders.push_back({nameOf(folder), places[gathered[folder].Parent], gathered[folder].Total, {}});
  }
  AddContents(gathered, ownOf, places, tree);
  return tree;
}

TFolderTree TreeOfVolume() {
  std::vector<TGatheredFolder> gathered(Tallyscope_GetFolderEnd());
  TTallyscopeFolder folder{};
  for (quint32 number = 0; number < gathered.size(); ++number) {
    if (Tallyscope_GetFolder(number, &folder) != 0) gathered[number] = {true, folder.Parent, folder.Total};
  }
  return MakeFolderTree(gathered, NameOfFolder, OwnOfFolder);
}

TFolderTree TreeOfFiles(const QString& root, const TFileList& files) {
  TWalkedFolders folders(root);
  for (const TFileBlock& block : files.Blocks())
    folders.Add(block);
  return folders.MakeTree();
}
