// The sample skins on a list. Main thread.
#pragma once

class TRdListView;

enum class TGallerySkin { None, Light, Dark };

// Pictures and colours; None gives the list its default looks back.
void ApplySkin(TRdListView& list, TGallerySkin skin);
// The palette that belongs to it, for the whole application; None leaves it.
void ApplyPalette(TGallerySkin skin);
