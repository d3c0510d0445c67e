#include "platform/Notifier.h"

#include <gmock/gmock.h>

#include <stdexcept>

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
  const auto change = [this] {
    const Notifier::Change announced(notifier_);
    events_.emplace_back("change");
    throw std::runtime_error("the change failed");
  };
  EXPECT_THROW(change(), std::runtime_error);
  EXPECT_THAT(events_, ElementsAre("first will", "second will", "change", "first did", "second did"));
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

}  // namespace
}  // namespace pendra
