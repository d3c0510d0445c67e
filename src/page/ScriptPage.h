#pragma once

#include <QJsonObject>
#include <QWebEnginePage>
#include <functional>

namespace pendra {

/// One page that does what requests say and reports every event of it.
class ScriptPage final : public QWebEnginePage {
 public:
  using Report = std::function<void(const QJsonObject& event)>;

  ScriptPage(QWebEngineProfile* profile, Report report);

  /// Does one request: "load" or "evaluate".
  void handle(const QJsonObject& request);

 protected:
  void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level, const QString& message, int line,
                                const QString& source) override;

 private:
  void startLoading(const QJsonObject& request);
  void evaluate(int id, const QString& script);

  Report report_;
};

}  // namespace pendra
