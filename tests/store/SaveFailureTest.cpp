#include <SQLiteCpp/SQLiteCpp.h>
#include <gmock/gmock.h>

#include <random>
#include <thread>

#include "support/ChildProcess.h"
#include "support/FileSizeLimit.h"
#include "support/TestDocument.h"

namespace pendra {
namespace {

/// A document in which every activity carries the number of the save that wrote it.
class Numbered : public testing::Test, protected TestWorld {
 protected:
  static constexpr int kActivities = 60;

  void makeDocument() {
    const auto context = opened();
    for (int i = 0; i < kActivities; ++i) context->insert<Activity>();
    number(*context, 0);
    ASSERT_TRUE(context->save());
  }
  static void number(const ObjectContext& context, std::int64_t save) {
    // The length changes too, so that pages move.
    const QString note = QString::number(save) + QString(static_cast<int>(save % 7) * 300, u'x');
    for (Activity* activity : context.all<Activity>()) activity->setNotes(note);
  }
  /// The number that all activities carry; none when they differ.
  std::optional<std::int64_t> numberIn(const QString& path) {
    const auto context = opened(path);
    const auto activities = context->all<Activity>();
    const auto number = [](const Activity* one) { return one->notes()->section(u'x', 0, 0).toLongLong(); };
    const bool same = activities.size() == kActivities &&
                      std::all_of(activities.begin(), activities.end(), [&](const Activity* activity) {
                        return number(activity) == number(activities[0]);
                      });
    return same ? std::optional(std::int64_t{number(activities[0])}) : std::nullopt;
  }
  /// A copy of the file with what a broken save left beside it, as it would be found after a crash.
  QString crashed() {
    const QString copy = places.path("Crashed.pdr");
    for (const char* suffix : {"", "-journal"}) {
      QFile::remove(copy + suffix);
      QFile::copy(path() + suffix, copy + suffix);
    }
    return copy;
  }
};

TEST_F(Numbered, ASaveThatFillsTheDiskLosesNothingAndIsTriedAgain) {
  makeDocument();
  const auto context = opened();
  int failures = 0;
  for (rlim_t room = 0; room < 200'000; room += 4096) {
    number(*context, failures + 1);
    Result<void> saved;
    {
      const FileSizeLimit limit(room);
      saved = context->save();
    }
    if (saved) break;
    ++failures;
    EXPECT_EQ(saved.error().text, "File too large");
    ASSERT_EQ(numberIn(crashed()), 0) << "with room for " << room;
    ASSERT_TRUE(context->hasChanges());
  }
  EXPECT_GT(failures, 5);
  EXPECT_EQ(numberIn(crashed()), failures + 1) << "the same context saves once there is room";
}

TEST_F(Numbered, WhoeverReadsOrWritesTheFileIsWaitedForByASaveAndByAnOpening) {
  makeDocument();
  SQLite::Database other(path().toStdString(), SQLite::OPEN_READWRITE);
  const auto whileOther = [&](const char* locks, const std::function<bool()>& act) {
    other.exec(locks);
    std::thread letsGo([&] {
      std::this_thread::sleep_for(std::chrono::milliseconds(150));
      other.exec("ROLLBACK");
    });
    const bool done = act();
    letsGo.join();
    return done;
  };
  auto context = opened();
  number(*context, 1);
  EXPECT_TRUE(whileOther("BEGIN; SELECT * FROM Activity", [&] { return bool(context->save()); }));
  context.reset();
  EXPECT_EQ(numberIn(path()), 1);
  EXPECT_TRUE(whileOther("BEGIN EXCLUSIVE", [&] { return bool(emptyContext()->open(path())); }));
}

TEST_F(Numbered, KilledAtAnyMomentOfASaveIsTheOldOrTheNewState) {
  makeDocument();
  std::mt19937 random(20261124);
  std::int64_t last = 0;
  for (int round = 0; round < 100; ++round) {
    ChildProcess saver([&](const auto& report) {
      const auto context = opened();
      for (std::int64_t save = last + 1;; ++save) {
        number(*context, save);
        report(context->save() ? save : -1);
      }
    });
    ASSERT_EQ(saver.next(), last + 1);
    std::this_thread::sleep_for(std::chrono::microseconds(random() % 4000));
    saver.kill();
    std::int64_t told = last + 1;
    while (const auto next = saver.next()) told = *next;
    const auto found = numberIn(path());
    ASSERT_TRUE(found) << "a state that never was, in round " << round;
    ASSERT_TRUE(found == told || found == told + 1) << *found << " after " << told;
    last = *found;
  }
}

}  // namespace
}  // namespace pendra
