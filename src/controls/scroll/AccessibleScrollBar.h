// What assistive tools are told of a skinned scroll bar. Main thread.
#pragma once

// From the first call on, every TRdScrollBar is a scroll bar to them: they read and set its value.
void TellAccessibilityOfScrollBars();
