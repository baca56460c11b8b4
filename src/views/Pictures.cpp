#include "views/Pictures.h"

#include <QLatin1String>

#include <initializer_list>

#include "controls/picture/ImageList.h"
#include "controls/picture/Picture.h"

namespace {

std::unique_ptr<TImageList> MakeImages(std::initializer_list<const char*> names) {
  auto images = std::make_unique<TImageList>(QSize(kSmallImageSide, kSmallImageSide));
  for (const char* name : names)
    images->Add(TPicture::FromResource(QLatin1String(name)));
  return images;
}

}  // namespace

std::unique_ptr<TImageList> MakeStaticImages() {
  return MakeImages({"drive16_system", "drive16", "folder16", "finished16", "running16"});
}

std::unique_ptr<TImageList> MakeDockImages() {
  return MakeImages({"folder16", "tab_overview16", "tab_contents16", "tab_topfiles16", "sort_asc",
                     "sort_desc", "tab_downloads16"});
}

std::unique_ptr<TImageList> MakeFileImages() {
  return MakeImages({"sort_asc", "sort_desc", "folder16"});
}

std::unique_ptr<TImageList> MakeDownloadImages() {
  return MakeImages({"sort_asc", "sort_desc"});
}

void DropImagesFrom(TImageList& images, int kept) {
  for (int index = images.Count() - 1; index >= kept; --index)
    images.Delete(index);
}
