#include "GalleryButtons.h"

#include "controls/buttons/RdImageButton.h"
#include "controls/fold/RdFoldPanel.h"
#include "controls/skin/RdBitmap.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>

#include <functional>

namespace {

constexpr int kColumns = 3;
constexpr QSize kButtonSize(210, 44);
constexpr int kSliceEnd = 6;

struct TButtonRow {
  const char* About;
  std::function<void(TRdImageButton&)> Make;
};

TPicture Icon(const char* name) {
  return TPicture::FromResource(QLatin1String(name));
}

void WithIcon(TRdImageButton& button, TButtonAlign align) {
  button.DnNormalIcon = Icon("analyze16");
  button.IconAlign = align;
}

const TButtonRow kRows[] = {
    {"Normal, hot under the mouse", [](TRdImageButton&) {}},
    {"Another colour under the mouse", [](TRdImageButton& b) { b.FontHoverColor = 0xC06000; }},
    {"Pressed while it is held", [](TRdImageButton&) {}},
    {"Disabled", [](TRdImageButton& b) { b.setEnabled(false); }},
    {"Selected by the program", [](TRdImageButton& b) { b.SetState(TImageButtonState::Selected); }},
    {"Expanded", [](TRdImageButton& b) { b.Expand = true; }},
    {"Icon at the right", [](TRdImageButton& b) { WithIcon(b, TButtonAlign::Right); }},
    {"Icon at the left, text left",
     [](TRdImageButton& b) {
       WithIcon(b, TButtonAlign::Left);
       b.ButtonCaptionAlignment = TButtonAlign::Left;
     }},
    {"Icon of a disabled button",
     [](TRdImageButton& b) {
       WithIcon(b, TButtonAlign::Right);
       b.setEnabled(false);
     }},
    {"Check box off", [](TRdImageButton& b) { b.ShowCheckBox = true; }},
    {"Check box on",
     [](TRdImageButton& b) {
       b.ShowCheckBox = true;
       b.SetChecked(true);
     }},
    {"Check box grayed",
     [](TRdImageButton& b) {
       b.ShowCheckBox = true;
       b.CheckState = TButtonCheck::Grayed;
     }},
    {"Second line with a value",
     [](TRdImageButton& b) {
       b.ButtonCaptionAlignment = TButtonAlign::Left;
       b.TextTopOffset = -8;
       b.SubCaptionOffset = 0;
       b.SubCaption = u"Free: "_qs;
       b.SubCaptionData = u"118.25 GB"_qs;
       QFont bold = b.font();
       bold.setBold(true);
       b.SubCaptionDataFont = bold;
     }},
    {"Wrapped",
     [](TRdImageButton& b) {
       b.Caption = u"A long caption, which goes to the next line"_qs;
       b.WordWrap = true;
     }},
    {"Text at the right", [](TRdImageButton& b) { b.ButtonCaptionAlignment = TButtonAlign::Right; }},
};
constexpr int kHotButton = 0;
constexpr int kHeldButton = 2;

TPicture Part(const TPicture& picture, int x, int width) {
  const auto cut = [&](int density) {
    return picture.ImageFor(density).copy(x * density, 0, width * density, picture.Size().height() * density);
  };
  return picture.Empty() ? picture : TPicture(cut(1), cut(2));
}

void SetSlices(const TPicture& picture, TButtonPicture& left, TButtonPicture& middle, TButtonPicture& right) {
  const int width = picture.Size().width();
  left = Part(picture, 0, kSliceEnd);
  middle = Part(picture, kSliceEnd, width - 2 * kSliceEnd);
  right = Part(picture, width - kSliceEnd, kSliceEnd);
}

void Mouse(QWidget& widget, QEvent::Type type, Qt::MouseButton button) {
  const QPointF pos = QRectF(widget.rect()).center();
  QMouseEvent event(type, pos, widget.mapToGlobal(pos), button, button, {});
  QCoreApplication::sendEvent(&widget, &event);
}

}  // namespace

TGalleryButtons::TGalleryButtons() {
  auto* const grid = new QGridLayout(this);
  const auto add = [&](TCustomImageButton* button, const QString& about) {
    const int count = grid->count() / 2;
    button->Caption = button->Caption.Get().isEmpty() ? u"Analyze"_qs : button->Caption.Get();
    button->setFixedSize(kButtonSize);
    grid->addWidget(new QLabel(about, this), 2 * (count / kColumns), count % kColumns);
    grid->addWidget(button, 2 * (count / kColumns) + 1, count % kColumns);
  };
  for (const TButtonRow& row : kRows) {
    FButtons.push_back(new TRdImageButton(this));
    row.Make(*FButtons.back());
    add(FButtons.back(), QLatin1String(row.About));
  }
  for (const char* const about : {"Three slices", "Three slices, disabled", "Three slices, icon and box"}) {
    FSliced.push_back(new TRdImageButtonEx(this));
    add(FSliced.back(), QLatin1String(about));
  }
  FSliced[1]->setEnabled(false);
  FSliced[2]->DnNormalIcon = Icon("analyze16");
  FSliced[2]->ShowCheckBox = true;
  grid->setRowStretch(grid->rowCount(), 1);
}

