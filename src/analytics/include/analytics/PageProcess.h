#pragma once
// The page runs in a process of its own: a web engine takes hundreds of megabytes and half a second to
// start, and may crash. Here it does so beside the program instead of in it, and where it is not
// installed, loading simply fails.

#include <QProcess>
#include <QTimer>
#include <chrono>
#include <map>

#include "analytics/ScriptHost.h"

class QJsonObject;

namespace pendra {

/// A page in the program "pendra-page", spoken to in lines of JSON through its standard input and output.
class PageProcess final : public ScriptHost {
 public:
  /// How long loading waits, so that the first window is drawn and used undisturbed.
  static constexpr std::chrono::milliseconds kStartDelay{1500};

  explicit PageProcess(QString program, std::chrono::milliseconds startDelay = kStartDelay);
  ~PageProcess() override;

  /// Where the program for pages is expected.
  static QString besideProgram();

  void setDelegate(Delegate* delegate) override { delegate_ = delegate; }
  void addUserScript(const QString& script) override { userScripts_ << script; }
  void load(const QString& address) override;
  void evaluate(const QString& script, std::function<void(const QString&)> done) override;

 private:
  void start();
  void send(const QJsonObject& request);
  void readAnswers();
  void handle(const QJsonObject& answer);
  /// Ends every script that waits for its answer; the page may yet come.
  void answerPending(const QString& reason);
  void processEnded(const QString& reason);

  QString program_;
  QString address_;
  QStringList userScripts_;
  Delegate* delegate_ = nullptr;
  std::map<int, std::function<void(const QString&)>> pending_;  ///< scripts without an answer yet
  int lastId_ = 0;
  QProcess process_;
  QTimer startTimer_;
  QTimer refusalTimer_;  ///< answers scripts that have no page to run in
};

}  // namespace pendra
