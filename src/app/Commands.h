#pragma once

#include "CommandContext.h"
#include "document/Documents.h"
#include "ui/CommandTarget.h"

namespace pendra {

/// Runs the commands of the table for the menu bars, the controls and the panel. Whoever asks, a command that
/// may not run at this moment is not run.
class Commands final : public CommandTarget {
 public:
  /// All must outlive it. `terminate` asks for the end of the program.
  Commands(Session& session, WindowRegistry& windows, LinkServices& link, UndoHistory& history,
           std::function<void()> terminate, GlobalKey* key = nullptr);

  [[nodiscard]] std::span<const Menu> menus() const override;
  void perform(Command command, QWidget* sender) override;
  [[nodiscard]] bool isOffered(const CommandRow& row) const override;
  [[nodiscard]] QString whyNot(const CommandRow& row) const override {
    return row.whyNot ? row.whyNot(context_) : QString();
  }
  [[nodiscard]] bool isShown(const CommandRow& row) const override {
    return !row.isShown || row.isShown(context_);
  }
  [[nodiscard]] std::optional<bool> isOn(const CommandRow& row) const override;
  [[nodiscard]] QString titleOf(const CommandRow& row) const override;
  [[nodiscard]] Notifier& menuChanges() override { return menuChanges_; }

  [[nodiscard]] QStringList recentDocuments() const override { return documents_.recentDocuments(); }
  void openRecent(const QString& path) override;
  void clearRecent() override { documents_.clearRecentDocuments(); }

 private:
  void sayWhyNot(const CommandRow& row);

  std::function<void()> terminate_;
  CommandContext context_;
  Documents documents_;
  Notifier menuChanges_;
  std::vector<Notifier::Subscription> observations_;
};

}  // namespace pendra
