#include "Stage.h"

#include <QDir>
#include <QFile>

#include "analytics/Consent.h"
#include "model/Model.h"
#include "platform/Identifiers.h"
#include "platform/Preferences.h"
#include "platform/Resources.h"
#include "ui/TimerWindowController.h"

namespace pendra {

namespace {

/// The stage's clock.
class StageClock final : public Clock {
 public:
  explicit StageClock(const Instant& now) : now_(now) {}
  [[nodiscard]] Instant now() const override { return now_; }

 private:
  const Instant& now_;
};

/// A desktop on which nothing runs but perhaps Vantor, and nothing opens.
class EmptyWorkspace final : public Workspace {
 public:
  explicit EmptyWorkspace(bool withVantor) : withVantor_(withVantor) {}

  [[nodiscard]] bool isRunning(const QString& identifier) const override {
    return withVantor_ && identifier == identifiers::kVantor;
  }
  bool openUrl(const QString&) override { return false; }
  void reveal(const QString&) override {}
  [[nodiscard]] Subscription observeLaunches(std::function<void(const QString&)>) override { return {}; }

 private:
  bool withVantor_;
};

}  // namespace

Stage::Stage(const std::optional<SampleOptions>& sample,
             const std::function<void(const QString& caches)>& vantor)
    : now_(SampleClock(sample.value_or(SampleOptions{}).today).now()),
      environment_(makeEnvironment(vantor != nullptr)),
      program_(environment_) {
  Consent(environment_.defaults).noticeAnswered();  // no picture is about the statistics
  if (sample) writeSample(*sample);
  if (vantor) {
    environment_.defaults.setBoolean(preferences::kIntroduced, true);
    vantor(environment_.places.caches);
  }
  program_.launch({});
  if (vantor) program_.session().showIntroSheet = false;
}

Stage::~Stage() {
  program_.prepareEnd();  // stops the timers, so that nothing is asked
  [[maybe_unused]] const bool closed = program_.mayEnd();
}

Environment Stage::makeEnvironment(bool withVantor) {
  const QString home = home_.path();
  return {.places = {.documents = home + u"/Documents",
                     .caches = home + u"/caches",
                     .config = home,
                     .state = home + u"/state"},
          .clock = std::make_unique<StageClock>(now_),
          .calendar = std::make_unique<Calendar>(QTimeZone::utc()),
          .workspace = std::make_unique<EmptyWorkspace>(withVantor)};
}

void Stage::writeSample(const SampleOptions& options) {
  const QString path = home_.filePath(QStringLiteral("Hours.pdr"));
  const ObjectModel model = loadObjectModel();
  ObjectContext context(model, *environment_.clock, *environment_.calendar);
  if (!context.open(path)) return;
  fillSample(context, options);
  if (context.save()) environment_.defaults.setText(preferences::kLastDocument, path);
}

}  // namespace pendra
