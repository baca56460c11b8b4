#include "report/VolumeBalance.h"

#include "support/Korvel_Routine_New.h"

namespace {

QString WithUnit(quint64 bytes) {
  return u"%1 (%2)"_qs.arg(bytes).arg(SizeToText(static_cast<qint64>(bytes)));
}

}  // namespace

// Both sums are always whole: what is told is an equation, with the sign that makes it true.
QString TVolumeBalance::Text() const {
  const bool shared = Left() < 0;
  QString text = u"%1 bytes used on the volume = %2 by these files %3 %4 "_qs.arg(Used)
                     .arg(Files)
                     .arg(QChar(shared ? u'-' : u'+'))
                     .arg(WithUnit(shared ? Files - Used : Used - Files));
  text += shared ? u"that they share or keep compressed"_qs
                 : u"left: the file system's own, snapshots, files deleted but open"_qs;
  if (Unreadable != 0)
    text += u", %1 unreadable %2"_qs.arg(Unreadable).arg(Unreadable == 1 ? u"folder"_qs : u"folders"_qs);
  return text;
}

std::optional<TVolumeBalance> BalanceOf(const TPathTotals& totals) {
  if (!totals.Usage || !totals.Usage->VolumeUsed) return std::nullopt;
  return TVolumeBalance{*totals.Usage->VolumeUsed, totals.Usage->Allocated, totals.Usage->Unreadable};
}
