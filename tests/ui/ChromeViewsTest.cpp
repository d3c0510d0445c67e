#include "ui/ChromeViews.h"

#include "support/Rows.h"

namespace pendra {
namespace {

struct FrameCase {
  const char* name;
  QSizeF container;
  QRectF top;
  QRectF bottom;
};

class ChromeFrames : public testing::TestWithParam<FrameCase> {};

TEST_P(ChromeFrames, FillTheContainerButKeepTheirHeight) {
  const FrameCase& row = GetParam();
  EXPECT_EQ(topViewFrame(7, row.container), row.top);
  EXPECT_EQ(bottomViewFrame(3, 5, row.container), row.bottom);
}

INSTANTIATE_TEST_SUITE_P(
    Chrome, ChromeFrames,
    testing::Values(FrameCase{"Large", {400, 300}, {7, 0, 400, 300}, {3, -5, 400, 300}},
                    FrameCase{"FooterExact", {400, 247}, {7, 0, 400, 247}, {3, -5, 400, 247}},
                    FrameCase{"FooterAbove", {400, 247.5}, {7, 0, 400, 247.5}, {3, -5, 400, 247.5}},
                    FrameCase{"HeaderAbove", {400, 124.5}, {7, 0, 400, 124.5}, {3, -127.5, 400, 247}},
                    FrameCase{"HeaderExact", {400, 124}, {7, 0, 400, 124}, {3, -128, 400, 247}},
                    FrameCase{"Small", {90, 100}, {7, 0, 90, 124}, {3, -152, 90, 247}}),
    RowName());

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
