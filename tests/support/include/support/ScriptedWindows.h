#pragma once

#include <QStringList>

#include "document/DocumentClosing.h"
#include "document/Session.h"
#include "document/Windows.h"

namespace pendra {

/// Windows that are only noted: what was loaded and closed, and what the timer window was asked to do.
class ScriptedWindows final : public InterfaceLoader, public MainWindow {
 public:
  /// Given once the session exists, which needs the windows first.
  void setSession(Session& session) { session_ = &session; }

  [[nodiscard]] const std::vector<Interface>& loaded() const { return loaded_; }
  [[nodiscard]] int loads(Interface interface) const {
    return static_cast<int>(std::count(loaded_.begin(), loaded_.end(), interface));
  }
  /// Everything that was asked, oldest first.
  [[nodiscard]] const QStringList& calls() const { return calls_; }
  void forget() {
    calls_.clear();
    loaded_.clear();
  }

  void load(Interface interface) override {
    loaded_.push_back(interface);
    if (interface == Interface::TimerWindow) session_->window = this;
    if (interface == Interface::Setup) session_->setupController = &setup_;
    if (interface == Interface::CustomerList) session_->customerListController = &customers_;
    if (interface == Interface::ServicesList) session_->servicesListController = &services_;
    if (interface == Interface::WelcomeController) session_->welcomeController = &welcome_;
  }

  void show() override { calls_ << "show"; }
  void invalidateTracker() override { calls_ << "invalidateTracker"; }
  void close() override {
    calls_ << "close";
    if (session_->window == this) closeAfterWindow(*session_);
  }

 private:
  /// A window beside the timer window; leaves the session when it closes.
  class Beside final : public AuxiliaryWindow {
   public:
    Beside(ScriptedWindows& windows, QString name, AuxiliaryWindow* Session::*place)
        : windows_(windows), name_(std::move(name)), place_(place) {}
    void close() override {
      windows_.calls_ << QString("close " + name_);
      windows_.session_->*place_ = nullptr;
    }
    void bringToFront() override { windows_.calls_ << QString("bringToFront " + name_); }

   private:
    ScriptedWindows& windows_;
    QString name_;
    AuxiliaryWindow* Session::*place_;
  };

  Session* session_ = nullptr;
  std::vector<Interface> loaded_;
  QStringList calls_;
  Beside setup_{*this, "Setup", &Session::setupController};
  Beside customers_{*this, "CustomerList", &Session::customerListController};
  Beside services_{*this, "ServicesList", &Session::servicesListController};
  Beside welcome_{*this, "WelcomeController", &Session::welcomeController};
};

}  // namespace pendra
