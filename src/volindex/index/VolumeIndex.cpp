#include "volindex/index/VolumeIndex.h"

#include <algorithm>

namespace volindex {

// A look at each folder: asked rarely, and so no second index is kept.
std::optional<TFolderId> TVolumeIndex::FindChild(TFolderId parent, std::string_view name) const {
  for (TFolderId id = 1; id < FCounted.size(); ++id) {
    if (FCounted[id] && FFolders->Parent(id) == parent && FFolders->Name(id) == name) return id;
  }
  return std::nullopt;
}

std::optional<TFolderId> TVolumeIndex::FindFolder(std::string_view relative) const {
  if (FFolders == nullptr) return std::nullopt;
  std::optional<TFolderId> folder = kRootFolder;
  while (folder && !relative.empty()) {
    const std::string_view component = relative.substr(0, relative.find('/'));
    relative.remove_prefix(std::min(relative.size(), component.size() + 1));
    if (!component.empty()) folder = FindChild(*folder, component);
  }
  return folder;
}

}  // namespace volindex
