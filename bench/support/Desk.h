#pragma once

#include <QFile>
#include <QTemporaryDir>
#include <cstdlib>

#include "document/Session.h"
#include "link/ListSync.h"
#include "link/SubmissionRows.h"
#include "model/Model.h"
#include "platform/Identifiers.h"

namespace pendra::bench {

class Agreeing final : public Alerts {
  int runAlert(const Alert&) override { return kFirstButton; }
  void beginSheet(const Alert&, std::function<void(int)>) override {}
};
class NoPanels final : public Panels {
  std::optional<QString> runSavePanel(const SavePanel&) override { std::abort(); }
  std::optional<QString> runOpenPanel() override { std::abort(); }
  std::optional<QString> runFolderPanel() override { std::abort(); }
  void beginSavePanel(const SavePanel&, std::function<void(std::optional<QString>)>) override {
    std::abort();
  }
};
/// A desktop on which everything runs.
class Running final : public Workspace {
  bool isRunning(const QString&) const override { return true; }
  bool openUrl(const QString&) override { return false; }
  void reveal(const QString&) override {}
  Subscription observeLaunches(std::function<void(const QString&)>) override { return {}; }
};
class NoWindows final : public Windows {
 public:
  void show(WindowKind) override {}
  bool isOpen(WindowKind) const override { return false; }
  void close(WindowKind) override {}
  bool finishEditing() override { return true; }
};
class NoProgress final : public ProgressSink {
  void startSpinner(const QString&, int) override {}
  void showProgress(int, int) override {}
  void stopSpinner() override {}
  bool pause(std::chrono::milliseconds) override { return true; }
};

inline ObjectModel modelOfDocuments() {
  QFile schema(QStringLiteral(PENDRA_RESOURCES "/Corvel.momd"));
  if (!schema.open(QIODevice::ReadOnly)) std::abort();
  return objectModel(schema.readAll());
}

/// A session in a folder of its own, with nobody before it.
struct Desk {
  QTemporaryDir folder;
  SystemClock clock;
  Calendar calendar{QTimeZone::utc()};
  Places places{folder.path(), folder.path() + u"/cache", folder.path() + u"/config",
                folder.path() + u"/state"};
  UserDefaults defaults{places.defaultsFile()};
  Agreeing alerts;
  NoPanels panels;
  Running workspace;
  ModalDepth modals;
  NotificationCenter notifications;
  NoWindows windows;
  NoProgress progress;
  Session session{
      {clock, calendar, places, defaults, alerts, panels, workspace, modals, notifications, windows},
      modelOfDocuments()};
};

}  // namespace pendra::bench
