#include "views/main/Looks.h"

#include <QApplication>
#include <QEvent>
#include <QFontDatabase>
#include <QLatin1String>
#include <QPalette>
#include <QWidget>

#include <initializer_list>

#include "controls/picture/Picture.h"

namespace {

constexpr int kFormFontHeight = 11;  // pixels at 96 dots per inch
constexpr int kTitleFontHeight = 16;

// Colours the widget anew whenever its palette changes, which ends by itself since the same colour set
// again is no change.
class TTextColorer : public QObject {
 public:
  TTextColorer(QWidget& label, unsigned storedColor) : QObject(&label), FLabel(label), FColor(storedColor) {
    label.installEventFilter(this);
    Apply();
  }

  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::PaletteChange) Apply();
    return false;
  }

 private:
  void Apply() {
    QPalette palette = FLabel.palette();
    const QColor color = ReadableColor(FColor, palette);
    if (palette.color(QPalette::WindowText) == color) return;
    palette.setColor(QPalette::WindowText, color);
    palette.setColor(QPalette::Text, color);  // the role on a page of the list background
    FLabel.setPalette(palette);
  }

  QWidget& FLabel;
  const unsigned FColor;
};

void AddPictures(TImageList& images, std::initializer_list<const char*> names) {
  for (const char* name : names)
    images.Add(TPicture::FromResource(QLatin1String(name)));
}

}  // namespace

QFont FormFont() {
  QFont font = QApplication::font();
  if (QFontDatabase::hasFamily(u"Tahoma"_qs)) {
    font.setFamily(u"Tahoma"_qs);
    font.setPixelSize(kFormFontHeight);
  }
  return font;
}

QFont TitleFont(const QFont& formFont) {
  QFont font = formFont;
  font.setBold(true);
  constexpr double kRelation = static_cast<double>(kTitleFontHeight) / kFormFontHeight;
  if (font.pixelSize() > 0)
    font.setPixelSize(kTitleFontHeight);
  else
    font.setPointSizeF(font.pointSizeF() * kRelation);
  return font;
}

QColor ReadableColor(unsigned storedColor, const QPalette& palette) {
  const QColor color(static_cast<int>(storedColor & 0xFF), static_cast<int>(storedColor >> 8 & 0xFF),
                     static_cast<int>(storedColor >> 16 & 0xFF));
  if (!IsDark(palette)) return color;
  // The hue stays, so that a title keeps its character on a dark ground.
  constexpr float kReadableLightness = 0.8F;
  return QColor::fromHslF(color.hslHueF(), color.hslSaturationF(), kReadableLightness);
}

// Decoded by the program itself: a build of Qt may have no reader for the format.
QIcon ProgramIcon() {
  QIcon icon;
  for (const int side : {16, 32, 48, 64, 128, 256})
    icon.addPixmap(QPixmap::fromImage(TPicture::FromResource(u"tallyscope%1"_qs.arg(side)).ImageFor(1.0)));
  return icon;
}

bool IsDark(const QPalette& palette) {
  return palette.color(QPalette::Window).lightnessF() < 0.5F;
}

void SetTextColor(QWidget& label, unsigned storedColor) {
  new TTextColorer(label, storedColor);
}

TFormImages::TFormImages() {
  AddPictures(imglstStatic, {"drive16_system", "drive16", "folder16", "finished16", "running16"});
  AddPictures(cxmglstdock, {"folder16", "tab_overview16", "tab_contents16", "tab_topfiles16", "sort_asc",
                            "sort_desc", "tab_downloads16"});
  AddPictures(cxmglstlvFile, {"sort_asc", "sort_desc", "folder16"});
  AddPictures(cxmglstdownloadfiles, {"sort_asc", "sort_desc"});
}

void DropImagesFrom(TImageList& images, int kept) {
  for (int index = images.Count() - 1; index >= kept; --index)
    images.Delete(index);
}
