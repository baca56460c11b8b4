// The volumes on which the ledger's runs are made.
#pragma once

#include <QByteArray>
#include <QString>

#include <memory>
#include <vector>

// The names of the kinds that this system can have.
[[nodiscard]] std::vector<const char*> LedgerVolumes();

// Goes with all that lies on it.
struct TLedgerVolume {
  explicit TLedgerVolume(const char* name);

  QString Refusal;    // why there is none here; empty if there is
  QByteArray Folder;  // on it
  QByteArray Home;    // on the volume of the user's home folder
  QByteArray Second;  // on another volume; empty if there is none
  QByteArray Trash;   // the user's on the volume itself, where home lies elsewhere
  std::shared_ptr<void> Mounted;
};
