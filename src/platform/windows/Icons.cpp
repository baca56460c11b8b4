#include "platform/Icons.h"

#include "platform/Paths.h"
#include "platform/windows/FileEntry.h"
#include "platform/windows/Handle.h"

#include <QImage>
#include <QPixmap>

#include <shellapi.h>

namespace {

// Of a name alone: the attributes are given, so no file is looked at. A path that is too long for the call
// has the icon of its last part.
QImage AskIcon(const QString& path, UINT size) {
  const QString asked = path.size() < MAX_PATH ? path : ExtractFileName(path);
  SHFILEINFOW reply{};
  const UINT flags = SHGFI_ICON | SHGFI_USEFILEATTRIBUTES | size;
  if (SHGetFileInfoW(WideText(asked), FILE_ATTRIBUTE_NORMAL, &reply, sizeof reply, flags) == 0) return {};
  // The handle is the caller's to destroy.
  const TIconHandle icon(reply.hIcon);
  return icon ? QImage::fromHICON(icon.get()) : QImage();
}

QIcon StockIcon(SHSTOCKICONID id) {
  QIcon icon;
  for (const UINT size : {UINT{SHGSI_LARGEICON}, UINT{SHGSI_SMALLICON}}) {
    SHSTOCKICONINFO reply{};
    reply.cbSize = sizeof reply;
    if (FAILED(SHGetStockIconInfo(id, SHGSI_ICON | size, &reply))) continue;
    const TIconHandle handle(reply.hIcon);
    if (handle) icon.addPixmap(QPixmap::fromImage(QImage::fromHICON(handle.get())));
  }
  return icon;
}

}  // namespace

QIcon FileIcon(const QString& path) {
  QIcon icon;
  for (const UINT size : {UINT{SHGFI_LARGEICON}, UINT{SHGFI_SMALLICON}}) {
    if (const QImage image = AskIcon(path, size); !image.isNull()) icon.addPixmap(QPixmap::fromImage(image));
  }
  return icon;
}

QIcon PlaceIcon(TPlaceIcon place) {
  switch (place) {
    case TPlaceIcon::Folder:
    case TPlaceIcon::Home:
      return StockIcon(SIID_FOLDER);
    case TPlaceIcon::FixedVolume:
      return StockIcon(SIID_DRIVEFIXED);
    case TPlaceIcon::RemovableVolume:
      return StockIcon(SIID_DRIVEREMOVE);
    case TPlaceIcon::NetworkVolume:
      return StockIcon(SIID_DRIVENET);
  }
  return {};
}
