// A treemap of folders: a box that is parted among them, so that area is size, everywhere in the picture by
// the same measure. Pure functions; lengths are in pixels, from the upper left corner.
//
// How a picture is made: LayOutMap lays the whole tree out by a smallest tile (TMapMaker in the .cpp), and
// again by a larger one while there are too many; PartBox parts one box among sizes; LabelMap then puts names
// on it. HtmlPage.cpp draws what they give. Bytes are exact up to the boxes, which are doubles.
#pragma once

#include "scan/FolderTree.h"

#include <QStringList>

#include <span>
#include <vector>

struct TMapBox {
  double X = 0;
  double Y = 0;
  double Width = 0;
  double Height = 0;

  [[nodiscard]] double Area() const { return Width * Height; }
  [[nodiscard]] bool Meets(const TMapBox& other) const {
    return X < other.X + other.Width && other.X < X + Width && Y < other.Y + other.Height &&
           other.Y < Y + Height;
  }
};

// A box for each size, in their order, as close to squares as rows allow; together they fill the box. The
// sizes come largest first and are more than 0.
[[nodiscard]] std::vector<TMapBox> PartBox(TMapBox box, std::span<const quint64> sizes);

// What lies in a folder, but for the folders in it that have a box of their own, and is of one kind.
struct TMapTile {
  TMapBox Box;
  int Folder = 0;
  int Kind = TALLYSCOPE_OTHER;
  bool Mixed = false;  // with what of other kinds was too little for a tile
  quint64 Bytes = 0;
};

struct TMapFolder {
  TMapBox Box;
  int Folder = 0;
  int Top = 0;    // the folder, or the one above it that holds it and nothing else
  int Level = 0;  // of boxes in boxes; the whole picture has 0
};

struct TMap {
  std::vector<TMapTile> Tiles;      // fill the picture
  std::vector<TMapFolder> Folders;  // each behind the one that it lies in
};

// At most so many tiles: what would be smaller than a share of the area that is found for that is drawn as
// part of the folder that it lies in. An empty tree, or one without bytes, gives nothing.
[[nodiscard]] TMap LayOutMap(const TFolderTree& tree, double width, double height, size_t mostTiles);

// A folder's name in the picture.
struct TMapLabel {
  TMapBox Box;
  int Folder = 0;
  int Level = 0;
  QString Text;
  QString Size;  // empty if there is no room for it
};

// Names of folders at the upper left of their boxes, each below those of the folders around it, where at
// least the beginning of the name fits.
[[nodiscard]] std::vector<TMapLabel> LabelMap(const TFolderTree& tree, const TMap& map);

// Several trees as one, whose first folder holds them and has no name; each one's first folder is named after
// its path.
[[nodiscard]] TFolderTree JoinTrees(const QStringList& paths, std::span<const TFolderTree> trees);

// The names from the folder `top` down to `folder`; from the first folder on the full path.
[[nodiscard]] QString PathInTree(const TFolderTree& tree, int folder, int top = 0);
