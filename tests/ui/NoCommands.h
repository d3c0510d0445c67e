#pragma once

#include "ui/CommandTarget.h"

namespace pendra {

/// Carries out nothing; for windows whose commands are not what is looked at.
class NoCommands final : public CommandTarget {
  void perform(Command, QWidget*) override {}
  bool validate(const MenuItem&) const override { return false; }
  QStringList recentDocuments() const override { return {}; }
  void openRecent(const QString&) override {}
  void clearRecent() override {}
};

}  // namespace pendra
