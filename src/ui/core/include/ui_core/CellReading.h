#pragma once
// What is typed into a cell is text until it is stored; what storing will make of it is said meanwhile.

#include <QStringList>
#include <optional>
#include <vector>

#include "ui_core/EntryEchoes.h"

namespace pendra {

struct CellReading {
  /// Another cell of the row, as it will be.
  struct Following {
    QString column;
    QString text;
    friend bool operator==(const Following&, const Following&) = default;
  };

  bool isRefused = false;      ///< it cannot be stored as it stands
  std::vector<Echo> echoes{};  ///< what is to be said, the most important first
  std::optional<Following> follows{};
  QStringList completions{};  ///< whole texts that may be meant, the likeliest first
};

}  // namespace pendra
