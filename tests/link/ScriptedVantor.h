#pragma once

#include "link/ConnectionChecks.h"
#include "link/ListSync.h"
#include "link/VantorFailure.h"
#include "platform/Identifiers.h"
#include "support/TestSession.h"

namespace pendra {

/// A Vantor that answers what the test says. It keeps what it was asked, oldest first, across connections.
class ScriptedVantor {
 public:
  std::optional<QString> company = "/Books/Acme Ltd.cmp";
  QStringList employees{"Clerk 1", "Clerk 2"};
  std::optional<std::vector<VantorItem>> services{std::in_place};
  std::optional<std::vector<VantorItem>> customers{std::in_place};
  std::optional<std::vector<VantorItem>> jobs{std::in_place};
  bool accepts = true;
  bool hasChannel = true;
  /// Runs when a question arrives, before it is answered; may throw what the channel throws.
  std::function<void(const QString&)> whenAsked;
  /// Runs when a record arrives, before it is answered; may throw what the channel throws.
  std::function<void(const QString&)> whenSubmitted;

  QStringList asked;
  QStringList records;
  int openChannels = 0;
  QStringList socketPaths;

  [[nodiscard]] ConnectToVantor connector() {
    return [this](const QString& server, const QString& client) -> Result<std::unique_ptr<RemoteServer>> {
      socketPaths = {server, client};
      if (!hasChannel) return Error{.domain = "POSIX", .code = 22, .text = "the folder is no folder"};
      return std::unique_ptr<RemoteServer>(std::make_unique<Channel>(*this));
    };
  }
  [[nodiscard]] int timesAsked(const QString& what) const { return static_cast<int>(asked.count(what)); }

 private:
  class Channel final : public RemoteServer {
   public:
    explicit Channel(ScriptedVantor& vantor) : vantor_(vantor) { ++vantor_.openChannels; }
    ~Channel() override { --vantor_.openChannels; }
    std::optional<QString> companyFileName() override { return noted("companyFileName", vantor_.company); }
    QStringList employeeNames() override { return noted("employees", vantor_.employees); }
    std::optional<std::vector<VantorItem>> services() override { return noted("services", vantor_.services); }
    std::optional<std::vector<VantorItem>> customers() override {
      return noted("customers", vantor_.customers);
    }
    std::optional<std::vector<VantorItem>> jobs() override { return noted("jobs", vantor_.jobs); }
    bool canTalkToPendra() override { return noted("canTalkToPendra", vantor_.accepts); }
    void submitTime(const QString& record) override {
      vantor_.asked << "submitTime";
      if (vantor_.whenSubmitted) vantor_.whenSubmitted(record);
      vantor_.records << record;
    }

   private:
    template <class Answer>
    Answer noted(const char* what, const Answer& answer) {
      vantor_.asked << what;
      if (vantor_.whenAsked) vantor_.whenAsked(what);
      return answer;
    }
    ScriptedVantor& vantor_;
  };
};

/// Notes how the spinner ran and what progress was shown. A pause moves the clock on, nothing else does.
class NotedProgress final : public ProgressSink {
 public:
  explicit NotedProgress(ManualClock& clock) : clock_(clock) {}
  QStringList shown;
  bool spinning = false;
  bool cancelsPauses = false;

  void startSpinner(const QString& words, int answers) override {
    spinning = true;
    if (answers > 0) shown << words + u" " + QString::number(answers);
  }
  void showProgress(int position, int total) override {
    shown << QString::number(position) + u" of " + QString::number(total);
  }
  void stopSpinner() override { spinning = false; }
  bool pause(std::chrono::milliseconds time) override {
    clock_.advance(static_cast<double>(time.count()) / 1000);
    return !cancelsPauses;
  }

 private:
  ManualClock& clock_;
};

inline VantorItem item(const QString& name, const QString& id) {
  return {.name = name, .id = id, .parent = {}};
}
inline VantorItem jobItem(const QString& name, const QString& id, const QString& parent) {
  return {.name = name, .id = id, .parent = parent};
}

/// An open linked document beside a running Vantor.
class LinkTest : public testing::Test {
 protected:
  LinkTest() {
    desk.openDocument(false);
    desk.workspace.setRunning(identifiers::kVantor, true);
  }
  ObjectContext& context() { return *desk.session.context(); }
  Identity& identity() { return *desk.session.settings()->identity(); }

  TestSession desk;
  ScriptedVantor vantor;
  NotedProgress progress{desk.clock};
  ConnectionChecks checks{desk.session, vantor.connector(), progress};
  ListSync lists{desk.session, checks};
};

}  // namespace pendra
