#pragma once

#include <QFile>

#include "ListedRows.h"
#include "channel/CallingEnd.h"
#include "document/DocumentLoading.h"
#include "link/ChannelServer.h"
#include "link/Submission.h"
#include "link/VantorFailure.h"
#include "platform/Identifiers.h"
#include "platform/Preferences.h"
#include "support/ScriptedPanels.h"
#include "support/ScriptedWindows.h"
#include "support/ScriptedWorkspace.h"
#include "support/TestModel.h"
#include "support/TestPlaces.h"

namespace pendra {

/// Where one round of sending takes place.
struct SendingPlace {
  QString folder;
  bool merging = false;

  [[nodiscard]] QString document() const { return folder + u"/Test.pdr"; }
  [[nodiscard]] QString records() const { return folder + u"/records"; }
  [[nodiscard]] Places places() const {
    return {folder, folder + u"/cache", folder + u"/config", folder + u"/state"};
  }
};

/// Looks into what Vantor received before answering whether a record arrived; agrees to everything else.
class HonestUser final : public Alerts {
 public:
  explicit HonestUser(const SendingPlace& place) : records_(place.records()) {}

  int runAlert(const Alert& alert) override {
    if (!alert.message.startsWith(u"Did the time for")) return kFirstButton;
    const QString job = alert.message.section(QStringLiteral(" - "), 1, 1).section(u' ', 1);
    const QByteArray sent = "<job>j" + job.toLatin1() + "</job>";
    return contentsOf(records_).contains(sent) ? kFirstButton : kSecondButton;
  }
  void beginSheet(const Alert&, std::function<void(int)>) override {}

 private:
  QString records_;
};

class NoProgress final : public ProgressSink {
 public:
  void startSpinner(const QString&, int) override {}
  void showProgress(int, int) override {}
  void stopSpinner() override {}
  bool pause(std::chrono::milliseconds) override { return true; }
};

/// The document of the place, and a user who has the program talk to Vantor over the real channel.
class Sender {
 public:
  explicit Sender(const SendingPlace& place, WaitPort* wait = nullptr, int milliseconds = 500)
      : places_(place.places()),
        user_(place),
        checks_(session,
                connectOverChannel(TimeLimits{.reply = std::chrono::milliseconds(milliseconds)}, wait),
                progress_) {
    windows_.setSession(session);
    workspace_.setRunning(identifiers::kVantor, true);
    defaults_.setBoolean(preferences::kMergeSubmissions, place.merging);
    loadDocument(session, place.document());
  }
  /// Sends all of its time, once.
  void send() {
    ListedRows rows;
    ScriptedSummary summary;
    for (TimeEntry* period : session.context()->all<TimeEntry>()) rows.add(*period);
    Submission({session, checks_, lists_, rows, summary}).sendSelectedTime();
  }
  void updateLists() { lists_.updateLists(); }

 private:
  Places places_;
  SystemClock clock_;
  Calendar calendar_{QTimeZone("Europe/Berlin")};
  UserDefaults defaults_{places_.defaultsFile()};
  HonestUser user_;
  ScriptedPanels panels_;
  ScriptedWorkspace workspace_;
  ModalDepth modals_;
  NotificationCenter notifications_;
  ScriptedWindows windows_;

 public:
  Session session{
      {clock_, calendar_, places_, defaults_, user_, panels_, workspace_, modals_, notifications_, windows_},
      testModel()};

 private:
  NoProgress progress_;
  ConnectionChecks checks_;
  ListSync lists_{session, checks_};
};

}  // namespace pendra
