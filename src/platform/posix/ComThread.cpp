#include "platform/ComThread.h"

TComThread::TComThread() = default;

TComThread::~TComThread() = default;
