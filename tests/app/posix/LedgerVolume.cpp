#include "../LedgerVolume.h"

#include <QDir>

#include <sys/stat.h>
#include <unistd.h>
#include <cstdlib>

#include "fixtures/MountNamespace.h"
#include "fixtures/TempTree.h"

namespace {

constexpr const char* kMemory = "/dev/shm";

// Before there is any other thread: all see the mounts, which go with this process, however it ends.
const bool kOwnMounts = CutOffMounts();

bool AreTwoVolumes(const QByteArray& one, const QByteArray& other) {
  struct stat a;
  struct stat b;
  return stat(one, &a) == 0 && stat(other, &b) == 0 && a.st_dev != b.st_dev && access(other, W_OK) == 0;
}

}  // namespace

std::vector<const char*> LedgerVolumes() {
  return {"temporary", "memory", "ext4"};
}

TLedgerVolume::TLedgerVolume(const char* name)
    : Folder(QDir::tempPath().toUtf8()), Home(Folder), Second(kMemory) {
  if (name == std::string("memory")) {
    Second = std::exchange(Folder, kMemory);
    Home = Folder;
    if (access(kMemory, W_OK) != 0) Refusal = u"no folder in memory"_qs;
  } else if (name == std::string("ext4")) {
    const auto tree = std::make_shared<TTempTree>();
    tree->MakeHole("image", 64 << 20);
    tree->MakeFolder("volume");
    Folder = tree->Path("volume").toUtf8();
    Trash = Folder + "/.Trash-" + QByteArray::number(geteuid());
    const QByteArray command =
        "PATH=$PATH:/usr/sbin:/sbin; cd '" + tree->Path().toUtf8() +
        "' && mke2fs -q -t ext4 image && mount -o loop image volume && chmod 1777 volume";
    if (!kOwnMounts || std::system(command) != 0)
      Refusal = u"this user can't mount a file with an ext4 volume"_qs;
    Mounted = std::shared_ptr<void>(nullptr, [tree, folder = Folder](void*) {
      static_cast<void>(std::system("umount '" + folder + "' 2>/dev/null"));
    });
  }
  if (!AreTwoVolumes(Folder, Second)) Second.clear();
}
