#pragma once
// The session bus knows an application by a well-known name, its identifier; people know it by the name
// in its desktop entry. Questions are asked with the one, launches are told with the other.

#include <QStringList>

#include "platform/Workspace.h"

class QDBusConnection;
class QDBusPendingCallWatcher;

namespace pendra {

/// The user's real desktop, reached through the session bus. Without a bus nothing runs and files are
/// shown by opening their folder.
class DesktopWorkspace final : public Workspace {
 public:
  /// Opens an address in the user's own program for it.
  using Opener = std::function<bool(const QString& address)>;

  /// The desktop of the user who runs the program. Needs a QGuiApplication to open addresses.
  static std::unique_ptr<DesktopWorkspace> ofUser();

  /// Desktop entries are looked for in `applicationFolders`, in their order.
  DesktopWorkspace(const QDBusConnection& bus, QStringList applicationFolders, Opener opener);
  ~DesktopWorkspace() override;

  [[nodiscard]] bool isRunning(const QString& identifier) const override;
  bool openUrl(const QString& address) override { return opener_(address); }
  void reveal(const QString& path) override;
  [[nodiscard]] Subscription observeLaunches(std::function<void(const QString&)> launched) override;

 private:
  [[nodiscard]] QString nameForPeople(const QString& identifier) const;

  std::unique_ptr<QDBusConnection> bus_;
  QStringList applicationFolders_;
  Opener opener_;
  std::unique_ptr<QDBusPendingCallWatcher> revealing_;
};

}  // namespace pendra
