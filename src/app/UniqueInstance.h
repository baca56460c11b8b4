// One copy of the program per logon: a second start wakes the first copy and ends before any form exists. A
// copy whose file has another name is another program. Main thread.
#pragma once

#include "platform/SingleInstance.h"

class QWidget;

// Made before the application object, lives to the end of the process.
class TUniqueInstance {
 public:
  // Ends the process with 0 where another copy runs. Nothing of this start reaches that one but the desktop's
  // leave to come to the front.
  TUniqueInstance();

  // From now on a later start restores and raises this form, and a modal one above it. The form lives as long
  // as the message loop.
  void Serve(QWidget& form);

 private:
  TSingleInstance FInstance;
};
