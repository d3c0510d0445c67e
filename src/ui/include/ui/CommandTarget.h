#pragma once

#include <QStringList>

#include "platform/Notifier.h"
#include "ui_core/Menus.h"

class QWidget;

namespace pendra {

/// What a menu bar asks of the program. Implemented once, by the application's commands.
class CommandTarget {
 public:
  virtual ~CommandTarget() = default;

  /// The menus in their order.
  [[nodiscard]] virtual std::span<const Menu> menus() const = 0;
  /// Runs the command if it may run. `sender` is the window whose menu or control asked; none for no window.
  virtual void perform(Command command, QWidget* sender) = 0;
  /// Whether its menu item can be chosen.
  [[nodiscard]] virtual bool isOffered(const CommandRow& row) const = 0;
  /// Why it may not run, as a sentence; empty when it may, and where nothing is to be said about it. To
  /// perform it all the same says so.
  [[nodiscard]] virtual QString whyNot(const CommandRow& row) const = 0;
  [[nodiscard]] virtual bool isShown(const CommandRow& row) const = 0;
  /// Whether that is on which the command turns on and off; none where it does something else.
  [[nodiscard]] virtual std::optional<bool> isOn(const CommandRow& row) const = 0;
  /// The title as it stands now, translated: "Undo Start".
  [[nodiscard]] virtual QString titleOf(const CommandRow& row) const = 0;
  /// Announces that titles, or what is shown, or what shows the document's state may have changed.
  [[nodiscard]] virtual Notifier& menuChanges() = 0;

  /// Paths of the recent documents, newest first.
  [[nodiscard]] virtual QStringList recentDocuments() const = 0;
  virtual void openRecent(const QString& path) = 0;
  virtual void clearRecent() = 0;
};

}  // namespace pendra
