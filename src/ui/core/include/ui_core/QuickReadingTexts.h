#pragma once

#include <QStringList>

#include "ui_core/QuickReading.h"

namespace pendra {

/// A reading as people are told it, before it is done.
struct QuickReadingTexts {
  QString deed{};          ///< what will be done, or why nothing will be
  QString subject{};       ///< for what
  QStringList remarks{};   ///< what is less obvious: new names, times that a day had twice
  QStringList warnings{};  ///< what will probably be wrong
  bool isRefused = false;  ///< nothing will be done

  /// All of it, a line each.
  [[nodiscard]] QString joined() const;
};
[[nodiscard]] QuickReadingTexts textsOf(const QuickReading& reading, const ObjectContext& context);

/// "Acme - Roof - Design".
[[nodiscard]] QString titleOf(const QuickReading& reading);

}  // namespace pendra
