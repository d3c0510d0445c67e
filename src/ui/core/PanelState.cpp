#include "ui_core/PanelState.h"

#include <cmath>

#include "document/RunningTimers.h"
#include "model/ActivityTitle.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "ui_core/AwayNotice.h"
#include "ui_core/RunCommand.h"

namespace pendra {

namespace {

constexpr double kMinute = 60;

/// The tip is not written anew each second, so it does not count them.
QString wholeMinutes(double seconds) {
  return seconds < kMinute ? tr("less than a minute") : awayLength(std::floor(seconds / kMinute) * kMinute);
}

}  // namespace

QString whatTheKeyDoes() { return tr("Stop what runs, or start again what ran last"); }

PanelState::PanelState(Session& session, std::function<QString()> busyWith)
    : session_(session), busyWith_(std::move(busyWith)) {
  observations_.push_back(session_.documentChanges().observe([this] { follow(); }));
  observations_.push_back(session_.notices().changes().observe([this] { changes_.changed(); }));
  follow();
}

void PanelState::follow() {
  edits_ = {};
  if (const auto context = session_.context()) {
    edits_ = context->observe([this](const ChangeSet&) { changes_.changed(); });
  }
  changes_.changed();
}

PanelSign PanelState::sign() const {
  const auto& notices = session_.notices().standing();
  return {.hasDocument = session_.document() != nullptr,
          .running = static_cast<int>(running().size()),
          .asks = std::any_of(notices.begin(), notices.end(), [](const Notice& one) { return one.asks; })};
}

QString PanelState::toolTip() const {
  if (!session_.document()) return tr("Pendra");
  const auto timers = running();
  if (timers.empty()) return formatted(tr("%@: nothing runs"), {session_.document()->displayName()});
  QStringList lines;
  if (timers.size() > 1) lines << formatted(tr("%@ running"), {QString::number(timers.size())});
  for (const RunningTimer& timer : timers) {
    lines << formatted(tr("%@: %@"), {shortTitle(*timer.activity), wholeMinutes(timer.seconds())});
  }
  return lines.join(u'\n');
}

std::optional<double> PanelState::nextMinute() const {
  std::optional<double> next;
  for (const RunningTimer& timer : running()) {
    const double left = kMinute - std::fmod(std::max(0.0, timer.entry->length()), kMinute);
    next = std::min(next.value_or(left), left);
  }
  return next;
}

std::vector<RunningTimer> PanelState::running() const {
  const auto context = session_.context();
  return context ? runningTimers(*context) : std::vector<RunningTimer>();
}

std::vector<Activity*> PanelState::latest() const {
  const auto context = session_.context();
  return context ? latestActivities(*context) : std::vector<Activity*>();
}

void PanelState::start(const Ref<Activity>& activity) {
  edit(tr("Start"), [&] {
    if (activity && !activity->isRunning()) activity->startEntry();
  });
}

void PanelState::stop(const Ref<Activity>& activity) {
  edit(tr("Stop"), [&] {
    if (activity) activity->stop();
  });
}

void PanelState::stopAll() {
  edit(tr("Stop All"), [&] {
    for (const RunningTimer& timer : running()) timer.activity->stop();
  });
}

void PanelState::startOrStop() {
  if (!running().empty()) return stopAll();
  const auto last = latest();
  if (!last.empty()) start(last.front());
}

void PanelState::edit(const QString& name, const std::function<void()>& work) {
  runFromOutside(session_, busyWith_(), name, [&] {
    if (const auto context = session_.context()) std::ignore = context->edit(name, work);
  });
}

}  // namespace pendra
