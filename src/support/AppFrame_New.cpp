#include "support/AppFrame_New.h"

#include "platform/KnownFolders.h"

TAppFrame::TAppFrame()
    : FUserDataPath(GetKnownFolder(TSpecialFolder::AppData)),
      FCommonDataPath(GetKnownFolder(TSpecialFolder::CommonAppData)),
      FAppPath(ProgramFolder()) {}
