#include "controls/scroll/RdScrollBarImages.h"

void TRdScrollBarImages::SetPicture(TScrollPicture which, const TPicture& picture) {
  FSkin.Pictures[static_cast<std::size_t>(which)] = picture;
  OnChange();
}

void TRdScrollBarImages::Assign(const TRdScrollBarImages* other) {
  if (other == nullptr) {
    FSkin.Pictures = {};
    FSkin.Color = clDefault;
    return OnChange();
  }
  // A picture that the other lacks is kept, so that a skin may be put together from several.
  TScrollSkin skin = other->FSkin;
  for (std::size_t i = 0; i < skin.Pictures.size(); ++i)
    if (skin.Pictures[i].Empty()) skin.Pictures[i] = FSkin.Pictures[i];
  FSkin = skin;
  OnChange();
}

void TRdScrollBarImages::SetPropertyCopy(const TRdScrollBarImages* from) {
  if (from != nullptr) Assign(from);
}

void TRdScrollBarImages::SetPropertyPaste(TRdScrollBarImages* to) const {
  if (to != nullptr) to->Assign(this);
}
