// The panel made of pictures. Main thread.
#pragma once

#include "controls/progress/PImageRect.h"

// Paints its Items, in their order, beneath the controls that stand on it.
class TRdImagePanel : public TImageRect {
 public:
  using TImageRect::TImageRect;
};
