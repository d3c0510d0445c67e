#include "EditorOfTest.h"

namespace pendra {
namespace {

using Tone = Echo::Tone;

/// An entry of 1:30:45 that began yesterday, half a minute after 9:05 AM; now it is 10:00 AM.
class TimeEntryEditor : public testing::Test {
 protected:
  TimeEntryEditor() : context(test.openDocument()), sheet(test) {
    acme = &test.addCustomer("Acme");
    roof = &test.addJob(*acme, "Roof");
    activity = &test.addActivity(acme, &test.addService("Design"), roof, "Plans");
    entry = &test.addEntry(*activity, "2026-11-23T08:05:30Z", 5445);
    std::ignore = context.save();
  }
  /// OK, and what follows when it ends the sheet.
  [[nodiscard]] bool accept() {
    sheet.sheet.ended.reset();
    editor.accept();
    if (sheet.sheet.ended) editor.saveValues();
    return sheet.sheet.ended == EditorSheet::kAccepted;
  }

  TestSession test;
  ObjectContext& context;
  TimeEntryEditorOfTest sheet;
  FieldsOfTest& fields = sheet.fields;
  pendra::TimeEntryEditor& editor = sheet.editor;
  Customer* acme = nullptr;
  Job* roof = nullptr;
  Activity* activity = nullptr;
  TimeEntry* entry = nullptr;
};

TEST_F(TimeEntryEditor, IsAStepOnlyWhenSomethingChanges) {
  entry->setStart(instantOf("2026-11-23T08:05:00Z"));
  entry->setDuration(5400);
  editor.show(*entry);
  EXPECT_EQ(sheet.echoes.start.text + sheet.echoes.duration.text, "") << "it is stored as it is shown";
  ASSERT_TRUE(accept());
  EXPECT_FALSE(context.undoStack().canUndo());
  sheet.typeStart("7:15", "PM", "");
  EXPECT_EQ(sheet.echoes.start.text, "starts Tue 24 Nov, 19:15:00") << "an empty date means today";
  ASSERT_TRUE(accept());
  EXPECT_EQ(entry->start(), instantOf("2026-11-24T18:15:00Z"));
  sheet.typeStart("soon", "PM", "11/23/26");
  EXPECT_EQ(sheet.echoes.start.text, "cannot be read, it stays");
  EXPECT_EQ(sheet.echoes.start.tone, Tone::Warning);
  ASSERT_TRUE(accept());
  EXPECT_EQ(entry->start(), instantOf("2026-11-24T18:15:00Z"));
  ASSERT_EQ(test.session.notices().standing().size(), 1U);
  EXPECT_TRUE(test.session.notices().standing()[0].text.contains(u"“11/23/26 soon PM”"));
  sheet.type(fields.durationField, "-0:30");
  EXPECT_FALSE(accept());
  EXPECT_EQ(test.alerts.messages(), QStringList{"Time durations must be positive"});
}

TEST_F(TimeEntryEditor, AnEntryThatMayBeInVantorTakesNothingButNotes) {
  for (const bool sent : {false, true}) {
    entry->setSendingSince(sent ? std::nullopt : std::optional(instantOf("2026-11-23T18:00:00Z")));
    entry->setDateSubmitted(sent ? instantOf("2026-11-23T18:00:00Z") : kReferenceInstant);
    editor.show(*entry);
    for (const ControlOfTest* field :
         {&fields.customerPopup, &fields.jobPopup, &fields.servicePopup, &fields.startDateField,
          &fields.startTimeField, &fields.startTimeFieldAMPM, &fields.durationField}) {
      EXPECT_FALSE(field->enabled);
    }
    EXPECT_TRUE(sheet.notesField.enabled && sheet.activityNotesField.enabled);
    EXPECT_EQ(sheet.echoes.duration.text, "") << "no second of it is dropped";
    sheet.type(sheet.notesField, sent ? "Sent" : "In doubt");
    sheet.type(sheet.activityNotesField, "New plans");
    ASSERT_TRUE(accept());
    EXPECT_EQ(entry->notes(), sent ? "Sent" : "In doubt");
    EXPECT_EQ(activity->notes(), "New plans");
    EXPECT_EQ(entry->start(), instantOf("2026-11-23T08:05:30Z"));
    EXPECT_EQ(entry->duration(), 5445);
  }
}

TEST_F(TimeEntryEditor, TheLengthOfARunningEntryIsTheClocks) {
  entry->setDuration(std::nullopt);
  entry->startTimer();
  entry->setStart(instantOf("2026-11-24T08:30:10Z"));
  editor.show(*entry);
  EXPECT_EQ(fields.durationField.value, "00:30:00") << "counted from the start as OK leaves it";
  test.clock.advance(65);
  editor.tick();
  EXPECT_EQ(fields.durationField.value, "00:31:05");
  EXPECT_EQ(sheet.echoes.duration.tone, Tone::Running);
  sheet.type(fields.startTimeField, "9:00");
  EXPECT_EQ(sheet.echoes.duration.text, "runs for 1 h 01 min");
  ASSERT_TRUE(accept());
  EXPECT_EQ(entry->start(), instantOf("2026-11-24T08:00:00Z"));
  EXPECT_EQ(entry->duration(), std::nullopt);
  editor.show(*entry);
  entry->stopTimer();
  ASSERT_TRUE(accept());
  EXPECT_EQ(entry->duration(), 3665) << "it was stopped meanwhile, and nobody typed a length";
}

TEST_F(TimeEntryEditor, TheFirstLengthOfAnAddedEntryDoesNotReachIntoTheFuture) {
  const auto startOfNext = [&] { return startOfAddedEntry(*activity, test.clock.now(), test.calendar); };
  EXPECT_EQ(startOfNext(), test.clock.now()) << "the entry of yesterday does not count";
  test.addEntry(*activity, "2026-11-24T07:00:00Z", 5400);
  EXPECT_EQ(startOfNext(), instantOf("2026-11-24T08:30:00Z"));
  TimeEntry& added = activity->addEntry();
  for (const auto& [length, start] :
       {std::pair("0:20", "2026-11-24T08:30:00Z"), std::pair("1:30", "2026-11-24T07:30:00Z")}) {
    added.setStart(instantOf("2026-11-24T08:30:00Z"));
    added.setDuration(std::nullopt);
    editor.show(added);
    sheet.type(fields.durationField, length);
    ASSERT_TRUE(accept());
    EXPECT_EQ(added.start(), instantOf(start)) << length;
  }
  EXPECT_EQ(sheet.echoes.start.text, "starts 08:30:00") << "it is said before";
  editor.show(added);
  sheet.type(fields.durationField, "4:00");
  ASSERT_TRUE(accept());
  EXPECT_EQ(added.start(), instantOf("2026-11-24T07:30:00Z")) << "a later length leaves the start alone";
}

TEST_F(TimeEntryEditor, TypingTheLengthAnswersWhatACrashLeftOpen) {
  entry->setDuration(std::nullopt);
  entry->setHaltedAt(instantOf("2026-11-23T09:00:00Z"));
  editor.show(*entry);
  sheet.type(sheet.notesField, "Call");
  ASSERT_TRUE(accept());
  EXPECT_TRUE(entry->haltedAt());
  EXPECT_EQ(entry->duration(), std::nullopt) << "it still is to be said";
  sheet.type(fields.durationField, "45 min");
  ASSERT_TRUE(accept());
  EXPECT_EQ(entry->haltedAt(), std::nullopt);
  EXPECT_EQ(entry->duration(), 2700);
}

TEST_F(TimeEntryEditor, OnlyTouchedNamesAreWrittenAndConcernAllEntries) {
  editor.show(*entry);
  Customer& zenith = test.addCustomer("Zenith");
  Activity& other = test.addActivity(&zenith, nullptr);
  TimeEntry& later = test.addEntry(other, "2026-11-23T12:00:00Z", 60);
  test.addEntry(other, "2026-11-23T13:00:00Z", 60);
  editor.show(later);
  EXPECT_EQ(fields.customerPopup.value, "Zenith");
  EXPECT_EQ(fields.jobPopup.value, "Roof") << "what is missing keeps the text of the entry before";
  EXPECT_EQ(fields.servicePopup.value, "Design");
  EXPECT_EQ(editor.namesFor(fields.jobPopup), QStringList{"Roof"}) << "the jobs of the customer before";
  EXPECT_EQ(sheet.echoes.names.text, "This activity has no job");
  sheet.type(sheet.notesField, "Call");
  ASSERT_TRUE(accept());
  EXPECT_EQ(other.job(), nullptr);
  EXPECT_EQ(other.service(), nullptr);

  Activity& nobodys = test.addActivity(nullptr, nullptr);
  editor.show(test.addEntry(nobodys, "2026-11-23T14:00:00Z", 60));
  EXPECT_EQ(sheet.echoes.names.text, "This activity has no customer");
  sheet.type(sheet.notesField, "Whose?");
  ASSERT_TRUE(accept());
  EXPECT_EQ(nobodys.customer(), nullptr);

  editor.show(later);
  sheet.type(fields.servicePopup, "Design");
  EXPECT_EQ(sheet.echoes.names.text, "Changes all 2 entries of this activity");
  ASSERT_TRUE(accept());
  EXPECT_EQ(queries::nameOf(other.service()), "Design");
  editor.show(*entry);
  EXPECT_EQ(sheet.echoes.names.text, "") << "nobody has touched these";
  sheet.type(fields.customerPopup, "Zenith");
  EXPECT_EQ(sheet.echoes.names.text, "Changes the only entry of this activity");
  ASSERT_TRUE(accept());
  EXPECT_EQ(activity->customer(), &zenith);
  EXPECT_EQ(activity->job(), nullptr) << "the job was another customer's";
}

TEST_F(TimeEntryEditor, OKAsksAboutANameAsLeavingItDoes) {
  editor.show(*entry);
  sheet.type(fields.jobPopup, "");
  sheet.type(fields.servicePopup, "Cooking");
  test.alerts.willAnswer({"OK", "Cancel"});
  EXPECT_FALSE(accept());
  EXPECT_EQ(test.alerts.last().message, "Add \"Cooking\" to the Services list?");
  EXPECT_EQ(fields.servicePopup.focused, 1);
  test.alerts.willAnswer({"Cancel", "OK"});
  ASSERT_TRUE(accept());
  EXPECT_EQ(queries::nameOf(activity->service()), "Cooking");
  EXPECT_EQ(activity->job(), nullptr);
  EXPECT_EQ(activity->customer(), acme);
}

TEST_F(TimeEntryEditor, AnEntryOfTheRepeatedHourStaysWhereItIsUntilItsTimeIsTyped) {
  for (const char* start : {"2026-10-25T00:30:15Z", "2026-10-25T01:30:15Z"}) {
    TimeEntry& night = test.addEntry(*activity, start, 60);
    editor.show(night);
    EXPECT_EQ(fields.startTimeField.value, "2:30") << "both are shown alike";
    ASSERT_TRUE(accept());
    EXPECT_EQ(night.start(), instantOf(start) + -15);
    sheet.type(fields.startTimeField, "2:31");
    ASSERT_TRUE(accept());
    EXPECT_EQ(night.start(), instantOf("2026-10-25T00:31:00Z")) << "what is typed is the first of the two";
  }
}

}  // namespace
}  // namespace pendra
