#pragma once

#include <QStringList>
#include <set>

#include "document/DocumentClosing.h"
#include "document/Session.h"
#include "document/Windows.h"

namespace pendra {

/// Windows that are only noted: which were made, and which were brought to the front or closed.
class ScriptedWindows final : public Windows {
 public:
  /// Given once the session exists, which needs the windows first.
  void setSession(Session& session) { session_ = &session; }

  /// The windows that were made, oldest first.
  [[nodiscard]] const std::vector<WindowKind>& made() const { return made_; }
  [[nodiscard]] int made(WindowKind kind) const {
    return static_cast<int>(std::count(made_.begin(), made_.end(), kind));
  }
  /// What else was asked, oldest first.
  [[nodiscard]] const QStringList& calls() const { return calls_; }
  void forget() {
    calls_.clear();
    made_.clear();
  }
  /// The window is gone as if it had never been there.
  void lose(WindowKind kind) { open_.erase(kind); }

  void show(WindowKind kind) override {
    if (!open_.insert(kind).second) {
      calls_ << QString(u"show " + nameOf(kind));
    } else {
      made_.push_back(kind);
    }
  }
  [[nodiscard]] bool isOpen(WindowKind kind) const override { return open_.contains(kind); }
  void close(WindowKind kind) override {
    if (open_.erase(kind) == 0) return;
    calls_ << QString(u"close " + nameOf(kind));
    if (kind == WindowKind::Timer) closeAfterWindow(*session_);
  }
  [[nodiscard]] bool finishEditing() override { return finishes; }
  bool finishes = true;  ///< false: a text is being typed that cannot be stored

 private:
  [[nodiscard]] static QString nameOf(WindowKind kind) {
    return QStringList{QStringLiteral("Timer"),        QStringLiteral("Setup"),
                       QStringLiteral("CustomerList"), QStringLiteral("ServicesList"),
                       QStringLiteral("Welcome"),      QStringLiteral("About"),
                       QStringLiteral("Preferences"),  QStringLiteral("Restore")}
        .at(static_cast<int>(kind));
  }

  Session* session_ = nullptr;
  std::set<WindowKind> open_;
  std::vector<WindowKind> made_;
  QStringList calls_;
};

}  // namespace pendra
