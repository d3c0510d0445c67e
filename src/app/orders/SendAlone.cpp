#include <QDBusConnection>
#include <QThread>

#include "SendAll.h"
#include "document/Launch.h"
#include "document/Session.h"
#include "link/ChannelServer.h"
#include "platform/DesktopWorkspace.h"

namespace pendra::orders {

namespace {

/// The world of an order that no program carries out: there is nobody to ask and nothing to show.
class Nobody final : public Alerts, public Panels, public Windows, public ProgressSink {
 public:
  int runAlert(const Alert& alert) override {
    return kFirstButton + static_cast<int>(alert.buttons.size()) - 1;
  }
  void beginSheet(const Alert&, std::function<void(int)>) override {}

  std::optional<QString> runSavePanel(const SavePanel&) override { return std::nullopt; }
  std::optional<QString> runOpenPanel() override { return std::nullopt; }
  std::optional<QString> runFolderPanel() override { return std::nullopt; }
  void beginSavePanel(const SavePanel&, std::function<void(std::optional<QString>)> ended) override {
    ended(std::nullopt);
  }

  void show(WindowKind) override {}
  [[nodiscard]] bool isOpen(WindowKind) const override { return false; }
  void close(WindowKind) override {}
  [[nodiscard]] bool finishEditing() override { return true; }

  void startSpinner(const QString&, int) override {}
  void showProgress(int, int) override {}
  void stopSpinner() override {}
  [[nodiscard]] bool pause(std::chrono::milliseconds time) override {
    QThread::msleep(static_cast<unsigned long>(time.count()));
    return true;
  }
};

}  // namespace

Result<QVariantMap> sendAllOf(std::unique_ptr<OpenDocument> document, const ObjectModel& model,
                              const Clock& clock, const Calendar& calendar) {
  const Places places = Places::ofUser();
  UserDefaults defaults(places.defaultsFile());
  mergeByDefault(defaults);
  DesktopWorkspace workspace(QDBusConnection::sessionBus(), {}, [](const QString&) { return false; });
  ModalDepth modals;
  NotificationCenter notifications;
  Nobody nobody;
  UnaskedAlerts alerts(nobody);
  Session session(
      {clock, calendar, places, defaults, alerts, nobody, workspace, modals, notifications, nobody}, model);
  session.open(std::move(document));
  ConnectionChecks checks(session, connectOverChannel(), nobody);
  ListSync lists(session, checks);
  return sendAll({session, alerts, checks, lists});
}

}  // namespace pendra::orders
