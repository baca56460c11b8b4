// What both pages of the wizard look like: the band at the top, the title, the labels, the margins. Main
// thread.
//
// Forms and pages follow a change between light and dark while they show: what depends on it asks the palette
// in each paint, or at each change of it.
#pragma once

#include <QWidget>

#include "controls/picture/Picture.h"

class QLayout;
class QLabel;

inline constexpr int kWizardMargin = 18;  // pixels beside the page's content
inline constexpr int kWizardIndent = 18;  // pixels before what belongs to a radio button

// The picture at the top of a page, in its light or dark version by the palette.
class TWizardBand : public QWidget {
 public:
  TWizardBand(const QString& name, QWidget* parent);
  [[nodiscard]] QSize sizeHint() const override { return FLight.Size(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  TPicture FLight;
  TPicture FDark;
};

// The bold heading of a page, on its band, and a wrapped text below.
QLabel* AddWizardTitle(const QString& name, const QString& caption, TWizardBand& band);
[[nodiscard]] QLabel* MakeWizardLabel(const QString& name, const QString& caption, QWidget* parent);

// White paper in light palettes; in dark ones the window's own colour, on which outlines can be seen.
class TWizardPaper : public QObject {
 public:
  explicit TWizardPaper(QWidget& page);
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Apply();

  QWidget& FPage;
};

// The page is the band with the content below it.
void LayOutUnderBand(QWidget& page, QWidget& band, QLayout& content);
