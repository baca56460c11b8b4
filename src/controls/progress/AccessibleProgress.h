// What assistive tools are told of the progress bar. Main thread.
#pragma once

// From the first call on, every TImageProgress is a progress bar to them, with its range and position.
void TellAccessibilityOfProgressBars();
