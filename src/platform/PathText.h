// The fixed buffer in which a path text crosses threads: 260 UTF-16 units that the sender overwrites while
// a message that names the buffer may still be queued. Each unit is a relaxed atomic, so a torn text is
// a wrong text for a moment and never undefined behaviour.
#pragma once

#include <QString>

#include <array>
#include <atomic>

class TPathText {
 public:
  static constexpr int kUnits = 260;

  // Stores the text, cut at 259 units, and zeroes the rest. The sender's thread.
  void Store(const QString& text);

  // The units up to the first NUL. Any thread; the text may mix two stores.
  [[nodiscard]] QString Load() const;

 private:
  std::array<std::atomic<char16_t>, kUnits> FUnits{};
};
