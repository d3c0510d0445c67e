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
  EXPECT_EQ(checks.connection() != nullptr, passes);
  EXPECT_EQ(vantor.openChannels, passes ? 1 : 0);
  EXPECT_EQ(desk.alerts.messages(), passes ? QStringList() : QStringList(GetParam().refusal));
  if (!GetParam().running) {
    EXPECT_THAT(vantor.asked, testing::IsEmpty());
  }
}

INSTANTIATE_TEST_SUITE_P(
    All, ChecksTest,
    testing::Values(
        Check{.name = "SameFile", .stored = "/a/Books.cmp", .open = "/a/Books.cmp"},
        Check{.name = "SameNameElsewhere", .stored = "/a/Books.cmp", .open = "/b/Books.cmp"},
        Check{.name = "ClosingSlash", .stored = "/a/Books.cmp/", .open = "/b/Books.cmp"},
        Check{.name = "NothingStored", .open = "/b/Other.cmp"}, Check{.name = "NothingStoredNothingOpen"},
        Check{.name = "EncodedLink", .stored = "vtmac://Acme%20Ltd", .open = "vtmac://Acme%20Ltd"},
        Check{.name = "DecodedLink",
              .stored = "vtmac://Acme Ltd",
              .open = "vtmac://Acme%20Ltd",
              .refusal = kCompany},
        Check{.name = "OtherCase", .stored = "/a/books.cmp", .open = "/a/Books.cmp", .refusal = kCompany},
        Check{.name = "NoCompanyOpen", .stored = "/a/Books.cmp", .refusal = kCompany},
        Check{.name = "EmptyStored", .stored = "", .open = "/a/Books.cmp", .refusal = kCompany},
        Check{.name = "EmptyStoredNoneOpen", .stored = "", .refusal = kCompany},
        Check{.name = "NotRunning", .running = false, .stored = "/a/x", .open = "/a/x", .refusal = kStart},
        Check{.name = "OldVantor", .accepts = false, .stored = "/a/x", .open = "/a/y", .refusal = kVersion}),
    RowName());

TEST_F(LinkTest, AMissingChannelIsAWrongVersionButANoticeSaysWhyUntilThereIsOne) {
  vantor.hasChannel = false;
  const LogCapture log;
  EXPECT_FALSE(checks.checkCompany());
  EXPECT_EQ(desk.alerts.last().message, QString(kVersion));
  EXPECT_EQ(desk.alerts.last().informative,
            QString("In Vantor, choose Vantor>Check for Vantor Updates to get the latest version."));
  ASSERT_EQ(desk.session.notices().standing().size(), 1u);
  EXPECT_TRUE(desk.session.notices().standing()[0].text.contains(": the folder is no folder. "));
  EXPECT_EQ(log.lines(), QStringList(desk.session.notices().standing()[0].text));
  vantor.hasChannel = true;
  EXPECT_TRUE(checks.checkCompany());
  EXPECT_TRUE(desk.session.notices().standing().empty());
}

TEST_F(LinkTest, TheSocketsLieInPendrasFolderOfTheCaches) {
  checks.openConnection();
  const QString folder = desk.places.caches + "/com.corvel.pendra/";
  EXPECT_EQ(vantor.socketPaths, (QStringList{folder + "vtserver.socket", folder + "pdclient.socket"}));
}

TEST_F(LinkTest, AFreshConnectionReplacesTheOldOne) {
  checks.openConnection();
  checks.openConnection();
  EXPECT_EQ(vantor.openChannels, 1);
  checks.closeConnection();
  EXPECT_EQ(vantor.openChannels, 0);
}

TEST_F(LinkTest, WithoutACachesFolderThereIsNoServer) {
  desk.places.caches = desk.places.path("file");
  ASSERT_TRUE(writeFile(desk.places.caches, "x"));
  const LogCapture log;
  EXPECT_FALSE(checks.checkCompany());
  EXPECT_EQ(desk.alerts.last().message, QString(kStart));
  EXPECT_THAT(log.lines(),
              testing::ElementsAre(testing::ResultOf(
                  [](const QString& line) { return line.startsWith("could not get cache URL: "); }, true)));
}

}  // namespace
}  // namespace pendra
