#include <QTemporaryDir>
#include <random>

#include "Processes.h"
#include "link/VantorFailure.h"

namespace pendra {
namespace {

constexpr int kRecords = 50;

/// How many random moments are tried: a few by default, a hundred when everything is checked.
int rounds() {
  bool isNumber = false;
  const int asked = qEnvironmentVariableIntValue("PENDRA_CRASH_ROUNDS", &isNumber);
  return isNumber ? asked : 20;
}

std::unique_ptr<Process> startSender(const SendingPlace& place) {
  return std::make_unique<Process>([place] {
    try {
      Sender(place).send();
    } catch (const VantorFailure&) {
      // Vantor was killed before the sending began.
    }
  });
}

/// How often each job's record is in what Vantor received.
std::map<QByteArray, int> received(const SendingPlace& place) {
  std::map<QByteArray, int> counted;
  const QByteArray file = contentsOf(place.records());
  for (qsizetype at = 0; (at = file.indexOf("<job>", at)) >= 0; ++at) {
    ++counted[file.mid(at + 5, file.indexOf("</job>", at) - at - 5)];
  }
  return counted;
}

struct InFile {
  int entries = 0;
  int sent = 0;
  int inDoubt = 0;
  double sentSeconds = 0;
};

InFile inFile(const SendingPlace& place) {
  const ObjectModel model = testModel();
  const SystemClock clock;
  const Calendar calendar{QTimeZone("UTC")};
  ObjectContext context(model, clock, calendar);
  EXPECT_TRUE(context.open(place.document()));
  InFile counted;
  for (const TimeEntry* one : context.all<TimeEntry>()) {
    ++counted.entries;
    counted.inDoubt += one->sendingSince().has_value();
    if (!one->wasSent()) continue;
    ++counted.sent;
    counted.sentSeconds += one->storedDuration();
  }
  return counted;
}

/// Sends, kills one of the two at a random moment, and goes on as a user would until everything is sent.
void playRound(const SendingPlace& place, std::minstd_rand& chance) {
  const bool killsSender = chance() % 2 == 0;
  const auto record = static_cast<qsizetype>(chance() % kRecords);
  const auto delay = static_cast<useconds_t>(chance() % 6000);
  auto vantor = startVantor(place);
  auto sender = startSender(place);
  while (contentsOf(place.records()).count('\n') < record && !sender->hasEnded()) ::usleep(200);
  ::usleep(delay);
  (killsSender ? *sender : *vantor).kill();
  sender->waitForEnd();
  if (!killsSender) vantor = startVantor(place);
  // A machine under load may be too slow for the short time limit; the user then sends again.
  const int entries = place.merging ? 2 * kRecords : kRecords;
  for (int attempt = 0; attempt < 20 && inFile(place).sent < entries; ++attempt)
    startSender(place)->waitForEnd();
}

void expectEverythingOnce(const SendingPlace& place) {
  const auto counted = received(place);
  EXPECT_EQ(counted.size(), static_cast<std::size_t>(kRecords)) << "lost";
  for (const auto& [job, times] : counted) EXPECT_EQ(times, 1) << job.toStdString() << " was sent twice";
  const InFile now = inFile(place);
  EXPECT_EQ(now.entries, place.merging ? 2 * kRecords : kRecords) << "a phantom entry";
  EXPECT_EQ(now.sent, now.entries);
  EXPECT_EQ(now.inDoubt, 0);
  EXPECT_EQ(contentsOf(place.records()).count("<duration>1.50</duration>"), kRecords);
  EXPECT_DOUBLE_EQ(now.sentSeconds, kRecords * kSeconds);
}

TEST(CrashTest, WhoeverIsKilledWheneverEveryRecordArrivesOnce) {
  std::minstd_rand chance(20261124);
  QTemporaryDir root;
  std::array<SendingPlace, 2> prepared{SendingPlace{root.path() + "/one", false},
                                       SendingPlace{root.path() + "/merged", true}};
  for (const SendingPlace& place : prepared) {
    makeDocument(place, kRecords);
  }
  for (int round = 0; round < rounds() && !HasFailure(); ++round) {
    SCOPED_TRACE("round " + std::to_string(round));
    const SendingPlace& from = prepared[static_cast<std::size_t>(round % 2)];
    const SendingPlace place{root.filePath("r" + QString::number(round)), from.merging};
    QDir().mkpath(place.places().caches);
    for (const char* file : {"/Test.pdr", "/company.json"})
      ASSERT_TRUE(QFile::copy(from.folder + file, place.folder + file));
    playRound(place, chance);
    expectEverythingOnce(place);
    QDir(place.folder).removeRecursively();
  }
}

}  // namespace
}  // namespace pendra
