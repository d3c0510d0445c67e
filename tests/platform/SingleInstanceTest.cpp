#include "platform/SingleInstance.h"

#include <gtest/gtest.h>

#include <QThread>
#include <atomic>

#include "PrivateBus.h"
#include "platform/Identifiers.h"
#include "support/Events.h"
#include "support/Rows.h"
#include "support/TestPlaces.h"

namespace pendra {
namespace {

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

  /// A later start with this path, in its own thread as another process would be. Whether it claimed.
  bool startLater(const QString& path) {
    auto bus = GetParam().hasBus ? bus_.connect() : QDBusConnection("none");
    std::atomic<bool> claimed = false;
    const std::unique_ptr<QThread> later(QThread::create([&] {
      SingleInstance instance(bus, places_.path(""));
      claimed = instance.claim(path);
    }));
    later->start();
    EXPECT_TRUE(eventually([&] { return later->isFinished(); }));
    return claimed;
  }

  TestPlaces places_;
  PrivateBus bus_;
};

TEST_P(SingleInstanceTest, ALaterStartHandsItsFileToTheFirst) {
  const auto first = start();
  ASSERT_TRUE(first->claim("/first.pdr"));
  const QString path = QString::fromUtf8("/home/zoë/Hours & 100%#1.pdr");
  EXPECT_FALSE(startLater(path));
  QStringList opened;
  EXPECT_TRUE(eventually([&] {
    first->setOpener([&](const QString& handed) { opened << handed; });
    return !opened.isEmpty();
  }));
  EXPECT_FALSE(startLater({}));
  EXPECT_TRUE(eventually([&] { return opened.size() == 2; }));
  EXPECT_EQ(opened, QStringList({path, QString()}));
}

TEST_P(SingleInstanceTest, TheNextStartAfterTheEndIsTheFirstAgain) {
  auto first = start();
  ASSERT_TRUE(first->claim({}));
  first.reset();
  EXPECT_TRUE(startLater({}));
}

INSTANTIATE_TEST_SUITE_P(Places, SingleInstanceTest,
                         testing::Values(Place{"Bus", true}, Place{"Socket", false}), RowName());

}  // namespace
}  // namespace pendra
