// The sample skins, and what they are on a list. Main thread.
#pragma once

#include "controls/picture/Picture.h"

class TRdListView;

enum class TGallerySkin { None, Light, Dark };

// A picture of the skin by its name; empty for None.
[[nodiscard]] TPicture SkinPicture(TGallerySkin skin, const QString& name);
// Pictures and colours; None gives the list its default looks back.
void ApplySkin(TRdListView& list, TGallerySkin skin);
// The palette that belongs to it, for the whole application; None leaves it.
void ApplyPalette(TGallerySkin skin);
