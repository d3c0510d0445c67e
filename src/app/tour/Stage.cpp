#include "Stage.h"

#include <QDir>
#include <QFile>

#include "analytics/Consent.h"
#include "model/Model.h"
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

/// A desktop on which nothing runs and nothing opens.
class EmptyWorkspace final : public Workspace {
 public:
  [[nodiscard]] bool isRunning(const QString&) const override { return false; }
  bool openUrl(const QString&) override { return false; }
  void reveal(const QString&) override {}
  [[nodiscard]] Subscription observeLaunches(std::function<void(const QString&)>) override { return {}; }
};

}  // namespace

Stage::Stage(const std::optional<SampleOptions>& sample)
    : now_(SampleClock(sample.value_or(SampleOptions{}).today).now()),
      environment_(makeEnvironment()),
      program_(environment_) {
  Consent(environment_.defaults).noticeAnswered();  // no picture is about the statistics
  if (sample) writeSample(*sample);
  program_.launch({});
}

Stage::~Stage() {
  program_.prepareEnd();  // stops the timers, so that nothing is asked
  [[maybe_unused]] const bool closed = program_.mayEnd();
}

Environment Stage::makeEnvironment() {
  const QString home = home_.path();
  return {.places = {.documents = home + u"/Documents",
                     .caches = home + u"/caches",
                     .config = home,
                     .state = home + u"/state"},
          .clock = std::make_unique<StageClock>(now_),
          .calendar = Calendar(QTimeZone::utc()),
          .workspace = std::make_unique<EmptyWorkspace>()};
}

void Stage::writeSample(const SampleOptions& options) {
  const QString path = home_.filePath(QStringLiteral("Hours.pdr"));
  const ObjectModel model = loadObjectModel();
  ObjectContext context(model, *environment_.clock, environment_.calendar);
  if (!context.open(path)) return;
  fillSample(context, options);
  if (context.save()) environment_.defaults.setText(preferences::kLastDocument, path);
}

}  // namespace pendra
