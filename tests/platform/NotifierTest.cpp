#include "platform/Notifier.h"

#include <gmock/gmock.h>

#include <stdexcept>

#include "platform/NotificationCenter.h"
#include "support/Print.h"

namespace pendra {
namespace {

using testing::ElementsAre;

class NotifierTest : public testing::Test {
 protected:
  Notifier::Subscription observe(const std::string& name) {
    return notifier_.observe([this, name] { events_.push_back(name + " did"); },
                             [this, name] { events_.push_back(name + " will"); });
  }

  Notifier notifier_;
  std::vector<std::string> events_;
};

TEST_F(NotifierTest, TellsInTheOrderOfComingAroundTheChange) {
  const auto first = observe("first");
  const auto second = observe("second");
  {
    const Notifier::Change change(notifier_);
    events_.emplace_back("change");
  }
  EXPECT_THAT(events_, ElementsAre("first will", "second will", "change", "first did", "second did"));
}

TEST_F(NotifierTest, AnnouncesTheEndOfAChangeThatThrows) {
  const auto subscription = observe("observer");
  const auto change = [this] {
    const Notifier::Change announced(notifier_);
    throw std::runtime_error("the change failed");
  };
  EXPECT_THROW(change(), std::runtime_error);
  EXPECT_THAT(events_, ElementsAre("observer will", "observer did"));
}

TEST_F(NotifierTest, AnObserverMayEndItselfAndOthersWhileItIsTold) {
  Notifier::Subscription second;
  auto first = notifier_.observe([&] {
    events_.emplace_back("first");
    second = {};
  });
  second = observe("second");
  notifier_.changed();
  notifier_.changed();
  EXPECT_THAT(events_, ElementsAre("second will", "first", "first"));
}

TEST(NotificationCenterTest, TellsTheListenersOfThatNameOnly) {
  NotificationCenter center;
  QStringList heard;
  const auto hear = [&heard](const NotificationCenter::UserInfo& info) {
    heard << info.first + u'=' + info.second;
  };
  const auto listening = center.observe("Launch", hear);
  auto ended = center.observe("Launch", hear);
  const auto other = center.observe("Quit", hear);
  ended.reset();
  center.post("Launch", {"key", "value"});
  EXPECT_EQ(heard, QStringList("key=value"));
}

}  // namespace
}  // namespace pendra
