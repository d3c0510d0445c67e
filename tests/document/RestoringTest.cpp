#include "document/Restoring.h"

#include "DocumentTest.h"
#include "document/HaltedEntries.h"

namespace pendra {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr double kDay = 86'400;

/// "Work.pdr" open in its window, linked, with "Acme - Design" and two entries of an hour.
class Restoring : public DocumentTest {
 protected:
  Restoring() {
    write(path("Work.pdr"), "Acme", false);
    open("Work.pdr");
    edit([&] {
      activity = &addActivity(session.context()->all<Customer>()[0], &addService("Design"));
      for (const char* start : {"2026-11-23T09:00:00Z", "2026-11-23T11:00:00Z"})
        addEntry(*activity, start, 3600);
    });
  }
  template <class Work>
  void edit(Work work) {
    ASSERT_TRUE(session.context()->edit(QStringLiteral("Work"), work));
  }
  [[nodiscard]] Objects<TimeEntry> entries() { return session.context()->all<TimeEntry>(); }
  BackupFile backUp() {
    EXPECT_TRUE(makeBackup(session, BackupReason::Daily));
    clock.advance(kDay);
    return backupsOf(session).front();
  }
  [[nodiscard]] std::string said() { return notices().join(u'\n').toStdString(); }

  Activity* activity = nullptr;
};

TEST_F(Restoring, TakesTheStateOfTheBackupAsOneStepAndLeavesTheWindows) {
  const BackupFile before = backUp();
  edit([&] { activity->startEntry(); });
  const BackupFile backup = backUp();
  EXPECT_EQ(changesSince(*readBackup(session, before.path).value(), *session.context()).added.seconds, kDay)
      << "what runs counts as far as it has run";
  alerts.willAnswer({"OK", "Cancel", "Cancel"});
  EXPECT_FALSE(restoreFromBackup(session, backup));
  EXPECT_THAT(alerts.last().informative.toStdString(), testing::StartsWith("What was done since then goes"));
  EXPECT_FALSE(restoreFromBackup(session, before));
  EXPECT_THAT(alerts.last().informative.toStdString(), testing::StartsWith("1 entry goes: 24:00:00. What"));
  EXPECT_EQ(entries()[2]->duration(), kDay) << "stopped with consent, and nothing else";

  edit([&] {
    session.context()->deleteObject(*entries()[1]);
    entries()[0]->setDuration(1800);
    entries()[0]->setNotes(QStringLiteral("shorter"));
    activity->setCompleted(true);
    Customer& bolt = addCustomer(QStringLiteral("Bolt"));
    activity->setCustomer(&bolt);
    addEntry(addActivity(&bolt, nullptr), "2026-11-25T09:00:00Z", 600);
  });
  const auto then = readBackup(session, backup.path);
  ASSERT_TRUE(then);
  const SinceBackup since = changesSince(*then.value(), *session.context());
  EXPECT_EQ(since.added.number, 1);
  EXPECT_EQ(since.corrected.number, 2) << "and the one that ran then";
  EXPECT_EQ(since.corrected.seconds, 1800 + kDay);
  EXPECT_EQ(since.deleted.seconds, 3600);
  EXPECT_THAT(since.completed, ElementsAre("Bolt - Design"));
  EXPECT_THAT(since.customers, ElementsAre("Bolt"));

  const OpenDocument* document = session.document();
  windows.forget();
  alerts.willAnswer({"Restore", "It Was Not"});
  EXPECT_EQ(restoreFromBackup(session, backup), "“Work” is as it was on Wed 25 Nov 2026, 10:00.");
  EXPECT_THAT(alerts.last().message.toStdString(), HasSubstr("1 entry that comes back was deleted since."));
  EXPECT_EQ(alerts.last().informative, "Acme - Design, Mon 23 Nov 2026, 12:00, 01:00:00");
  EXPECT_EQ(session.document(), document);
  EXPECT_THAT(windows.calls(), IsEmpty()) << "the news rebuilds what is shown";
  ASSERT_EQ(entries().size(), 3U);
  EXPECT_EQ(entries()[0]->duration(), 3600);
  EXPECT_FALSE(entries()[0]->notes());
  EXPECT_EQ(entries()[1]->activity(), activity);
  EXPECT_EQ(haltedEntries(*session.context()).entries.size(), 1U)
      << "what ran then is asked about as after a crash";
  EXPECT_EQ(haltedEntries(*session.context()).until, backup.madeAt);
  EXPECT_NE(activity->completed(), true);
  EXPECT_EQ(queries::nameOf(activity->customer()), "Acme");
  EXPECT_EQ(session.context()->all<Customer>().size(), 1U);
  EXPECT_FALSE(session.context()->hasChanges());
  EXPECT_EQ(backupsOf(session)[0].reason, BackupReason::Restoring) << "the way back";

  EXPECT_EQ(session.context()->undoStack().undoName(), "Restore");
  EXPECT_THAT(session.context()->undoStack().undo(), IsEmpty());
  EXPECT_TRUE(
      changesSince(*readBackup(session, backupsOf(session)[0].path).value(), *session.context()).isNothing());
  alerts.willAnswer({"Restore", "It Was Not"});
  ASSERT_TRUE(restoreFromBackup(session, backup));
  alerts.willAnswer({"Restore", "It Was Not"});
  ASSERT_TRUE(restoreFromBackup(session, backupsOf(session)[0]));
  EXPECT_EQ(entries().size(), 3U);
  EXPECT_EQ(entries()[0]->duration(), 1800);
}

TEST_F(Restoring, BringsNothingBackBesideWhatCameBackFromTheBackup) {
  const BackupFile backup = backUp();
  edit([&] {
    for (TimeEntry* entry : entries()) entry->setDateSubmitted(clock.now());
  });
  edit([&] {
    while (!entries().empty()) session.context()->deleteObject(*entries()[0]);
  });
  alerts.willAnswer({"Restore", "It Was Sent"});
  ASSERT_TRUE(restoreFromBackup(session, backup));
  UndoStack& steps = session.context()->undoStack();
  EXPECT_FALSE(steps.undo().empty()) << "what was sent stays";
  EXPECT_FALSE(steps.undo().empty()) << "and stands for what was deleted";
  EXPECT_EQ(entries().size(), 2U);
  while (steps.canUndo()) steps.undo();
  while (steps.canRedo()) steps.redo();
  EXPECT_EQ(entries().size(), 2U);
  const auto stored = readBackup(session, path("Work.pdr"));
  ASSERT_TRUE(stored);
  EXPECT_TRUE(changesSince(*stored.value(), *session.context()).isNothing()) << "as in the file";
}

TEST_F(Restoring, DoesNothingWithoutABackupOfTheDocumentOrOfTheDay) {
  const BackupFile backup = backUp();
  edit([&] { entries()[0]->setDuration(60); });
  for (const char* damage : {"", "no document", "SQLite format 3"}) {
    const BackupFile broken{.path = path("Broken.pdrbackup"), .madeAt = clock.now()};
    ASSERT_TRUE(writeFile(broken.path, damage));
    EXPECT_FALSE(restoreFromBackup(session, broken));
  }
  EXPECT_THAT(said(), HasSubstr("Nothing was restored, because the backup could not be read"));
  const QString aside = path("Aside.pdrbackup");
  ASSERT_TRUE(QFile::copy(backup.path, aside));
  defaults.setText(preferences::kBackupFolder, path("gone"));
  alerts.willAnswer({"Restore"});
  EXPECT_FALSE(restoreFromBackup(session, {.path = aside, .madeAt = backup.madeAt}));
  EXPECT_THAT(said(), HasSubstr("could not be backed up first: No such file or directory"));
  EXPECT_EQ(entries()[0]->duration(), 60);
}

/// Whether Vantor has an entry's time, in the document and in the backup.
enum class Fate { Gone, Unsent, Sent, Doubt };
struct Sides {
  const char* name;
  Fate backup;
  Fate document;
  const char* answer;  ///< empty: nothing is asked
  Fate after;
};
void PrintTo(const Sides& sides, std::ostream* out) { *out << sides.name; }
class RestoringFates : public Restoring, public testing::WithParamInterface<Sides> {
 protected:
  static constexpr Instant kThen{785'000'000};
  static constexpr Instant kSince{785'100'000};
  void give(Fate fate, Instant when) {
    edit([&] {
      TimeEntry& entry = *entries()[1];
      if (fate == Fate::Gone) return session.context()->deleteObject(entry);
      entry.setDuration(when == kThen ? 3600 : 1800);
      entry.setDateSubmitted(fate == Fate::Sent ? when : kReferenceInstant);
      entry.setSendingSince(fate == Fate::Doubt ? std::optional(when) : std::nullopt);
      entry.setSentAs(fate == Fate::Doubt ? std::optional(QStringLiteral("Acme")) : std::nullopt);
    });
  }
};

TEST_P(RestoringFates, NothingIsSentTwiceOrCalledSentUnasked) {
  const Sides& sides = GetParam();
  const bool added = sides.backup == Fate::Gone;
  if (added) give(Fate::Gone, kThen);
  if (!added) give(sides.backup, kThen);
  const BackupFile backup = backUp();
  if (added) {
    edit([&] { addEntry(addActivity(&addCustomer("Bolt"), nullptr), "2026-11-25T09:00:00Z", 1800); });
  }
  give(sides.document, kSince);
  const QString answer = QString::fromLatin1(sides.answer);
  alerts.willAnswer(answer.isEmpty() ? QStringList{"Restore"} : QStringList{"Restore", "Cancel"});
  if (!answer.isEmpty()) {
    EXPECT_FALSE(restoreFromBackup(session, backup));
    EXPECT_EQ(entries().size(), 1U) << "cancelled in the middle, and nothing has happened";
    alerts.willAnswer({"Restore", answer});
  }
  ASSERT_TRUE(restoreFromBackup(session, backup));
  ASSERT_EQ(entries().size(), sides.after == Fate::Gone ? 1U : 2U);
  if (sides.after == Fate::Gone) {
    EXPECT_EQ(session.context()->all<Customer>().size(), 1U);
    return;
  }
  const TimeEntry& entry = *entries()[1];
  EXPECT_EQ(entry.wasSent(), sides.after == Fate::Sent);
  EXPECT_EQ(entry.sendingSince().has_value(), sides.after == Fate::Doubt);
  EXPECT_EQ(entry.sentAs().has_value(), sides.after == Fate::Doubt);
  const bool keptOwn = sides.document == Fate::Sent || sides.document == Fate::Doubt;
  EXPECT_EQ(entry.duration(), keptOwn ? 1800 : 3600) << "what may be in Vantor stays as it was sent";
  EXPECT_TRUE(sides.document != Fate::Sent || added || entry.dateSubmitted() == kSince);
  if (keptOwn && added) {
    EXPECT_EQ(queries::nameOf(entry.activity()->customer()), "Bolt") << "and with it what it was sent for";
  }
}

INSTANTIATE_TEST_SUITE_P(
    Sides, RestoringFates,
    testing::Values(Sides{"UnsentInBoth", Fate::Unsent, Fate::Unsent, "", Fate::Unsent},
                    Sides{"SentSince", Fate::Unsent, Fate::Sent, "", Fate::Sent},
                    Sides{"InDoubtSince", Fate::Unsent, Fate::Doubt, "", Fate::Doubt},
                    Sides{"SentInBoth", Fate::Sent, Fate::Sent, "", Fate::Sent},
                    Sides{"MarkedUnsentSince", Fate::Sent, Fate::Unsent, "", Fate::Unsent},
                    Sides{"FoundToHaveArrivedSince", Fate::Doubt, Fate::Sent, "", Fate::Sent},
                    Sides{"FoundNotToHaveArrivedSince", Fate::Doubt, Fate::Unsent, "", Fate::Unsent},
                    Sides{"AddedSince", Fate::Gone, Fate::Unsent, "", Fate::Gone},
                    Sides{"AddedAndSentSince", Fate::Gone, Fate::Sent, "", Fate::Sent},
                    Sides{"AddedAndInDoubtSince", Fate::Gone, Fate::Doubt, "", Fate::Doubt},
                    Sides{"DeletedSince", Fate::Unsent, Fate::Gone, "It Was Not", Fate::Unsent},
                    Sides{"SentAndDeletedSince", Fate::Unsent, Fate::Gone, "It Was Sent", Fate::Sent},
                    Sides{"SentThenAndDeletedSince", Fate::Sent, Fate::Gone, "It Arrived", Fate::Sent},
                    Sides{"InDoubtThenAndNotArrived", Fate::Doubt, Fate::Gone, "Send Again", Fate::Unsent},
                    Sides{"InDoubtThenAndArrived", Fate::Doubt, Fate::Gone, "It Arrived", Fate::Sent}),
    RowName());

TEST_F(Restoring, AnIdentifierThatWasGivenTwiceIsTwoEntries) {
  const BackupFile backup = backUp();
  edit([&] { session.context()->deleteObject(*entries()[1]); });
  leaveDocument(session);
  open("Work.pdr");
  edit([&] {
    TimeEntry& another = addEntry(addActivity(&addCustomer("Bolt"), nullptr), "2026-11-25T09:00:00Z", 1800);
    another.setDateSubmitted(clock.now());
  });
  ASSERT_EQ(entries()[1]->objectID(), 2) << "as the deleted one";
  alerts.willAnswer({"Restore", "It Was Not"});
  ASSERT_TRUE(restoreFromBackup(session, backup));
  ASSERT_EQ(entries().size(), 3U);
  EXPECT_TRUE(entries()[1]->wasSent());
  EXPECT_EQ(queries::nameOf(entries()[1]->activity()->customer()), "Bolt");
  EXPECT_EQ(entries()[2]->duration(), 3600);
  EXPECT_EQ(queries::nameOf(entries()[2]->activity()->customer()), "Acme");
  EXPECT_FALSE(entries()[2]->wasSent());
}

}  // namespace
}  // namespace pendra
