#include "report/Treemap.h"

#include "platform/Paths.h"
#include "report/HtmlText.h"
#include "report/TextColumns.h"
#include "support/Korvel_Routine_New.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace {

// Boxes in boxes; what lies deeper is drawn as part of the deepest.
constexpr int kDeepestLevel = 7;
constexpr double kFirstSmallest = 48;       // square pixels of the smallest tile, at first
constexpr double kSmallestFolderSide = 14;  // of a box that is parted among folders

// The longest side of the boxes of a row to their shortest, at worst: of a row along a side of that length
// the one or the other end of its areas decides.
double WorstRatio(double areas, double largest, double smallest, double side) {
  const double row = areas * areas;
  const double square = side * side;
  return std::max(square * largest / row, row / (square * smallest));
}

// How many of the sizes make the next row: more, as long as that does not make its boxes longer.
//
// Largest first, the ratio of a row falls while it gets more boxes and rises from some point on, so the first
// rise ends the search: each size is looked at once or twice in all.
size_t RowLength(std::span<const quint64> sizes, double scale, double side) {
  double areas = static_cast<double>(sizes[0]) * scale;
  double worst = WorstRatio(areas, areas, areas, side);
  for (size_t count = 1; count < sizes.size(); ++count) {
    const double area = static_cast<double>(sizes[count]) * scale;
    const double next = WorstRatio(areas + area, static_cast<double>(sizes[0]) * scale, area, side);
    if (next > worst) return count;
    worst = next;
    areas += area;
  }
  return sizes.size();
}

quint64 Sum(const TKindSizes& sizes) {
  return std::accumulate(sizes.begin(), sizes.end(), quint64{0});
}

// Lays one tree out, with a given smallest tile each time.
class TMapMaker {
 public:
  // Children stand behind their parents, so one walk from the last to the first sums all up.
  TMapMaker(const TFolderTree& tree, double scale)
      : FTree(tree), FScale(scale), FBelow(tree.Folders.size()), FChildren(FBelow.size()) {
    for (size_t folder = FBelow.size(); folder-- > 0;) {
      const TFolderTree::TFolder& facts = tree.Folders[folder];
      const auto parent = static_cast<size_t>(facts.Parent);
      for (size_t kind = 0; kind < facts.Own.size(); ++kind)
        FBelow[folder][kind] += facts.Own[kind];
      if (folder == 0) break;
      for (size_t kind = 0; kind < facts.Own.size(); ++kind)
        FBelow[parent][kind] += FBelow[folder][kind];
      FChildren[parent].push_back(static_cast<int>(folder));
    }
  }

  // By a stack of its own and not by calls: a folder is placed before those in it, as TMap promises.
  [[nodiscard]] TMap Make(const TMapBox& box, double smallest) {
    FSmallest = smallest;
    Place({box, 0, 0, 0});
    while (!FOpen.empty()) {
      const TMapFolder next = FOpen.back();
      FOpen.pop_back();
      Place(next);
    }
    return std::exchange(FMap, {});
  }

 private:
  // A folder in the box, or what is of one kind.
  struct TPart {
    quint64 Bytes = 0;
    int Folder = -1;
    int Kind = TALLYSCOPE_OTHER;
    bool Mixed = false;
  };

  [[nodiscard]] double AreaOf(quint64 bytes) const { return static_cast<double>(bytes) * FScale; }

  // A folder with one folder in it and nothing else gives its box to that one, so that no box lies within
  // another of its size; the label tells both names.
  void Place(TMapFolder folder) {
    std::vector<TPart> parts = PartsOf(folder);
    while (parts.size() == 1 && parts[0].Folder >= 0) {
      folder.Folder = parts[0].Folder;
      parts = PartsOf(folder);
    }
    FMap.Folders.push_back(folder);
    std::ranges::sort(parts, std::greater(), &TPart::Bytes);
    std::vector<quint64> sizes;
    for (const TPart& part : parts)
      sizes.push_back(part.Bytes);
    const std::vector<TMapBox> boxes = PartBox(folder.Box, sizes);
    for (size_t i = 0; i < parts.size(); ++i) {
      if (parts[i].Folder >= 0)
        FOpen.push_back({boxes[i], parts[i].Folder, parts[i].Folder, folder.Level + 1});
      else
        FMap.Tiles.push_back({boxes[i], folder.Folder, parts[i].Kind, parts[i].Mixed, parts[i].Bytes});
    }
  }

