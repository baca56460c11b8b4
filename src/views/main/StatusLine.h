// The main form's status bar: panel 0 shows one text, panel 1 the picture and the three lines of the present
// subject. Exactly one of the two shows. Main thread.
#pragma once

#include <QString>

#include <optional>

#include "controls/bars/StatusBar.h"

class QIcon;
class QLabel;
class TImage;
class TImageNote;
struct TMainState;

// What panel 1 tells of a subject; without a size line the third one is hidden.
struct TSubject {
  int Picture = 0;  // in the picture store
  QString Name;
  QString Type;
  std::optional<QString> Size;
};

// The bar belongs to the form; the store and the state outlive this.
class TStatusLine {
 public:
  TStatusLine(TdxStatusBar& bar, const TImageNote& pictures, const TMainState& state);

  // Panel 0 with the number of rows, as CountText has it.
  void ShowCount(int rows);

  // The computer's name in panel 0, unless it has a text.
  void NameTextPanel();

  // The text of panel 0, whichever panel shows.
  void SetCountText(const QString& text);

  // Panel 1 as it is.
  void ShowDetails();

  void SetSubject(const TSubject& subject);

  // The whole computer: its name, size and used space.
  void SetComputer();

  void SetPicture(int storeIndex);
  void SetIcon(const QIcon& icon);
  void SetLines(const QString& name, const QString& type, const std::optional<QString>& size);
  void SetNameAndType(const QString& name, const QString& type);
  void SetSizeLine(const QString& size);
  void ShowSizeLine();
  void HideSizeLine();

  // "12 items", "Size: 1.00 GB" and "Used Space: 1.00 GB" in the user's language.
  [[nodiscard]] QString CountText(int rows) const;
  [[nodiscard]] QString SizeLine(const QString& value) const;
  [[nodiscard]] QString UsedLine(const QString& value) const;

 private:
  TdxStatusBar& dxstsbr1;
  const TImageNote& ImageNote1;
  const TMainState& FState;
  TImage* imgFile;
  QLabel* lblFileName;
  QLabel* lblFileType;
  QLabel* lblFileSize;
};
