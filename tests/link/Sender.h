#pragma once

#include <QFile>

#include "ListedRows.h"
#include "document/DocumentLoading.h"
#include "link/ChannelServer.h"
#include "link/Submission.h"
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
  [[nodiscard]] Places places() const { return {folder, folder + u"/cache", folder + u"/config"}; }
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

/// Opens the document of the place and sends all of its time over the real channel, once.
inline void sendAll(const SendingPlace& place) {
  const Places places = place.places();
  const SystemClock clock;
  const Calendar calendar{QTimeZone("Europe/Berlin")};
  UserDefaults defaults{places.defaultsFile()};
  HonestUser user{place};
  ScriptedPanels panels;
  ScriptedWorkspace workspace;
  ModalDepth modals;
  NotificationCenter notifications;
  ScriptedWindows windows;
  Session session{
      {clock, calendar, places, defaults, user, panels, workspace, modals, notifications, windows},
      testModel()};
  windows.setSession(session);
  workspace.setRunning(identifiers::kVantor, true);
  defaults.setBoolean(preferences::kMergeSubmissions, place.merging);
  loadDocument(session, place.document());

  NoProgress progress;
  ConnectionChecks checks{session, connectOverChannel({.reply = std::chrono::milliseconds(500)}), progress};
  ListSync lists{session, checks};
  ListedRows rows;
  ScriptedSummary summary;
  for (TimeEntry* period : session.context()->all<TimeEntry>()) rows.add(*period);
  Submission({session, checks, lists, rows, summary}).sendSelectedTime();
}

}  // namespace pendra
