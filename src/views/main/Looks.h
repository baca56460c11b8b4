// The looks that the forms share: the form font, text colours that stay readable in light and dark palettes,
// and their pictures. Main thread.
#pragma once

#include <QColor>
#include <QFont>
#include <QIcon>

#include "controls/picture/ImageList.h"

class QPalette;
class QWidget;

// Tahoma at the forms' stored height where the system has it, else the system's own font and size.
[[nodiscard]] QFont FormFont();

// The bold font of a title, larger than the given one in the relation of the stored heights.
[[nodiscard]] QFont TitleFont(const QFont& formFont);

// The stored colours (0x00BBGGRR) of a title and of a heading.
inline constexpr unsigned kTitleColor = 9588234;
inline constexpr unsigned kHeadingColor = 8388608;

// A stored colour on the palette's background: as it is on a light one, lightened on a dark one.
[[nodiscard]] QColor ReadableColor(unsigned storedColor, const QPalette& palette);

// The program's icon in every size that systems ask for.
[[nodiscard]] QIcon ProgramIcon();

// True if the palette's window background is dark.
[[nodiscard]] bool IsDark(const QPalette& palette);

// Gives the widget's text a stored colour, again at each change of the palette.
void SetTextColor(QWidget& label, unsigned storedColor);

// The image lists of the forms and what stands at which index.
//
// Images of the wizard's lists and of the drive rows.
namespace StaticImage {
inline constexpr int kSystemDrive = 0;
inline constexpr int kDrive = 1;
inline constexpr int kFolder = 2;
inline constexpr int kFinished = 3;
inline constexpr int kRunning = 4;
}  // namespace StaticImage

// Images of the largest-items list; icons of its rows follow from kOwn on. The tabs use these too.
namespace DockImage {
inline constexpr int kFolder = 0;
inline constexpr int kAscending = 4;
inline constexpr int kDescending = 5;
inline constexpr int kOwn = 7;
}  // namespace DockImage

// Images of the largest-files list; icons of its rows follow from kOwn on.
namespace FileImage {
inline constexpr int kAscending = 0;
inline constexpr int kDescending = 1;
inline constexpr int kOwn = 3;
}  // namespace FileImage

// Images of the list of downloads; icons of its rows follow from kOwn on.
namespace DownloadImage {
inline constexpr int kAscending = 0;
inline constexpr int kDescending = 1;
inline constexpr int kOwn = 2;
}  // namespace DownloadImage

// The pictures of the picture store.
namespace StorePicture {
inline constexpr int kFolder64 = 0;
inline constexpr int kDisk64 = 1;
inline constexpr int kComputer64 = 2;
inline constexpr int kFolder32 = 3;
inline constexpr int kSystemDisk32 = 4;
inline constexpr int kDisk32 = 5;
inline constexpr int kComputer32 = 6;
inline constexpr const char* kNames[] = {"Folder64",  "Disk64", "Computer64", "Folder32",
                                         "SysDisk32", "Disk32", "Computer32"};
}  // namespace StorePicture

inline constexpr int kSmallImageSide = 16;  // pixels
inline constexpr int kLargeImageSide = 32;  // pixels

// All of them with their first pictures. Owned by the main form; outlives the lists that draw them.
//
// Lists keep an index, not a picture: what a fill adds behind kOwn is taken off again before the next fill,
// after the rows that show it have gone.
struct TFormImages {
  TFormImages();

  TImageList imglstStatic{QSize(kSmallImageSide, kSmallImageSide)};
  TImageList cxmglstdock{QSize(kSmallImageSide, kSmallImageSide)};
  TImageList cxmglstlvFile{QSize(kSmallImageSide, kSmallImageSide)};
  TImageList cxmglstdownloadfiles{QSize(kSmallImageSide, kSmallImageSide)};
};

// Takes the images from index `kept` on off the list, last to first.
void DropImagesFrom(TImageList& images, int kept);
