#pragma once

#include <functional>

#include "document/Documents.h"
#include "document/Session.h"
#include "ui/CommandTarget.h"

namespace pendra {

class ListEditor;
struct LinkServices;
class WindowLoader;

/// What each command of the menus does, and whether it may.
class Commands final : public CommandTarget {
 public:
  /// All must outlive it. `terminate` asks for the end of the program.
  Commands(Session& session, const MenuModel& menus, WindowLoader& windows, LinkServices& link,
           std::function<void()> terminate);

  void perform(Command command, QWidget* sender) override;
  [[nodiscard]] bool validate(const MenuItem& item) const override;
  [[nodiscard]] QStringList recentDocuments() const override { return documents_.recentDocuments(); }
  void openRecent(const QString& path) override;
  void clearRecent() override { documents_.clearRecentDocuments(); }

 private:
  [[nodiscard]] bool performForProgram(Command command, QWidget* sender);
  [[nodiscard]] bool performForDocument(Command command);
  [[nodiscard]] bool performForVantor(Command command);
  [[nodiscard]] bool performForShell(Command command, QWidget* sender);
  [[nodiscard]] bool performForTimerWindow(Command command);
  [[nodiscard]] bool performForLists(Command command);
  [[nodiscard]] bool performInFocus(Command command);
  void addActivity();
  void deleteActivity();
  /// The list editors that are open; none otherwise.
  [[nodiscard]] ListEditor* customerEditor() const;
  [[nodiscard]] ListEditor* servicesEditor() const;
  /// The one at the front, else the one that is open.
  [[nodiscard]] ListEditor* listInFront() const;
  [[nodiscard]] bool canDelete() const;
  [[nodiscard]] CommandState state() const;

  Session& session_;
  const MenuModel& menus_;
  WindowLoader& windows_;
  LinkServices& link_;
  std::function<void()> terminate_;
  Documents documents_;
};

}  // namespace pendra
