#include <gtest/gtest.h>

#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <ctime>
#include <deque>

#include "PrivateBus.h"
#include "platform/IdleSource.h"
#include "platform/SleepSource.h"
#include "support/Events.h"

namespace pendra {
namespace {

/// A service that answers one method from a script, its last line again and again.
class Scripted final : public QDBusVirtualObject {
 public:
  Scripted(QDBusConnection bus, const QString& name, const QString& path, QString method,
           std::deque<QVariant> script)
      : method_(std::move(method)), script_(std::move(script)) {
    bus.registerVirtualObject(path, this);
    bus.registerService(name);
  }
  [[nodiscard]] QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
    if (message.member() != method_) return false;
    const QVariant answer = script_.front();
    if (script_.size() > 1) script_.pop_front();
    return bus.send(message.createReply(answer));
  }

 private:
  QString method_;
  std::deque<QVariant> script_;
};

class PresenceTest : public testing::Test {
 protected:
  std::optional<double> ask(SessionIdle& idle) {
    std::optional<std::optional<double>> answer;
    QObject asker;
    idle.ask(asker, [&](std::optional<double> seconds) { answer = seconds; });
    EXPECT_TRUE(eventually([&] { return answer.has_value(); }));
    return answer.value_or(std::nullopt);
  }
  static std::unique_ptr<Scripted> screenSaver(const QDBusConnection& bus, std::deque<QVariant> counts) {
    return std::make_unique<Scripted>(bus, "org.freedesktop.ScreenSaver", "/org/freedesktop/ScreenSaver",
                                      "GetSessionIdleTime", std::move(counts));
  }

  PrivateBus bus_;
};

TEST_F(PresenceTest, AsksWhoeverIsThereInTurn) {
  const auto bus = bus_.connect();
  SessionIdle idle(bus, bus, std::chrono::milliseconds(5));
  EXPECT_EQ(ask(idle), std::nullopt) << "nobody can say";

  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  const quint64 since = static_cast<quint64>(now.tv_sec - 90) * 1000000;
  const QVariantMap hint{{"IdleHint", true}, {"IdleSinceHintMonotonic", since}};
  const QVariantMap none{{"IdleHint", false}, {"IdleSinceHintMonotonic", since}};
  const Scripted login(bus_.connect(), "org.freedesktop.login1", "/org/freedesktop/login1/session/auto",
                       "GetAll", {hint, none});
  EXPECT_NEAR(ask(idle).value_or(0), 90, 30);
  EXPECT_EQ(ask(idle), 0) << "a hint of earlier";

  const auto saver = screenSaver(bus_.connect(), {700U, 702U, 705U});
  const Scripted compositor(bus_.connect(), "org.gnome.Mutter.IdleMonitor",
                            "/org/gnome/Mutter/IdleMonitor/Core", "GetIdletime",
                            {QVariant::fromValue<quint64>(63500)});
  SessionIdle later(bus, bus, std::chrono::milliseconds(5));
  EXPECT_EQ(ask(later), 63.5);
}

TEST_F(PresenceTest, TheUnitOfAScreenSaverShowsInHowItCounts) {
  const struct {
    std::deque<QVariant> counts;
    std::vector<double> answers;
    const char* why;
  } cases[] = {
      {{700U, 702U, 705U}, {702, 705}, "seconds"},
      {{700U, 2700U, 660000U}, {2.7, 660}, "milliseconds"},
      {{700U, 1U, 700U, 702U}, {0, 702}, "touched meanwhile: not known before the next question"},
      {{0U, 0U, 0U}, {0, 0}, "touched all the time"},
  };
  for (const auto& one : cases) {
    const auto bus = bus_.connect();
    auto owner = bus_.connect();
    const auto saver = screenSaver(owner, one.counts);
    SessionIdle idle(bus, bus, std::chrono::milliseconds(5));
    for (const double answer : one.answers) EXPECT_EQ(ask(idle), answer) << one.why;
    owner.unregisterService("org.freedesktop.ScreenSaver");
  }
}

TEST_F(PresenceTest, WhoHasGoneIsNotAnswered) {
  SessionIdle idle(bus_.connect(), bus_.connect());
  bool wasAnswered = false;
  {
    QObject asker;
    idle.ask(asker, [&](std::optional<double>) { wasAnswered = true; });
  }
  ask(idle);
  EXPECT_FALSE(wasAnswered);
}

TEST_F(PresenceTest, SleepIsToldByTheLoginServiceAndCountedByTheMachine) {
  MachineSleep sleep(bus_.connect());
  int told = 0;
  const auto observing = sleep.changes().observe([&] { ++told; });
  const Uptime before = sleep.uptime();
  auto login = bus_.connect();
  login.registerService("org.freedesktop.login1");
  for (const bool begins : {true, false}) {
    auto signal = QDBusMessage::createSignal("/org/freedesktop/login1", "org.freedesktop.login1.Manager",
                                             "PrepareForSleep");
    login.send(signal << begins);
  }
  EXPECT_TRUE(eventually([&] { return told == 2; }));
  const Uptime after = sleep.uptime();
  EXPECT_GT(after.awake, before.awake);
  EXPECT_NEAR(after.asleep, before.asleep, 1) << "nobody slept";
}

}  // namespace
}  // namespace pendra
