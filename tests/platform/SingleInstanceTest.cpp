#include "platform/SingleInstance.h"

#include <gtest/gtest.h>

#include <QLockFile>
#include <QThread>
#include <atomic>

#include "PrivateBus.h"
#include "platform/Identifiers.h"
#include "support/Events.h"
#include "support/LogCapture.h"
#include "support/Rows.h"
#include "support/TestPlaces.h"

namespace pendra {
namespace {

using Claim = SingleInstance::Claim;

struct Place {
  const char* name;
  bool hasBus;
};

class SingleInstanceTest : public testing::TestWithParam<Place> {
 protected:
  std::unique_ptr<SingleInstance> start() {
    return std::make_unique<SingleInstance>(GetParam().hasBus ? bus_.connect() : QDBusConnection("none"),
                                            places_.path(""));
  }

  /// A later start with this path, in its own thread as another process would be.
  Claim startLater(const StartRequest& request) {
    auto bus = GetParam().hasBus ? bus_.connect() : QDBusConnection("none");
    std::atomic<Claim> claimed = Claim::Unanswered;
    const std::unique_ptr<QThread> later(QThread::create([&] {
      SingleInstance instance(bus, places_.path(""));
      claimed = instance.claim(request);
    }));
    later->start();
    EXPECT_TRUE(eventually([&] { return later->isFinished(); }));
    return claimed;
  }

  TestPlaces places_;
  PrivateBus bus_;
};

TEST_P(SingleInstanceTest, ALaterStartHandsWhatItWasAskedForToTheFirst) {
  const auto first = start();
  ASSERT_EQ(first->claim({.path = "/first.pdr"}), Claim::First);
  const std::vector<StartRequest> asked{
      {.path = QString::fromUtf8("/home/zoë/Hours & 100%#1.pdr"), .activation = "panel-7_TIME4711"},
      {.action = "stop-all"},
      {.activation = "only to the front"},
      {}};
  EXPECT_EQ(startLater(asked.front()), Claim::HandedOver);  // before anybody can carry it out
  std::vector<StartRequest> taken;
  first->setOpener([&](const StartRequest& request) { taken.push_back(request); });
  for (auto next = asked.begin() + 1; next != asked.end(); ++next)
    EXPECT_EQ(startLater(*next), Claim::HandedOver);
  EXPECT_TRUE(eventually([&] { return taken == asked; }));
}

TEST_P(SingleInstanceTest, TheNextStartAfterTheEndIsTheFirstAgain) {
  auto first = start();
  ASSERT_EQ(first->claim({}), Claim::First);
  first.reset();
  EXPECT_EQ(startLater({}), Claim::First);
}

TEST_P(SingleInstanceTest, OneThatDoesNotAnswerIsNotWaitedForAndStillTakesTheFile) {
  const auto first = start();
  ASSERT_EQ(first->claim({}), Claim::First);
  QStringList opened;
  first->setOpener([&](const StartRequest& request) { opened << request.path; });
  const std::unique_ptr<QThread> later(QThread::create([&] {
    SingleInstance second(GetParam().hasBus ? bus_.connect() : QDBusConnection("none"), places_.path(""),
                          std::chrono::milliseconds(50));
    EXPECT_EQ(second.claim({.path = "/later.pdr"}), Claim::Unanswered);
  }));
  later->start();
  later->wait();  // meanwhile nothing of the first runs
  EXPECT_TRUE(eventually([&] { return opened == QStringList("/later.pdr"); }));
}

TEST(SingleInstance, WaitsForOneThatHasTheLockAndDoesNotListenYet) {
  const TestPlaces places;
  const QString socket = places.path(identifiers::kPendra);
  QLockFile held(socket + u".lock");
  ASSERT_TRUE(held.tryLock());
  bool takesItsPlace = false;
  const std::unique_ptr<QThread> later(QThread::create([&] {
    SingleInstance instance(QDBusConnection("none"), places.path(""));
    takesItsPlace = instance.claim({}) == Claim::First && QFile::exists(socket);
  }));
  later->start();
  QThread::msleep(50);
  held.unlock();
  later->wait();
  EXPECT_TRUE(takesItsPlace) << "not as one that meets nobody";
}

TEST(SingleInstance, StartsWhereNoInstancesCanMeet) {
  const LogCapture log;
  SingleInstance instance(QDBusConnection("none"), {});
  EXPECT_EQ(instance.claim({}), Claim::First);
  EXPECT_EQ(log.lines().size(), 1);
}

INSTANTIATE_TEST_SUITE_P(Places, SingleInstanceTest,
                         testing::Values(Place{"Bus", true}, Place{"Socket", false}), RowName());

}  // namespace
}  // namespace pendra
