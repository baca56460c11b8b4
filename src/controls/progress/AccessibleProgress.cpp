#include "controls/progress/AccessibleProgress.h"

#include "controls/AccessibleValue.h"
#include "controls/progress/PImageProgress.h"

namespace {

class TAccessibleProgress : public TAccessibleValue<TImageProgress> {
 public:
  explicit TAccessibleProgress(TImageProgress& bar) : TAccessibleValue(bar, QAccessible::ProgressBar) {}
};

}  // namespace

void TellAccessibilityOfProgressBars() {
  TellAccessibilityOf<TImageProgress, TAccessibleProgress>();
}
