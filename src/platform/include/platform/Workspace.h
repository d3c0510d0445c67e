#pragma once

#include <QString>
#include <functional>
#include <memory>

namespace pendra {

/// The desktop around the program: which applications run, and how to hand things to them.
class Workspace {
 public:
  /// Ends an observation when it dies.
  using Subscription = std::shared_ptr<void>;

  virtual ~Workspace() = default;
  /// Whether an application of this identifier runs: its name has an owner on the session bus.
  /// Without a bus nothing runs.
  [[nodiscard]] virtual bool isRunning(const QString& identifier) const = 0;
  /// Opens an address (of the web or of a file, an anchor included) in the user's own program for it.
  /// False when it could not be handed over.
  virtual bool openUrl(const QString& address) = 0;
  /// Shows the file or folder in the user's file viewer.
  virtual void reveal(const QString& path) = 0;
  /// Tells of every application that starts from now on, with its name for people.
  [[nodiscard]] virtual Subscription observeLaunches(std::function<void(const QString& name)> launched) = 0;
};

}  // namespace pendra