  [[nodiscard]] std::vector<TPart> PartsOf(const TMapFolder& folder) const {
    std::vector<TPart> parts;
    TKindSizes own = FTree.Folders[static_cast<size_t>(folder.Folder)].Own;
    const bool roomy =
        folder.Level < kDeepestLevel && std::min(folder.Box.Width, folder.Box.Height) >= kSmallestFolderSide;
    for (const int child : FChildren[static_cast<size_t>(folder.Folder)]) {
      const TKindSizes& below = FBelow[static_cast<size_t>(child)];
      // Twice the smallest tile, as a folder with a box is to have room for more than one.
      if (const quint64 bytes = Sum(below); roomy && AreaOf(bytes) >= 2 * FSmallest)
        parts.push_back({bytes, child});
      else
        std::transform(below.begin(), below.end(), own.begin(), own.begin(), std::plus());
    }
    AddKinds(own, parts);
    return parts;
  }

  // What is too little for a tile goes to the largest tile.
  void AddKinds(const TKindSizes& own, std::vector<TPart>& parts) const {
    const auto largest = static_cast<int>(std::ranges::max_element(own) - own.begin());
    TPart rest{own[static_cast<size_t>(largest)], -1, largest};
    for (int kind = 0; kind < TALLYSCOPE_KINDS; ++kind) {
      const quint64 bytes = own[static_cast<size_t>(kind)];
      if (kind == largest || bytes == 0) continue;
      if (AreaOf(bytes) >= FSmallest) {
        parts.push_back({bytes, -1, kind});
      } else {
        rest.Bytes += bytes;
        rest.Mixed = true;
      }
    }
    if (rest.Bytes != 0) parts.push_back(rest);
  }

  const TFolderTree& FTree;
  const double FScale;   // square pixels a byte
  double FSmallest = 0;  // square pixels
  // By place in the tree: bytes by kind of all that lies below, and the folders right in it.
  std::vector<TKindSizes> FBelow;
  std::vector<std::vector<int>> FChildren;
  std::vector<TMapFolder> FOpen;
  TMap FMap;
};

// Lengths of a label for letters of 11 pixels.
constexpr double kLabelHeight = 17;
constexpr double kLabelPadding = 10;
constexpr double kLabelInset = 3;  // from the folder's edge
constexpr double kNarrowest = 40;  // text
constexpr double kSpare = 1.04;    // for bold letters
constexpr int kMostLetters = 400;  // that any label has room for

// About, and rather more: which fonts a browser has is not known.
// Pixels at the font size of the page's style.
double LetterWidth(char32_t point) {
  if (point >= 0x80 && TextColumns(QString::fromUcs4(&point, 1)) != 1) return 12;
  if (QStringView(u"ijlIt.,:;'|!()[] ").contains(QChar(static_cast<char16_t>(point)))) return 4;
  return QChar::isUpper(point) || point == U'm' || point == U'w' || point == U'@' || point == U'%' ? 8.4
                                                                                                   : 6.6;
}

double TextWidth(const QString& text) {
  double width = 0;
  for (const char32_t point : CodePoints(text))
    width += LetterWidth(point);
  return width;
}

QString Beginning(const QString& text, double room) {
  if (TextWidth(text) <= room) return text;
  QString cut;
  room -= LetterWidth(U'…');
  for (const char32_t point : CodePoints(text)) {
    room -= LetterWidth(point);
    if (room < 0) break;
    cut += QString::fromUcs4(&point, 1);
  }
  return cut + u'…';
}

// Below all labels in its way; a step down may be into the way of another.
void MoveBelow(const std::vector<TMapLabel>& labels, TMapBox& box) {
  for (auto label = labels.begin(); label != labels.end();) {
    const bool meets = label->Box.Meets(box);
    if (meets) box.Y = label->Box.Y + kLabelHeight + 1;
    label = meets ? labels.begin() : label + 1;
  }
}

}  // namespace

