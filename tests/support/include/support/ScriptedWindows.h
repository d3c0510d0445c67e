#pragma once

#include <QStringList>

#include "document/DocumentClosing.h"
#include "document/Session.h"
#include "document/Windows.h"

namespace pendra {

/// Windows that are only noted: what was loaded and closed, and what the timer window was asked to do.
class ScriptedWindows final : public InterfaceLoader,
                              public MainWindow,
                              public AuxiliaryWindow,
                              public VTMenus {
 public:
  /// Given once the session exists, which needs the windows first.
  void setSession(Session& session) { session_ = &session; }

  [[nodiscard]] const std::vector<Interface>& loaded() const { return loaded_; }
  [[nodiscard]] int loads(Interface interface) const {
    return static_cast<int>(std::count(loaded_.begin(), loaded_.end(), interface));
  }
  /// Everything that was asked, oldest first.
  [[nodiscard]] const QStringList& calls() const { return calls_; }
  void forget() { calls_.clear(); }

  void load(Interface interface) override {
    loaded_.push_back(interface);
    if (interface == Interface::TimerWindow) session_->window = this;
    if (interface == Interface::Setup) session_->setupController = this;
  }

  void reloadData() override { calls_ << "reloadData"; }
  void updateMainButton() override { calls_ << "updateMainButton"; }
  void updateTimeDisplay() override { calls_ << "updateTimeDisplay"; }
  void show() override { calls_ << "show"; }
  [[nodiscard]] bool isVisible() const override { return session_->window == this; }
  void stopTimer() override { calls_ << "stopTimer"; }
  void invalidateTracker() override { calls_ << "invalidateTracker"; }
  void close() override {
    calls_ << "close";
    if (session_->window == this) windowWillClose(*session_);
    if (session_->setupController == this) session_->setupController = nullptr;
  }
  void bringToFront() override { calls_ << "bringToFront"; }
  void removeVTMenus() override { calls_ << "removeVTMenus"; }

 private:
  Session* session_ = nullptr;
  std::vector<Interface> loaded_;
  QStringList calls_;
};

}  // namespace pendra
