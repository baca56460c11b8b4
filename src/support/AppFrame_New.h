// The folders that an application of the suite needs.
#pragma once

#include <QString>

// A value that never changes after its making; empty texts for what the system does not know. Any thread.
class TAppFrame {
 public:
  TAppFrame();

  const QString FUserDataPath;    // this user's application data; no delimiter at the end
  const QString FCommonDataPath;  // application data of all users; no delimiter at the end
  const QString FAppPath;         // of the running program's file, with the delimiter at the end
};