std::vector<TMapBox> PartBox(TMapBox box, std::span<const quint64> sizes) {
  std::vector<TMapBox> boxes;
  double left = 0;
  for (const quint64 size : sizes)
    left += static_cast<double>(size);
  const double scale = left > 0 ? box.Area() / left : 0;
  while (!sizes.empty()) {
    const bool across = box.Width < box.Height;
    const double side = across ? box.Width : box.Height;
    const size_t count = RowLength(sizes, scale, side);
    double row = 0;
    for (const quint64 size : sizes.first(count))
      row += static_cast<double>(size);
    // The row lies along the shorter side of what is left, and takes from the longer one what its sizes ask
    // for.
    const double depth = row * scale / side;
    double at = 0;
    for (const quint64 size : sizes.first(count)) {
      const double length = side * static_cast<double>(size) / row;
      boxes.push_back(across ? TMapBox{box.X + at, box.Y, length, depth}
                             : TMapBox{box.X, box.Y + at, depth, length});
      at += length;
    }
    (across ? box.Y : box.X) += depth;
    (across ? box.Height : box.Width) -= depth;
    sizes = sizes.subspan(count);
  }
  return boxes;
}

TMap LayOutMap(const TFolderTree& tree, double width, double height, size_t mostTiles) {
  if (tree.Folders.empty() || tree.Folders[0].Total == 0) return {};
  const double scale = width * height / static_cast<double>(tree.Folders[0].Total);
  TMapMaker maker(tree, scale);
  // Ends: at a tile larger than the picture, one is left. Each turn walks the tree once at most.
  for (double smallest = kFirstSmallest;; smallest *= 1.5) {
    TMap map = maker.Make({0, 0, width, height}, smallest);
    if (map.Tiles.size() <= mostTiles) return map;
  }
}

// Outer folders come first and take the upper places; an inner one whose place is taken goes below them or
// has no name.
std::vector<TMapLabel> LabelMap(const TFolderTree& tree, const TMap& map) {
  std::vector<TMapLabel> labels;
  for (const TMapFolder& folder : map.Folders) {
    TMapBox box{folder.Box.X + kLabelInset, folder.Box.Y + kLabelInset, folder.Box.Width - 2 * kLabelInset,
                kLabelHeight};
    const double room = box.Width - kLabelPadding;
    if (folder.Level == 0 || room < kNarrowest) continue;
    MoveBelow(labels, box);
    if (box.Y + kLabelHeight + kLabelInset > folder.Box.Y + folder.Box.Height) continue;
    const QString name = PathInTree(tree, folder.Folder, folder.Top).left(kMostLetters);
    const QString text = Beginning(ShownText(name), room);
    QString size = SizeToText(static_cast<qint64>(tree.Folders[static_cast<size_t>(folder.Folder)].Total));
    // A cut name has no room beside it.
    if (TextWidth(text + u' ' + size) > room) size.clear();
    box.Width =
        std::min(kLabelPadding + kSpare * TextWidth(size.isEmpty() ? text : text + u' ' + size), box.Width);
    labels.push_back({box, folder.Folder, folder.Level, text, size});
  }
  return labels;
}

TFolderTree JoinTrees(const QStringList& paths, std::span<const TFolderTree> trees) {
  TFolderTree joined;
  if (trees.size() != 1) joined.Folders.emplace_back();
  for (size_t tree = 0; tree < trees.size(); ++tree) {
    const auto first = static_cast<int>(joined.Folders.size());
    for (TFolderTree::TFolder folder : trees[tree].Folders) {
      const bool top = static_cast<int>(joined.Folders.size()) == first;
      folder.Parent = top ? 0 : folder.Parent + first;
      if (top) folder.Name = paths[static_cast<qsizetype>(tree)];
      if (top && trees.size() != 1) joined.Folders[0].Total += folder.Total;
      joined.Folders.push_back(std::move(folder));
    }
  }
  return joined;
}

QString PathInTree(const TFolderTree& tree, int folder, int top) {
  QStringList names;
  for (;; folder = tree.Folders[static_cast<size_t>(folder)].Parent) {
    if (const QString& name = tree.Folders[static_cast<size_t>(folder)].Name; !name.isEmpty())
      names.prepend(name);
    if (folder == top || folder == 0) break;
  }
  if (names.size() > 1 && names[0].endsWith(PathDelim)) names[0].chop(1);
  return names.join(PathDelim);
}
