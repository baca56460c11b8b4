#include "app/WizardBand.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

#include "views/main/Looks.h"

TWizardBand::TWizardBand(const QString& name, QWidget* parent)
    : QWidget(parent),
      FLight(TPicture::FromResource(u"band"_qs)),
      FDark(TPicture::FromResource(u"band_dark"_qs)) {
  setObjectName(name);
  setFixedHeight(FLight.Size().height());
}

// Both pictures are at hand from the start, so a change of the palette needs no more than the paint that it
// brings.
void TWizardBand::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  (IsDark(palette()) ? FDark : FLight).Draw(painter, rect(), true);
}

QLabel* AddWizardTitle(const QString& name, const QString& caption, TWizardBand& band) {
  auto* title = MakeWizardLabel(name, caption, &band);
  title->setFont(TitleFont(band.font()));
  title->setWordWrap(false);
  SetTextColor(*title, kTitleColor);
  auto* row = new QHBoxLayout(&band);
  row->setContentsMargins(kWizardMargin, 0, kWizardMargin, 0);
  row->addWidget(title, 0, Qt::AlignLeft | Qt::AlignVCenter);
  return title;
}

QLabel* MakeWizardLabel(const QString& name, const QString& caption, QWidget* parent) {
  auto* label = new QLabel(parent);
  label->setObjectName(name);
  label->setText(caption);
  label->setWordWrap(true);
  return label;
}

TWizardPaper::TWizardPaper(QWidget& page) : QObject(&page), FPage(page) {
  page.setAutoFillBackground(true);
  page.installEventFilter(this);
  Apply();
}

bool TWizardPaper::eventFilter(QObject*, QEvent* event) {
  if (event->type() == QEvent::PaletteChange) Apply();
  return false;
}

void TWizardPaper::Apply() {
  const QPalette::ColorRole role = IsDark(FPage.palette()) ? QPalette::Window : QPalette::Base;
  if (FPage.backgroundRole() != role) FPage.setBackgroundRole(role);
}

void LayOutUnderBand(QWidget& page, QWidget& band, QLayout& content) {
  auto* column = new QVBoxLayout(&page);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(&band);
  column->addLayout(&content, 1);
}
