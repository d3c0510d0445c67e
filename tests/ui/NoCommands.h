#pragma once

#include "ui/CommandTarget.h"

namespace pendra {

/// Carries out nothing; for windows whose commands are not what is looked at.
class NoCommands : public CommandTarget {
  std::span<const Menu> menus() const override { return {}; }
  void perform(Command, QWidget*) override {}
  bool isOffered(const CommandRow&) const override { return false; }
  QString whyNot(const CommandRow&) const override { return {}; }
  bool isShown(const CommandRow&) const override { return true; }
  std::optional<bool> isOn(const CommandRow&) const override { return {}; }
  QString titleOf(const CommandRow&) const override { return {}; }
  Notifier& menuChanges() override { return changes_; }
  QStringList recentDocuments() const override { return {}; }
  void openRecent(const QString&) override {}
  void clearRecent() override {}

  Notifier changes_;
};

}  // namespace pendra
