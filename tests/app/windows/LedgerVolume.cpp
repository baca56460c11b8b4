#include "../LedgerVolume.h"

#include <QDir>

std::vector<const char*> LedgerVolumes() {
  return {"temporary"};
}

TLedgerVolume::TLedgerVolume(const char*)
    : Folder(QDir::tempPath().toUtf8()), Home(Folder), Second(qgetenv("TALLYSCOPE_SECOND_VOLUME")) {}
