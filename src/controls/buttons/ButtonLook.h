// What an image button shows, as values, and where it shows it: the places of text, icon and check box, the
// choice of pictures, the drawing of texts and icon. Knows no widget. Lengths are device-independent pixels
// of the button. Main thread.
#pragma once

#include <QFont>
#include <QRect>
#include <QString>

#include "controls/picture/Picture.h"
#include "controls/skin/Colors.h"
#include "controls/skin/DesignRect.h"

class QFontMetrics;
class QPainter;

// The numbers of these four are the stored ones.
enum class TImageButtonState { Normal = 0, Down = 1, Disabled = 2, Selected = 3 };
enum class TButtonIconState { Normal = 0, Down = 1, Hover = 2, Disabled = 3 };
enum class TButtonAlign { Left = 0, Right = 1, Center = 2 };
enum class TCheckAlignY { Top = 0, Bottom = 1, Center = 2 };

enum class TButtonCheck { Off = 0, On = 1, Grayed = 2 };

// What the user does to the button.
struct TButtonMood {
  TImageButtonState State = TImageButtonState::Normal;
  TButtonIconState IconState = TButtonIconState::Normal;
  bool Over = false;  // the mouse is on the button
  bool Enabled = true;

  // Pressed, and the mouse has not been drawn off.
  [[nodiscard]] bool Pressed() const { return State == TImageButtonState::Down && Over; }
};

struct TButtonIcons {
  TPicture Normal;
  TPicture Down;
  TPicture Hover;
  TPicture Disable;
};

// What both kinds of button have. The names are those of their properties.
struct TButtonLook {
  QString Caption;
  QString SubCaption;      // the line beneath the caption
  QString SubCaptionData;  // a value behind that line
  QFont SubCaptionFont;    // the caption's as far as they do not say otherwise
  QFont SubCaptionDataFont;
  TColor FontHoverColor = clDefault;  // clDefault: as without the mouse
  TColor DisabledFontColor = cl3DDkShadow;
  TButtonAlign ButtonCaptionAlignment = TButtonAlign::Center;
  int TextLeftMargin = 0;  // text does not start left of it
  int TextOffset = 20;     // inset of left or right aligned text
  int TextTopOffset = 0;
  int SubCaptionOffset = 50;  // from the caption's x to the second line's
  bool WordWrap = false;

  bool Expand = false;
  TPicture ExpandImage;
  TButtonIcons Up;  // of an expanded button
  TButtonIcons Dn;  // of a collapsed one
  bool IconVisible = true;
  bool GrayIcon = true;  // a disabled button without an icon for it shows the normal one in grey
  TButtonAlign IconAlign = TButtonAlign::Right;
  int IconOffset = 10;

  bool ShowCheckBox = false;
  TButtonCheck CheckState = TButtonCheck::Off;
  TPicture CheckBoxNormalImage;
  TPicture CheckBoxCheckedImage;
  TPicture CheckBoxGrayedImage;
  TCheckAlignY CheckBoxAlignY = TCheckAlignY::Center;
  int CheckBoxOffset = 10;
  int CheckBoxOffsetY = 0;
};

// Two ways to hold pictures. The drawing functions below take look, mood and pictures as they are and change
// none of them; whoever wants another picture for a state changes ImageOf or SlicesOf alone.
//
// One picture for each state, drawn by one set of slices.
struct TButtonPictures {
  TPicture ImageNormal;
  TPicture ImageDown;
  TPicture ImageOver;
  TPicture ImageDisabled;
  TPicture ImageSelected;
  TDesignSlices ImageOption;
};

// The older form: ends in their own width and a middle that is stretched between them.
struct TButtonSlices {
  TPicture Left;
  TPicture Middle;
  TPicture Right;
};

struct TSlicedPictures {
  TButtonSlices Normal;
  TButtonSlices Disabled;
  TButtonSlices Down;
  TButtonSlices Over;
};

// The first picture that applies and is not empty, by this order: pressed or expanded, hot, disabled,
// selected, expanded, normal. So an expanded button that has an ImageDown never shows its ExpandImage.
[[nodiscard]] const TPicture& ImageOf(const TButtonPictures& pictures, const TButtonLook& look,
                                      const TButtonMood& mood);

// An end that the set of the state lacks is the normal one; a middle is not made up for.
struct TShownSlices {
  const TPicture& Left;
  const TPicture& Middle;
  const TPicture& Right;
};
[[nodiscard]] TShownSlices SlicesOf(const TSlicedPictures& pictures, const TButtonLook& look,
                                    const TButtonMood& mood);

// The icon of the state. A missing one is the normal one of its set or of the other set, for the disabled
// state in grey. Empty if there is none at all or icons are not visible.
[[nodiscard]] TPicture IconOf(const TButtonLook& look, TButtonIconState state);
// The picture that the icon is made from.
[[nodiscard]] const TPicture& IconSourceOf(const TButtonLook& look, TButtonIconState state);
[[nodiscard]] QRect IconRect(const TButtonLook& look, QSize icon, QSize button);

// Empty, and so without a place, if the check box has no picture for its state or is not wanted.
[[nodiscard]] const TPicture& CheckBoxImageOf(const TButtonLook& look);
[[nodiscard]] QRect CheckBoxRect(const TButtonLook& look, QSize button);

// The room that alignment and icon leave to the caption. An icon in the middle takes none.
[[nodiscard]] QRect TextRoom(const TButtonLook& look, QSize button, const QRect& icon);
// The caption's own rectangle. It may be larger than the room, whatever lies outside the button is cut off.
[[nodiscard]] QRect TextRect(const TButtonLook& look, QSize button, const QRect& icon,
                             const QFontMetrics& metrics);
// The same of a button of slices: one line, which an icon does not move, in the height below TextTopOffset.
[[nodiscard]] QRect SlicedTextRect(const TButtonLook& look, QSize button, const QFontMetrics& metrics);

// All texts in that colour; `font` is the caption's.
void PaintTexts(QPainter& painter, const TButtonLook& look, const QRect& text, const QFont& font,
                const QColor& color);
void PaintSlices(QPainter& painter, const TShownSlices& slices, QSize button);
