#include "ScriptedVantor.h"
#include "support/LogCapture.h"
#include "support/Rows.h"

namespace pendra {
namespace {

struct Check {
  const char* name;
  bool running = true;
  bool accepts = true;
  std::optional<QString> stored = {};
  std::optional<QString> open = {};
  const char* refusal = nullptr;  // the alert's message; none when the check passes
};

constexpr auto kStart = "Please start Vantor and try again";
constexpr auto kVersion = "Pendra can’t work with this version of Vantor.";
constexpr auto kCompany = "Please open the correct company and try again";

class ChecksTest : public LinkTest, public testing::WithParamInterface<Check> {};

TEST_P(ChecksTest, RefusesOnceAndCloses) {
  desk.workspace.setRunning(identifiers::kVantor, GetParam().running);
  vantor.accepts = GetParam().accepts;
  vantor.company = GetParam().open;
  identity().setCompanyFileName(GetParam().stored);
  const bool passes = !GetParam().refusal;
  EXPECT_EQ(checks.checkCompany(), passes);
  EXPECT_EQ(vantor.openChannels, passes ? 1 : 0);
  EXPECT_EQ(desk.alerts.messages(), passes ? QStringList() : QStringList(GetParam().refusal));
  EXPECT_EQ(vantor.asked.isEmpty(), !GetParam().running);
}

INSTANTIATE_TEST_SUITE_P(
    All, ChecksTest,
    testing::Values(
        Check{.name = "SameNameElsewhere", .stored = "/a/Books.cmp/", .open = "/b/Books.cmp"},
        Check{.name = "NothingStoredNothingOpen"},
        Check{.name = "EncodedLink", .stored = "vtmac://Acme%20Ltd", .open = "vtmac://Acme%20Ltd"},
        Check{.name = "DecodedLink", .stored = "vtmac://A B", .open = "vtmac://A%20B", .refusal = kCompany},
        Check{.name = "OtherCase", .stored = "/a/books.cmp", .open = "/a/Books.cmp", .refusal = kCompany},
        Check{.name = "NoCompanyOpen", .stored = "/a/Books.cmp", .refusal = kCompany},
        Check{.name = "EmptyStored", .stored = "", .open = "/a/Books.cmp", .refusal = kCompany},
        Check{.name = "NotRunning", .running = false, .stored = "/a/x", .open = "/a/x", .refusal = kStart},
        Check{.name = "OldVantor", .accepts = false, .stored = "/a/x", .open = "/a/y", .refusal = kVersion}),
    RowName());

TEST_F(LinkTest, AMissingChannelIsAWrongVersionButANoticeSaysWhyUntilThereIsOne) {
  vantor.hasChannel = false;
  const LogCapture log;
  EXPECT_FALSE(checks.checkCompany());
  EXPECT_EQ(desk.alerts.last().message, QString(kVersion));
  ASSERT_EQ(desk.session.notices().standing().size(), 1u);
  EXPECT_TRUE(desk.session.notices().standing()[0].text.contains(": the folder is no folder. "));
  EXPECT_EQ(log.lines(), QStringList(desk.session.notices().standing()[0].text));
  vantor.hasChannel = true;
  EXPECT_TRUE(checks.checkCompany());
  EXPECT_TRUE(desk.session.notices().standing().empty());
  checks.openConnection();
  EXPECT_EQ(vantor.openChannels, 1) << "one at a time";
  const QString folder = desk.places.caches + "/com.corvel.pendra/";
  EXPECT_EQ(vantor.socketPaths, (QStringList{folder + "vtserver.socket", folder + "pdclient.socket"}));

  checks.closeConnection();
  desk.places.caches = desk.places.path("file");
  ASSERT_TRUE(writeFile(desk.places.caches, "x"));
  EXPECT_FALSE(checks.checkCompany());
  EXPECT_EQ(desk.alerts.last().message, QString(kStart));
  EXPECT_TRUE(log.lines().back().startsWith("could not get cache URL: "));
}

}  // namespace
}  // namespace pendra
