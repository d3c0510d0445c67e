#include "ScriptedVantor.h"
#include "support/LogCapture.h"

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

const Check kChecks[] = {

    {.name = "SameNameElsewhere", .stored = "/a/Books.cmp/", .open = "/b/Books.cmp"},
    {.name = "NothingStoredNothingOpen"},
    {.name = "EncodedLink", .stored = "vtmac://Acme%20Ltd", .open = "vtmac://Acme%20Ltd"},
    {.name = "DecodedLink", .stored = "vtmac://A B", .open = "vtmac://A%20B", .refusal = kCompany},
    {.name = "OtherCase", .stored = "/a/books.cmp", .open = "/a/Books.cmp", .refusal = kCompany},
    {.name = "NoCompanyOpen", .stored = "/a/Books.cmp", .refusal = kCompany},
    {.name = "EmptyStored", .stored = "", .open = "/a/Books.cmp", .refusal = kCompany},
    {.name = "NotRunning", .running = false, .stored = "/a/x", .open = "/a/x", .refusal = kStart},
    {.name = "OldVantor", .accepts = false, .stored = "/a/x", .open = "/a/y", .refusal = kVersion}};

TEST_F(LinkTest, AFailedCheckIsToldOnceAndClosesTheConnection) {
  for (const Check& row : kChecks) {
    SCOPED_TRACE(row.name);
    desk.alerts.forget();
    vantor.asked.clear();
    desk.workspace.setRunning(identifiers::kVantor, row.running);
    vantor.accepts = row.accepts;
    vantor.company = row.open;
    identity().setCompanyFileName(row.stored);
    const bool passes = !row.refusal;
    EXPECT_EQ(checks.checkCompany(), passes);
    EXPECT_EQ(vantor.openChannels, passes ? 1 : 0);
    EXPECT_EQ(desk.alerts.messages(), passes ? QStringList() : QStringList(row.refusal));
    EXPECT_EQ(vantor.asked.isEmpty(), !row.running);
    checks.closeConnection();
  }
}

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
