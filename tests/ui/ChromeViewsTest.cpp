#include "ui/ChromeViews.h"

#include <gtest/gtest.h>

namespace pendra {
namespace {

TEST(ChromeViews, FollowTheirContainer) {
  QWidget container;
  PendraTopView top(&container);
  PendraBottomView bottom(&container);
  container.resize(300, 100);
  container.show();
  EXPECT_EQ(top.geometry(), QRect(0, 0, 300, 124));
  EXPECT_EQ(bottom.geometry(), QRect(0, 100 - 247, 300, 247));
  container.resize(320, 400);
  EXPECT_EQ(top.geometry(), QRect(0, 0, 320, 400));
  EXPECT_EQ(bottom.geometry(), QRect(0, 0, 320, 400));
}

}  // namespace
}  // namespace pendra
