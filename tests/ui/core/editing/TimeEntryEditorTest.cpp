#include "EditorOfTest.h"

namespace pendra {
namespace {

class TimeEntryEditor : public testing::Test {
 protected:
  TimeEntryEditor() : context(test.openDocument()), sheet(test) {
    acme = &test.addCustomer("Acme");
    roof = &test.addJob(*acme, "Roof");
    activity = &test.addActivity(acme, &test.addService("Design"), roof, "Plans");
    period = &test.addPeriod(*activity, "2026-11-23T08:05:30Z", 5445);
  }

  TestSession test;
  ObjectContext& context;
  TimePeriodEditorOfTest sheet;
  Customer* acme = nullptr;
  Job* roof = nullptr;
  Activity* activity = nullptr;
  TimeEntry* period = nullptr;
};

TEST_F(TimeEntryEditor, ShowsTheEntryAndItsActivity) {
  sheet.edit(*period);
  EXPECT_EQ(sheet.fields.customerPopup.value, "Acme");
  EXPECT_EQ(sheet.fields.jobPopup.value, "Roof");
  EXPECT_EQ(sheet.fields.servicePopup.value, "Design");
  EXPECT_EQ(sheet.fields.startDateField.value, "11/23/26");
  EXPECT_EQ(sheet.fields.startTimeField.value, "9:05");
  EXPECT_EQ(sheet.fields.startTimeFieldAMPM.value, "AM");
  EXPECT_EQ(sheet.fields.durationField.value, "01:30:45");
  EXPECT_EQ(sheet.activityNotesField.value, "Plans");
  EXPECT_EQ(sheet.notesLength.text, "5");
  EXPECT_TRUE(sheet.fields.jobPopup.enabled);
}

TEST_F(TimeEntryEditor, AnEntryThatMayBeInVantorTakesNothingButNotes) {
  period->setSendingSince(instantOf("2026-11-23T18:00:00Z"));
  sheet.edit(*period);
  EXPECT_FALSE(sheet.fields.durationField.enabled);
  period->setSendingSince(std::nullopt);
  period->setDateSubmitted(instantOf("2026-11-23T18:00:00Z"));
  sheet.edit(*period);
  for (const ControlOfTest* field :
       {&sheet.fields.customerPopup, &sheet.fields.jobPopup, &sheet.fields.servicePopup,
        &sheet.fields.startDateField, &sheet.fields.startTimeField, &sheet.fields.startTimeFieldAMPM,
        &sheet.fields.durationField}) {
    EXPECT_FALSE(field->enabled);
  }
  EXPECT_TRUE(sheet.notesField.enabled);
  EXPECT_TRUE(sheet.activityNotesField.enabled);
}

TEST_F(TimeEntryEditor, WhatIsMissingKeepsTheTextOfThePreviousEntry) {
  sheet.edit(*period);
  Activity& other = test.addActivity(&test.addCustomer("Zenith"), nullptr);
  sheet.edit(test.addPeriod(other, "2026-11-23T12:00:00Z", 60));
  EXPECT_EQ(sheet.fields.customerPopup.value, "Zenith");
  EXPECT_EQ(sheet.fields.jobPopup.value, "Roof");
  EXPECT_EQ(sheet.fields.servicePopup.value, "Design");
  EXPECT_EQ(sheet.editor.namesFor(sheet.fields.jobPopup), QStringList{"Roof"})
      << "the jobs of the customer before";
}

TEST_F(TimeEntryEditor, SavingAnUnchangedEntryDropsItsSeconds) {
  sheet.edit(*period);
  sheet.editor.accept();
  ASSERT_EQ(sheet.sheet.ended, EditorSheet::kAccepted);
  EXPECT_EQ(period->duration(), 5445) << "nothing is written before saveValues";
  sheet.editor.saveValues();
  EXPECT_EQ(period->start(), instantOf("2026-11-23T08:05:00Z"));
  EXPECT_EQ(period->duration(), 5400);
  EXPECT_EQ(activity->job(), roof);
}

TEST_F(TimeEntryEditor, AnEntryOfTheRepeatedHourStaysWhereItIsUntilItsTimeIsTyped) {
  for (const char* start : {"2026-10-25T00:30:15Z", "2026-10-25T01:30:15Z"}) {
    TimeEntry& night = test.addPeriod(*activity, start, 60);
    const Instant minute = instantOf(start) + -15;
    sheet.edit(night);
    EXPECT_EQ(sheet.fields.startTimeField.value, "2:30") << "both are shown alike";
    sheet.fields.durationField.value = "2:00";
    sheet.editor.saveValues();
    EXPECT_EQ(night.start(), minute) << start;
    sheet.fields.startTimeField.value = "2:31";
    sheet.editor.saveValues();
    EXPECT_EQ(night.start(), instantOf("2026-10-25T00:31:00Z")) << "what is typed is the first of the two";
  }
}

TEST_F(TimeEntryEditor, SavingWritesNamesToTheActivityAndClearsUnknownOnes) {
  sheet.edit(*period);
  sheet.notesField.value = "Call";
  sheet.activityNotesField.value = "New plans";
  sheet.fields.servicePopup.value = "Unknown";
  sheet.fields.jobPopup.value = "";
  sheet.editor.saveValues();
  EXPECT_EQ(period->notes(), "Call");
  EXPECT_EQ(activity->notes(), "New plans");
  EXPECT_EQ(activity->customer(), acme);
  EXPECT_EQ(activity->job(), nullptr);
  EXPECT_EQ(activity->service(), nullptr);
}

TEST_F(TimeEntryEditor, AnEmptyDateMeansTodayAndAnUnreadableStartKeepsThePreviousOne) {
  sheet.edit(*period);
  sheet.fields.write("7:15", "PM", "", "1");
  sheet.editor.saveValues();
  EXPECT_EQ(period->start(), instantOf("2026-11-24T18:15:00Z"));
  sheet.fields.write("soon", "PM", "11/23/26", "1");
  sheet.editor.saveValues();
  EXPECT_EQ(period->start(), instantOf("2026-11-24T18:15:00Z"));
  ASSERT_EQ(test.session.notices().standing().size(), 1U);
  EXPECT_TRUE(test.session.notices().standing()[0].text.contains(u"“11/23/26 soon PM”"));
}

TEST_F(TimeEntryEditor, AFailedCheckKeepsTheSheetOpen) {
  sheet.edit(*period);
  sheet.fields.durationField.value = "-0:30";
  sheet.editor.accept();
  EXPECT_FALSE(sheet.sheet.ended);
  EXPECT_EQ(test.alerts.messages(), QStringList{"Time durations must be positive"});
}

}  // namespace
}  // namespace pendra
