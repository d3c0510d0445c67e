#include "ui/DisplayTick.h"

#include <QEvent>

#include "document/RunningTimers.h"
#include "document/Session.h"
#include "model/TimeEntry.h"

namespace pendra {

namespace {

constexpr std::chrono::milliseconds kSecond{1000};
/// The clock may be set, and a timer stands still while the machine sleeps; so it is looked now and then.
constexpr double kLongestWait = 600;

std::chrono::milliseconds untilMidnight(const Ports& ports) {
  const Instant now = ports.clock.now();
  const Instant midnight = ports.calendar.startOfDay(ports.calendar.day(now).addDays(1));
  return std::chrono::milliseconds(static_cast<qint64>(std::clamp(midnight - now, 0.0, kLongestWait) * 1000) +
                                   1);
}

}  // namespace

DisplayTick::DisplayTick(Session& session, QWidget& window, std::function<void()> told)
    : QObject(&window), session_(session), window_(window), told_(std::move(told)) {
  connect(&next_, &QTimer::timeout, this, [this] { tell(); });
  window.installEventFilter(this);
  documents_ = session.documentChanges().observe([this] { follow(); });
  follow();
}

bool DisplayTick::eventFilter(QObject*, QEvent* event) {
  if (event->type() == QEvent::Hide) next_.stop();
  if (event->type() == QEvent::Show || event->type() == QEvent::WindowActivate) tell();
  return false;
}

void DisplayTick::follow() {
  edits_ = {};
  if (const auto context = session_.context()) {
    edits_ = context->observe([this](const ChangeSet& news) {
      if (news.touches<TimeEntry>()) wait();
    });
  }
  wait();
}

void DisplayTick::tell() {
  told_();
  wait();
}

/// A timer that counts the seconds already goes on in its own step.
void DisplayTick::wait() {
  const auto context = session_.context();
  if (!context || !window_.isVisible()) return next_.stop();
  const bool runs = isTimeRunning(*context);
  if (runs && next_.isActive() && next_.intervalAsDuration() == kSecond) return;
  next_.start(runs ? kSecond : untilMidnight(session_.ports()));
}

}  // namespace pendra
