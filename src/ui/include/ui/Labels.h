#pragma once

#include <QFont>
#include <QString>
#include <optional>

class QLabel;
class QWidget;

namespace pendra {

/// How a label looks and what it is for, beside its words.
struct LabelLook {
  std::optional<QFont> font{};  ///< none: the window's own
  bool isQuiet = false;         ///< it matters less than what it stands beside
  bool wraps = false;
  int width = 0;          ///< fixed at so many pixels; 0: as wide as its words
  QWidget* of = nullptr;  ///< the field that it names
  QString objectName{};
};

/// A label that shows its words as they stand: they are never read as markup.
[[nodiscard]] QLabel* makeLabel(const QString& text, const LabelLook& look = {});

}  // namespace pendra
