#include "ui/FooterView.h"

#include <gtest/gtest.h>

namespace pendra {
namespace {

TEST(FooterView, FollowsItsContainerAndIsCutOffAtTheTop) {
  QWidget container;
  const FooterView footer(&container);
  container.resize(300, 100);
  container.show();
  EXPECT_EQ(footer.geometry(), QRect(0, 100 - 247, 300, 247));
  container.resize(320, 400);
  EXPECT_EQ(footer.geometry(), QRect(0, 0, 320, 400));
}

}  // namespace
}  // namespace pendra
