#include "model/CutAndJoin.h"

#include "model/Overlaps.h"
#include "support/TestDocument.h"

namespace pendra {
namespace {

using namespace Qt::StringLiterals;

/// Entries of one activity, written as seconds after ten o'clock: "0-100", "0-" for one that runs; behind a
/// blank its time away, behind a slash its note. It is 100000 seconds after ten.
class CutAndJoin : public testing::Test, protected TestDocument {
 protected:
  CutAndJoin() { clock.advance(100000); }

  TimeEntry& entry(const QString& text) {
    const QStringList noted = text.split(u'/');
    const QStringList parts = noted[0].split(u' ');
    const auto pairOf = [this](const QString& span) {
      const QStringList ends = span.split(u'-');
      return std::pair(ten_ + ends[0].toDouble(),
                       ends[1].isEmpty() ? clock.now() : ten_ + ends[1].toDouble());
    };
    const auto [start, end] = pairOf(parts[0]);
    TimeEntry& made = activity_.addEntry();
    made.setStart(start);
    made.setRunning(parts[0].endsWith(u'-'));
    if (made.running() != true) made.setDuration(end - start);
    if (parts.size() > 1) made.setAwayFrom(pairOf(parts[1]).first);
    if (parts.size() > 1) made.setAwayTo(pairOf(parts[1]).second);
    if (noted.size() > 1) made.setNotes(noted[1]);
    return made;
  }
  void clear() {
    for (TimeEntry* old : context.fetch<TimeEntry>()) context.deleteObject(*old);
  }
  [[nodiscard]] QString textOf(const TimeEntry& entry) const {
    const auto at = [this](Instant instant) { return QString::number(instant - ten_); };
    QString text = at(*entry.start()) + u'-' + (entry.running() == true ? QString() : at(entry.end()));
    if (entry.awayFrom()) text += u' ' + at(*entry.awayFrom()) + u'-' + at(*entry.awayTo());
    return entry.notes() ? text + u'/' + *entry.notes() : text;
  }
  [[nodiscard]] double sum() const {
    double all = 0;
    for (const TimeEntry* one : activity_.entries()) all += one->end() - *one->start();
    return all;
  }

