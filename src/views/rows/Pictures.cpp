#include "views/rows/Pictures.h"

#include <QLatin1String>

#include <initializer_list>

#include "controls/picture/Picture.h"

namespace {

void AddPictures(TImageList& images, std::initializer_list<const char*> names) {
  for (const char* name : names)
    images.Add(TPicture::FromResource(QLatin1String(name)));
}

}  // namespace

TFormImages::TFormImages() {
  AddPictures(imglstStatic, {"drive16_system", "drive16", "folder16", "finished16", "running16"});
  AddPictures(cxmglstdock, {"folder16", "tab_overview16", "tab_contents16", "tab_topfiles16", "sort_asc",
                            "sort_desc", "tab_downloads16"});
  AddPictures(cxmglstlvFile, {"sort_asc", "sort_desc", "folder16"});
  AddPictures(cxmglstdownloadfiles, {"sort_asc", "sort_desc"});
}

void DropImagesFrom(TImageList& images, int kept) {
  for (int index = images.Count() - 1; index >= kept; --index)
    images.Delete(index);
}
