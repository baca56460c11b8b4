#include "platform/ComThread.h"

#include <windows.h>

#include <objbase.h>

// A thread that lives in another kind of apartment may use components all the same.
TComThread::TComThread() : FJoined(SUCCEEDED(CoInitialize(nullptr))) {}

TComThread::~TComThread() {
  if (FJoined) CoUninitialize();
}
