#pragma once

#include <QStringList>

#include "platform/NotificationCenter.h"
#include "platform/Workspace.h"
#include "support/Print.h"

namespace pendra {

/// A desktop on which runs what the test says, and which only notes what it should open.
class ScriptedWorkspace final : public Workspace {
 public:
  void setRunning(const QString& identifier, bool running) {
    running_.removeAll(identifier);
    if (running) running_ << identifier;
  }
  /// Tells the observers that an application of this name was started.
  void launch(const QString& name) { launches_.post(QStringLiteral("launched"), {name, {}}); }

  [[nodiscard]] const QStringList& opened() const { return opened_; }
  [[nodiscard]] const QStringList& revealed() const { return revealed_; }

  [[nodiscard]] bool isRunning(const QString& identifier) const override {
    return running_.contains(identifier);
  }
  bool openUrl(const QString& address) override {
    opened_ << address;
    return true;
  }
  void reveal(const QString& path) override { revealed_ << path; }
  [[nodiscard]] Subscription observeLaunches(std::function<void(const QString&)> launched) override {
    return launches_.observe(QStringLiteral("launched"),
                             [launched](const auto& info) { launched(info.first); });
  }

 private:
  QStringList running_;
  QStringList opened_;
  QStringList revealed_;
  NotificationCenter launches_;
};

}  // namespace pendra
