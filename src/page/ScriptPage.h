#pragma once

#include <QJsonObject>
#include <QWebEnginePage>
#include <functional>

#include "OnePeer.h"

namespace pendra {

/// One page that does what requests say and reports every event of it. It is a local file, and stays it: it
/// can send to the one peer that it was given, and neither read another file nor go anywhere.
class ScriptPage final : public QWebEnginePage {
 public:
  using Report = std::function<void(const QJsonObject& event)>;

  /// `profile` outlives it.
  ScriptPage(QWebEngineProfile* profile, Report report);
  ~ScriptPage() override;

  /// Does one request: "load" or "evaluate".
  void handle(const QJsonObject& request);

 protected:
  bool acceptNavigationRequest(const QUrl& address, NavigationType type, bool isMainFrame) override;
  void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level, const QString& message, int line,
                                const QString& source) override;

 private:
  void startLoading(const QJsonObject& request);
  void evaluate(int id, const QString& script);

  Report report_;
  OnePeer requests_;
  bool isLoading_ = false;
};

}  // namespace pendra
