#pragma once

#include <deque>

#include "analytics/ScriptHost.h"
#include "support/Print.h"

namespace pendra {

/// A page that runs nothing: it notes what it is asked, and the test says what happens to it.
class RecordingHost final : public ScriptHost {
 public:
  void setDelegate(Delegate* delegate) override { page = delegate; }
  void addUserScript(const QString&) override {}
  void load(const QString& address, const QString&) override { loaded << address; }
  void evaluate(const QString& script, std::function<void(const QString&)> done) override {
    scripts << script;
    done(errors.empty() ? QString() : errors.front());
    if (!errors.empty()) errors.pop_front();
  }

  Delegate* page = nullptr;
  QStringList loaded;
  QStringList scripts;
  std::deque<QString> errors;  ///< what the next scripts throw
};

}  // namespace pendra
