// What nobody foresaw fails a test: every other one relies on that.
#include <gtest/gtest-spi.h>

#include "support/ScriptedAlerts.h"
#include "support/ScriptedPanels.h"

namespace pendra {
namespace {

TEST(ScriptedPorts, FailTheTestAtWhatNobodyForesaw) {
  ScriptedAlerts alerts;
  const Alert question{.message = "Stop?", .informative = {}, .buttons = {"OK", "Cancel"}};
  EXPECT_NONFATAL_FAILURE(EXPECT_EQ(alerts.runAlert(question), kSecondButton), "Nobody foresaw");
  ScriptedPanels panels;
  EXPECT_NONFATAL_FAILURE(EXPECT_EQ(panels.runOpenPanel(), std::nullopt), "Nobody foresaw");
}

}  // namespace
}  // namespace pendra
