#pragma once

#include <QStringList>
#include <vector>

#include "ui_core/Menus.h"

class QWidget;

namespace pendra {

/// What a menu bar asks of the program. Implemented once, by the application's commands.
class CommandTarget {
 public:
  virtual ~CommandTarget() = default;

  /// Runs the command, if it may run now. `sender` is the window whose menu or control asked.
  virtual void perform(Command command, QWidget* sender) = 0;
  [[nodiscard]] virtual bool validate(const MenuItem& item) const = 0;

  /// Paths of the recent documents, newest first.
  [[nodiscard]] virtual QStringList recentDocuments() const = 0;
  virtual void openRecent(const QString& path) = 0;
  virtual void clearRecent() = 0;
};

}  // namespace pendra
