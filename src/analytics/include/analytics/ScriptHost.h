#pragma once

#include <QStringList>
#include <functional>

namespace pendra {

/// An off-screen page that runs scripts. Everything it answers comes later, never from within a call.
class ScriptHost {
 public:
  /// Who is told what happens to the page.
  class Delegate {
   public:
    virtual ~Delegate() = default;
    virtual void didFinishNavigation() = 0;
    /// The page could not be loaded, or has ended; the next load() brings it back.
    virtual void didFailNavigation(const QString& error) = 0;
    /// The page posted `body` to `window.webkit.messageHandlers[name]`.
    virtual void didReceiveScriptMessage(const QString& name, const QString& body) = 0;
  };

  virtual ~ScriptHost() = default;
  /// `delegate` outlives the host or is set to none before it dies.
  virtual void setDelegate(Delegate* delegate) = 0;
  /// A script that runs at the end of each document that is loaded from now on.
  virtual void addUserScript(const QString& script) = 0;
  /// Loads the page at this address. Of everything else it can reach `peer`, and nothing more.
  virtual void load(const QString& address, const QString& peer) = 0;
  /// Runs a script in the page; `done` gets what it threw, or an empty text.
  virtual void evaluate(const QString& script, std::function<void(const QString& error)> done) = 0;
};

}  // namespace pendra
