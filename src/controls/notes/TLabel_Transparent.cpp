#include "controls/notes/TLabel_Transparent.h"

TLabel::TLabel(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
}
