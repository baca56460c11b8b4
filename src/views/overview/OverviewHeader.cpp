#include "views/overview/OverviewHeader.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>

#include "controls/notes/PImageNote.h"
#include "views/main/Looks.h"

namespace {

constexpr int kPictureSide = 64;

}  // namespace

TOverviewHeader::TOverviewHeader(const TImageNote& pictures, QWidget* parent)
    : QWidget(parent), ImageNote1(pictures) {
  imgType = new TImage(this);
  imgType->setObjectName(u"imgType"_qs);
  imgType->setFixedSize(kPictureSide, kPictureSide);
  lblName = AddLabel(u"lblName"_qs, QString());
  lblName->setFont(TitleFont(parent->font()));
  lblName->setMinimumWidth(1);
  SetTextColor(*lblName, kTitleColor);
  lblType = AddLabel(u"lblType"_qs, QString());

  FGrid = new QGridLayout;
  FGrid->setHorizontalSpacing(8);
  FGrid->setVerticalSpacing(2);
  FGrid->addWidget(lblName, 0, 0, 1, 5);
  FGrid->addWidget(lblType, 1, 0, 1, 5);
  AddPair(0, 2, lblStcSize, lblSize, u"lblStcSize"_qs, u"Size:"_qs, u"lblSize"_qs);
  AddPair(0, 3, lblstcUsed, lblUsed, u"lblstcUsed"_qs, u"Used space:"_qs, u"lblUsed"_qs);
  AddPair(2, 2, lblStcFiles, lblFiles, u"lblStcFiles"_qs, u"Files:"_qs, u"lblFiles"_qs);
  AddPair(2, 3, lblStcFolders, lblFolders, u"lblStcFolders"_qs, u"Folders:"_qs, u"lblFolders"_qs);
  FGrid->setColumnMinimumWidth(1, 140);
  FGrid->setColumnStretch(4, 1);
  FGrid->setRowStretch(4, 1);

  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(12, 8, 12, 6);
  row->setSpacing(14);
  row->addWidget(imgType, 0, Qt::AlignVCenter);
  row->addLayout(FGrid, 1);
}

QLabel* TOverviewHeader::AddLabel(const QString& name, const QString& caption) {
  auto* label = new QLabel(caption, this);
  label->setObjectName(name);
  label->setTextFormat(Qt::PlainText);
  return label;
}

void TOverviewHeader::AddPair(int column, int row, QLabel*& caption, QLabel*& value,
                              const QString& captionName, const QString& captionText,
                              const QString& valueName) {
  caption = AddLabel(captionName, captionText);
  value = AddLabel(valueName, QString());
  caption->setBuddy(value);
  FGrid->addWidget(caption, row, column);
  FGrid->addWidget(value, row, column + 1);
}

void TOverviewHeader::ShowPair(QLabel* caption, QLabel* value, bool show) {
  caption->setVisible(show);
  value->setVisible(show);
}

void TOverviewHeader::SetPicture(int storeIndex) {
  imgType->SetPicture(ImageNote1.Items()[storeIndex].Picture);
}

void TOverviewHeader::SetName(const QString& name) {
  lblName->setText(name);
}

void TOverviewHeader::SetType(const QString& type) {
  lblType->setText(type);
  lblType->setVisible(!type.isNull());
}

void TOverviewHeader::SetSize(const QString& size) {
  lblSize->setText(size);
  ShowPair(lblStcSize, lblSize, !size.isNull());
}

void TOverviewHeader::SetUsed(const QString& used) {
  lblUsed->setText(used);
  ShowPair(lblstcUsed, lblUsed, !used.isNull());
}

void TOverviewHeader::SetCounts(quint32 files, quint32 folders) {
  lblFiles->setText(QString::number(files));
  lblFolders->setText(QString::number(folders));
  ShowPair(lblStcFiles, lblFiles, true);
  ShowPair(lblStcFolders, lblFolders, true);
}

void TOverviewHeader::HideCounts() {
  ShowPair(lblStcFiles, lblFiles, false);
  ShowPair(lblStcFolders, lblFolders, false);
}
