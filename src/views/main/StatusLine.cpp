#include "views/main/StatusLine.h"

#include <QGridLayout>
#include <QLabel>

#include "controls/notes/Image.h"
#include "support/Korvel_Routine_New.h"
#include "views/main/Looks.h"
#include "views/main/ResultTab.h"

namespace {

constexpr int kTextPanelWidth = 200;
constexpr int kTextPanel = 0;
constexpr int kDetailPanel = 1;

QLabel* AddLine(const QString& name, QWidget* parent) {
  auto* label = new QLabel(parent);
  label->setObjectName(name);
  label->setTextFormat(Qt::PlainText);
  // A long name is cut at the edge of the window and does not widen it.
  label->setMinimumWidth(1);
  return label;
}

}  // namespace

TStatusLine::TStatusLine(TdxStatusBar& bar, const TImageNote& pictures, const TMainState& state)
    : dxstsbr1(bar), ImageNote1(pictures), FState(state) {
  dxstsbr1.AddTextPanel(kTextPanelWidth);
  QWidget* details = dxstsbr1.AddContainerPanel().Container();
  imgFile = new TImage(details);
  imgFile->setObjectName(u"imgFile"_qs);
  imgFile->setFixedSize(kLargeImageSide, kLargeImageSide);
  lblFileName = AddLine(u"lblFileName"_qs, details);
  lblFileType = AddLine(u"lblFileType"_qs, details);
  lblFileSize = AddLine(u"lblFileSize"_qs, details);

  auto* grid = new QGridLayout(details);
  grid->setContentsMargins(8, 4, 8, 4);
  grid->setHorizontalSpacing(16);
  grid->setVerticalSpacing(1);
  grid->addWidget(imgFile, 0, 0, 2, 1);
  grid->addWidget(lblFileName, 0, 1, 1, 3);
  grid->addWidget(lblFileType, 1, 1);
  grid->addWidget(lblFileSize, 1, 2);
  grid->setColumnStretch(3, 1);
}

void TStatusLine::ShowCount(int rows) {
  dxstsbr1.Panels(kDetailPanel).SetVisible(false);
  dxstsbr1.Panels(kTextPanel).SetText(CountText(rows));
  dxstsbr1.Panels(kTextPanel).SetVisible(true);
}

void TStatusLine::NameTextPanel() {
  if (dxstsbr1.Panels(kTextPanel).Text().isEmpty())
    SetCountText(FState.FLanguage.GetMessage(u"M_PC"_qs, u"My Computer"_qs));
}

void TStatusLine::SetCountText(const QString& text) {
  dxstsbr1.Panels(kTextPanel).SetText(text);
}

void TStatusLine::ShowDetails() {
  dxstsbr1.Panels(kTextPanel).SetVisible(false);
  dxstsbr1.Panels(kDetailPanel).SetVisible(true);
}

void TStatusLine::SetSubject(const TSubject& subject) {
  SetPicture(subject.Picture);
  SetLines(subject.Name, subject.Type, subject.Size);
}

void TStatusLine::SetComputer() {
  const TDriveList& drives = FState.FDrives;
  SetSubject({StorePicture::kComputer32, FState.FLanguage.GetMessage(u"M_PC"_qs, u"My Computer"_qs),
              SizeLine(SizeToText(drives.TotalSize())),
              UsedLine(SizeToText(drives.TotalSize() - drives.TotalFree()))});
}

void TStatusLine::SetPicture(int storeIndex) {
  imgFile->SetPicture(ImageNote1.Items()[storeIndex].Picture);
}

void TStatusLine::SetIcon(const QIcon& icon) {
  imgFile->SetIcon(icon, imgFile->size());
}

void TStatusLine::SetLines(const QString& name, const QString& type, const std::optional<QString>& size) {
  SetNameAndType(name, type);
  lblFileSize->setVisible(size.has_value());
  if (size) lblFileSize->setText(*size);
}

void TStatusLine::SetNameAndType(const QString& name, const QString& type) {
  lblFileName->setText(name);
  lblFileType->setText(type);
}

void TStatusLine::SetSizeLine(const QString& size) {
  lblFileSize->setText(size);
}

void TStatusLine::ShowSizeLine() {
  lblFileSize->show();
}

void TStatusLine::HideSizeLine() {
  lblFileSize->hide();
}

QString TStatusLine::CountText(int rows) const {
  return QString::number(rows) + u' ' + FState.FLanguage.GetMessage(u"M_Items"_qs, u"items"_qs);
}

QString TStatusLine::SizeLine(const QString& value) const {
  return FState.FLanguage.GetMessage(u"M_Size"_qs, u"Size"_qs) + u": "_qs + value;
}

QString TStatusLine::UsedLine(const QString& value) const {
  return FState.FLanguage.GetMessage(u"M_Used_Space"_qs, u"Used Space"_qs) + u": "_qs + value;
}