void TGalleryButtons::Use(TGallerySkin skin) {
  const auto load = [skin](const char* name) { return SkinPicture(skin, QLatin1String(name)); };
  for (TRdImageButton* const button : FButtons) {
    button->ImageNormal = load("ButtonNormalImage");
    button->ImageOver = load("ButtonHoverImage");
    button->ImageDown = load("ButtonDownImage");
    button->ImageSelected = load("ButtonDownImage");
    button->ImageOption.SetEmpty(skin == TGallerySkin::None);
    button->CheckBoxNormalImage = load("ItemPic_UnCheckBox");
    button->CheckBoxCheckedImage = load("ItemPic_CheckBox");
    button->CheckBoxGrayedImage = GrayPicture(load("ItemPic_CheckBox"));
  }
  for (TRdImageButtonEx* const button : FSliced) {
    const TPicture normal = load("ButtonNormalImage");
    SetSlices(normal, button->ImageNormalLeft, button->ImageNormalMiddle, button->ImageNormalRight);
    SetSlices(load("ButtonHoverImage"), button->ImageOverLeft, button->ImageOverMiddle,
              button->ImageOverRight);
    SetSlices(load("ButtonDownImage"), button->ImageDownLeft, button->ImageDownMiddle,
              button->ImageDownRight);
    SetSlices(GrayPicture(normal), button->ImageDisabledLeft, button->ImageDisabledMiddle,
              button->ImageDisabledRight);
    button->CheckBoxNormalImage = load("ItemPic_UnCheckBox");
    button->CheckBoxCheckedImage = load("ItemPic_CheckBox");
    // Pictures of this form keep their height.
    if (!normal.Empty()) button->setFixedHeight(normal.Size().height());
  }
}

void TGalleryButtons::Pose() {
  Mouse(*FButtons[kHotButton], QEvent::MouseMove, Qt::NoButton);
  Mouse(*FButtons[kHeldButton], QEvent::MouseMove, Qt::NoButton);
  Mouse(*FButtons[kHeldButton], QEvent::MouseButtonPress, Qt::LeftButton);
}

TGalleryFolds::TGalleryFolds() {
  auto* const columns = new QHBoxLayout(this);
  columns->addWidget(&FFree);
  columns->addWidget(&FColumn, 1);
  AddFree();
  AddInLayout();
}

TRdFoldPanel& TGalleryFolds::Add(QWidget& parent, const QString& caption, QRect bounds, int height) {
  auto* const panel = new TRdFoldPanel(&parent);
  panel->setGeometry(bounds);
  panel->ButtonCaption = caption;
  panel->ButtonCaptionALignment = TButtonAlign::Left;
  panel->SetMaxHeight(height);
  panel->SetIsOpen(false);
  FPanels.push_back(panel);
  return *panel;
}

void TGalleryFolds::AddFree() {
  constexpr int kHeader = 25;
  constexpr int kWidth = 320;
  FFree.setMinimumWidth(kWidth);
  constexpr const char* kCaptions[] = {"Free: folders", "Free: files", "Free: with panels on it"};
  for (int i = 0; i < 3; ++i) {
    TRdFoldPanel& panel =
        Add(FFree, QLatin1String(kCaptions[i]), {0, i * (kHeader + 4), kWidth, kHeader}, 110);
    for (int line = 0; line < 2 && i < 2; ++line)
      (new QCheckBox(u"Choice %1"_qs.arg(line + 1), &panel))->move(20, 36 + 30 * line);
    panel.ShowCheckBox = i == 1;
    panel.TextOffset = i == 1 ? 34 : 20;
  }
  for (int i = 0; i < 2; ++i) {
    TRdFoldPanel& inner =
        Add(*FPanels[2], u"Inner %1"_qs.arg(i + 1), {12, 34 + i * (kHeader + 4), kWidth - 24, kHeader}, 70);
    (new QLineEdit(u"A line to edit"_qs, &inner))->setGeometry(12, 34, 200, 28);
  }
}

void TGalleryFolds::AddInLayout() {
  auto* const column = new QVBoxLayout(&FColumn);
  for (const char* const caption : {"In a layout: first", "In a layout: second", "In a layout: disabled"}) {
    TRdFoldPanel& panel = Add(FColumn, QLatin1String(caption), {0, 0, 300, 25}, 120);
    auto* const lines = new QVBoxLayout(&panel);
    lines->addWidget(new QLabel(u"The layout keeps clear of the header."_qs, &panel));
    lines->addWidget(new QLineEdit(u"Another line to edit"_qs, &panel));
    column->addWidget(&panel);
  }
  FPanels.back()->setEnabled(false);
  column->addStretch(1);
}

void TGalleryFolds::Use(TGallerySkin skin) {
  const auto load = [skin](const char* name) { return SkinPicture(skin, QLatin1String(name)); };
  for (TRdFoldPanel* const panel : FPanels) {
    panel->ButtonImageNormal = load("ButtonNormalImage");
    panel->ButtonImageOver = load("ButtonHoverImage");
    panel->ButtonImageDown = {};
    panel->Header().ImageOption.SetEmpty(skin == TGallerySkin::None);
    panel->IconUpNormal = load("GroupUpImage");
    panel->IconUpHover = load("GroupUpHoverImage");
    panel->IconDnNormal = load("GroupDownImage");
    panel->IconDnHover = load("GroupDownHoverImage");
    panel->CheckBoxNormalImage = load("ItemPic_UnCheckBox");
    panel->CheckBoxCheckedImage = load("ItemPic_CheckBox");
  }
}

void TGalleryFolds::Pose() {
  for (const int opened : {1, 2, 3, 6})
    FPanels[static_cast<std::size_t>(opened)]->Header().Click();
  FPanels[5]->Header().setFocus();
}
