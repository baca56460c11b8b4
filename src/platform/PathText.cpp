#include "platform/PathText.h"

#include <algorithm>

void TPathText::Store(const QString& text) {
  const auto length = std::min<qsizetype>(text.size(), kUnits - 1);
  const auto* units = reinterpret_cast<const char16_t*>(text.utf16());
  for (int i = 0; i < kUnits; ++i)
    FUnits[static_cast<size_t>(i)].store(i < length ? units[i] : u'\0', std::memory_order_relaxed);
}

QString TPathText::Load() const {
  std::array<char16_t, kUnits> units;
  int length = 0;
  while (length < kUnits) {
    units[static_cast<size_t>(length)] = FUnits[static_cast<size_t>(length)].load(std::memory_order_relaxed);
    if (units[static_cast<size_t>(length)] == u'\0') break;
    ++length;
  }
  return QString::fromUtf16(units.data(), length);
}