  Instant ten_ = clock.now();
  Activity& activity_ = context.insert<Activity>();
};

TEST_F(CutAndJoin, CutsWithoutLosingASecond) {
  struct Case {
    QString whole;
    double at;
    QString first;  // empty: it cannot be cut there
    QString second;
  };
  for (const Case& each : {
           Case{u"0-5400/Call"_s, 3600, u"0-3600/Call"_s, u"3600-5400/Call"_s},
           Case{u"0.5-100.9"_s, 50, u"0.5-50.5"_s, u"50.5-100.9"_s},  // whole seconds stay whole seconds
           Case{u"0-"_s, 7200, u"0-7200"_s, u"7200-"_s}, Case{u"0-"_s, 100000, u"0-100000"_s, u"100000-"_s},
           Case{u"0-"_s, 100001, {}, {}}, Case{u"0-100"_s, 0, {}, {}}, Case{u"0-100"_s, 99.5, {}, {}},
           Case{u"0-100"_s, 200, {}, {}},
           Case{u"0-9000 1000-3000"_s, 4000, u"0-4000 1000-3000"_s, u"4000-9000"_s},
           Case{u"0-9000 1000-3000"_s, 2000, u"0-2000 1000-2000"_s, u"2000-9000 2000-3000"_s},
           Case{u"0-9000 1000-3000"_s, 2950, u"0-2950 1000-2950"_s, u"2950-9000"_s},
           Case{u"0-900 1000-3000"_s, 600, u"0-600"_s, u"600-900"_s},  // was corrected: nobody asks any more
       }) {
    TimeEntry& whole = entry(each.whole);
    const double before = sum();
    const auto at = cutNear(whole, ten_ + each.at);
    ASSERT_EQ(at.has_value(), !each.first.isEmpty()) << each.whole.toStdString() << " at " << each.at;
    if (!at) continue;
    const TimeEntry& rest = cut(whole, *at);
    EXPECT_EQ(textOf(whole), each.first);
    EXPECT_EQ(textOf(rest), each.second);
    EXPECT_DOUBLE_EQ(sum(), before);
  }
}

TEST_F(CutAndJoin, JoinsWhatTouchesAndNothingElse) {
  struct Case {
    QStringList parts;
    QString joined;  // empty: something stands against it
    JoinObstacle obstacle = JoinObstacle::None;
  };
  // Ten o'clock is a full minute. What is typed has full minutes and may stand so much apart.
  for (const Case& each : {
           Case{{u"3600-5400/Call"_s, u"0-3600/Call"_s}, u"0-5400/Call"_s},
           Case{{u"0-10/Call"_s, u"11-20/Mail"_s, u"20-30"_s}, u"0-29/Call; Mail"_s},
           Case{{u"0-600"_s, u"719-800"_s}, u"0-681"_s},
           Case{{u"0-600"_s, u"720-800"_s}, {}, JoinObstacle::Apart},
           Case{{u"0-599"_s, u"601-800"_s}, {}, JoinObstacle::Apart},
           Case{{u"10-659"_s, u"600-1200"_s}, u"10-1259"_s},
           Case{{u"0-600"_s, u"541-1199"_s}, {}, JoinObstacle::Apart},
           Case{{u"0-600"_s, u"660-"_s}, u"60-"_s},
           Case{{u"0-600 300-600"_s, u"600-1200"_s}, u"0-1200 300-600"_s},
           Case{{u"0-600"_s, u"660-1260 900-1200"_s}, u"0-1200 840-1140"_s},
           Case{{u"0-600 300-600"_s, u"600-1200 600-900"_s}, u"0-1200 300-900"_s},
           Case{{u"0-600 300-400"_s, u"600-1200 600-900"_s}, {}, JoinObstacle::Away},
           Case{{u"0-600"_s}, {}, JoinObstacle::TooFew},
       }) {
    clear();
    std::vector<TimeEntry*> parts;
    for (const QString& part : each.parts) parts.push_back(&entry(part));
    const double before = sum();
    const std::string name = each.parts.join(u", "_s).toStdString();
    ASSERT_EQ(obstacleToJoin(parts), each.obstacle) << name;
    if (each.joined.isEmpty()) continue;
    EXPECT_EQ(textOf(join(parts)), each.joined) << name;
    EXPECT_EQ(activity_.entries().size(), 1U);
    EXPECT_DOUBLE_EQ(sum(), before) << name;
  }
  clear();
  TimeEntry& first = entry(u"0-600"_s);
  TimeEntry& second = entry(u"600-700"_s);
  const std::vector both{&first, &second};
  second.setDateSubmitted(clock.now());
  EXPECT_EQ(obstacleToJoin(both), JoinObstacle::Sent);
  second.setDateSubmitted(kReferenceInstant);
  second.setSendingSince(clock.now());
  EXPECT_EQ(obstacleToJoin(both), JoinObstacle::InDoubt);
  second.setSendingSince(std::nullopt);
  second.setHaltedAt(clock.now());
  EXPECT_EQ(obstacleToJoin(both), JoinObstacle::Halted);
  second.setActivity(&context.insert<Activity>());
  EXPECT_EQ(obstacleToJoin(both), JoinObstacle::Activities);
  const Overlaps overlaps = overlapsWith(context, ten_ + 550, ten_ + 900);
  ASSERT_EQ(overlaps.parts.size(), 2U);
  EXPECT_EQ(overlaps.parts[0].entry, &second) << "the longest first, whatever the activity";
  EXPECT_EQ(overlaps.seconds, 150);
  EXPECT_TRUE(overlapsWith(context, ten_ + 700, ten_ + 900, &first).parts.empty()) << "what only touches";
}

}  // namespace
}  // namespace pendra
