#pragma once
// The page runs in a process of its own: a web engine takes hundreds of megabytes and half a second to
// start, and may crash. Here it does so beside the program instead of in it, only for as long as it has
// something to do, and where it is not installed, loading simply fails.

#include <QProcess>
#include <QTimer>
#include <chrono>
#include <map>

#include "analytics/ScriptHost.h"

class QJsonObject;

namespace pendra {

/// When a page is started and ended.
struct PageDelays {
  std::chrono::milliseconds start{1500};   ///< so that the first window is drawn and used undisturbed
  std::chrono::milliseconds rest{10'000};  ///< how long a page is kept that neither does nor says anything
};

/// A page in the program "pendra-page", spoken to in lines of JSON through its standard input and output.
class PageProcess final : public ScriptHost {
 public:
  explicit PageProcess(QString program, PageDelays delays = {});
  ~PageProcess() override;

  /// The program for pages as it is installed, or the build's own.
  static QString installed();

  void setDelegate(Delegate* delegate) override { delegate_ = delegate; }
  void addUserScript(const QString& script) override { userScripts_ << script; }
  void load(const QString& address, const QString& peer) override;
  void evaluate(const QString& script, std::function<void(const QString&)> done) override;

 private:
  void start();
  void stop();
  void send(const QJsonObject& request);
  void readAnswers();
  void handle(const QJsonObject& answer);
  /// Ends every script that waits for its answer; the page may yet come.
  void answerPending(const QString& reason);
  void processEnded(const QString& reason);

  QString program_;
  QString address_;
  QString peer_;
  QStringList userScripts_;
  Delegate* delegate_ = nullptr;
  std::map<int, std::function<void(const QString&)>> pending_;  ///< scripts without an answer yet
  int lastId_ = 0;
  QProcess process_;
  QTimer startTimer_;
  QTimer restTimer_;
  QTimer refusalTimer_;  ///< answers scripts that have no page to run in
};

}  // namespace pendra
