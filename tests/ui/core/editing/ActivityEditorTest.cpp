#include "EditorOfTest.h"
#include "platform/Preferences.h"

namespace pendra {
namespace {

class ActivityEditor : public testing::Test {
 protected:
  ActivityEditor() : context(test.openDocument()), sheet(test) {
    acme = &test.addCustomer("Acme");
    activity = &test.addActivity(acme, &test.addService("Design"), &test.addJob(*acme, "Roof"), "Plans");
  }

  TestSession test;
  ObjectContext& context;
  ActivityEditorOfTest sheet;
  Customer* acme = nullptr;
  Activity* activity = nullptr;
};

TEST_F(ActivityEditor, RowsShowEachEntryInTheUsersDay) {
  test.addPeriod(*activity, "2026-01-04T23:05:00Z", 3725.9).setNotes("Call");
  test.addPeriod(*activity, "2026-11-23T12:00:00Z", 60);
  sheet.edit(*activity);
  EXPECT_EQ(sheet.cell("date", 0), "1/5/2026");
  EXPECT_EQ(sheet.cell("time", 0), "00:05");
  EXPECT_EQ(sheet.cell("duration", 0), "01:02:05");
  EXPECT_EQ(sheet.cell("notes", 0), "Call");
  EXPECT_EQ(sheet.cell("notes", 1), "Double-click to edit...");
  EXPECT_EQ(sheet.fields.jobPopup.value, "Roof");
}

TEST_F(ActivityEditor, DatesSortAsText) {
  test.addPeriod(*activity, "2024-09-30T12:00:00Z", 60);
  test.addPeriod(*activity, "2024-10-01T12:00:00Z", 60);
  sheet.edit(*activity);
  sheet.editor.sortChanged({.key = "date", .ascending = true});
  EXPECT_EQ(sheet.cell("date", 0), "10/1/2024");
  sheet.editor.sortChanged({.key = {}, .ascending = false});
  EXPECT_EQ(sheet.cell("date", 0), "10/1/2024") << "without a key nothing changes";
}

TEST_F(ActivityEditor, ThePlaceholderIsNeverTakenForANote) {
  const TimeEntry& period = test.addPeriod(*activity, "2026-11-23T12:00:00Z", 60);
  sheet.edit(*activity);
  EXPECT_FALSE(sheet.editor.isEditable(u"date", 0));
  EXPECT_FALSE(test.defaults.boolean(preferences::kUserFoundTableEdit));
  EXPECT_TRUE(sheet.editor.isEditable(u"notes", 0));
  EXPECT_TRUE(test.defaults.boolean(preferences::kUserFoundTableEdit));

  sheet.editor.setValue(sheet.editor.noteForEditing(0), u"notes", 0);
  EXPECT_EQ(period.notes().value_or(""), "");
  sheet.editor.setValue("Call", u"notes", 0);
  EXPECT_EQ(period.notes(), "Call");
  EXPECT_EQ(sheet.cell("notes", 0), "Call");
  sheet.editor.setValue("", u"notes", 0);
  sheet.editor.reloadData();
  EXPECT_EQ(sheet.cell("notes", 0), "") << "who has found the cell needs no placeholder";
}

TEST_F(ActivityEditor, SelectingAnEntryFillsTheFieldsAndASentOneLocksThem) {
  const TimeEntry& open = test.addPeriod(*activity, "2026-11-23T22:30:00Z", 5445);
  TimeEntry& sent = test.addPeriod(*activity, "2026-11-22T08:05:00Z", 60);
  sent.setDateSubmitted(instantOf("2026-11-23T00:00:00Z"));
  sheet.edit(*activity);
  sheet.littleSaveButton.enabled = true;
  sheet.select(open);
  EXPECT_EQ(sheet.fields.startDateField.value, "11/23/26");
  EXPECT_EQ(sheet.fields.startTimeField.value, "11:30");
  EXPECT_EQ(sheet.fields.startTimeFieldAMPM.value, "PM");
  EXPECT_EQ(sheet.fields.durationField.value, "01:30:45");
  EXPECT_TRUE(sheet.fields.durationField.enabled);
  EXPECT_FALSE(sheet.littleSaveButton.enabled);
  EXPECT_TRUE(sheet.editor.canDeleteEntries());
  sheet.select(sent);
  EXPECT_FALSE(sheet.fields.durationField.enabled);
  sheet.editor.clearTableSelection();
  EXPECT_EQ(sheet.fields.startTimeField.value, "");
  EXPECT_FALSE(sheet.fields.startTimeField.enabled);
  EXPECT_FALSE(sheet.editor.canDeleteEntries());
}

TEST_F(ActivityEditor, ApplyingTheFieldsChangesTheEntryAndKeepsItSelected) {
  TimeEntry& period = test.addPeriod(*activity, "2026-11-23T12:00:00Z", 60);
  test.addPeriod(*activity, "2026-11-22T12:00:00Z", 7200);
  sheet.edit(*activity);
  sheet.editor.sortChanged({.key = "duration", .ascending = true});
  sheet.select(period);
  sheet.fields.write("10:30", "PM", "05/12/24", "12:75:59");
  sheet.littleSaveButton.enabled = true;
  sheet.editor.applyToSelectedEntry();
  EXPECT_EQ(period.start(), instantOf("2024-05-12T20:30:00Z"));
  EXPECT_EQ(period.duration(), 13 * 3600 + 15 * 60);
  EXPECT_EQ(sheet.table.row, 1);
  EXPECT_EQ(sheet.cell("duration", 1), "13:15:00");
  EXPECT_EQ(sheet.cell("date", 1), "11/23/2026") << "until the next reload";
  EXPECT_FALSE(sheet.littleSaveButton.enabled);
  sheet.editor.reloadData();
  EXPECT_EQ(sheet.cell("date", 1), "5/12/2024");
}

TEST_F(ActivityEditor, AnUnreadableStartKeepsThePreviousOne) {
  TimeEntry& period = test.addPeriod(*activity, "2026-11-23T12:00:00Z", 60);
  sheet.edit(*activity);
  sheet.select(period);
  sheet.fields.write("10:30", "XX", "05/12/24", "2");
  sheet.editor.applyToSelectedEntry();
  EXPECT_EQ(period.start(), instantOf("2026-11-23T12:00:00Z"));
  EXPECT_EQ(period.duration(), 7200);
}

TEST_F(ActivityEditor, OKAppliesPendingEditsOfWhicheverField) {
  TimeEntry& period = test.addPeriod(*activity, "2026-11-23T12:00:30Z", 3659);
  sheet.edit(*activity);
  sheet.select(period);
  sheet.editor.controlEdited(sheet.notesField);
  sheet.editor.save();
  EXPECT_EQ(period.duration(), 3659) << "the notes are no edit of an entry";
  sheet.editor.controlEdited(sheet.fields.customerPopup);
  sheet.editor.save();
  EXPECT_EQ(period.duration(), 3600);
  EXPECT_EQ(period.start(), instantOf("2026-11-23T12:00:00Z"));
  EXPECT_EQ(sheet.sheet.ended, EditorSheet::kAccepted);
}

TEST_F(ActivityEditor, AFailedCheckOrTheJobRuleKeepsTheSheetOpen) {
  sheet.edit(*activity);
  sheet.fields.durationField.value = "-1";
  sheet.editor.save();
  EXPECT_FALSE(sheet.sheet.ended);
  sheet.fields.durationField.value = "";
  sheet.fields.jobPopup.value = " ";
  sheet.editor.save();
  EXPECT_FALSE(sheet.sheet.ended);
  EXPECT_EQ(test.alerts.messages(),
            (QStringList{"Time durations must be positive", "Please enter a proper job name."}));
}

TEST_F(ActivityEditor, ANewEntryIsSelectedAndNotRunning) {
  sheet.edit(*activity);
  sheet.editor.addTimeEntry();
  ASSERT_EQ(activity->entries().size(), 1u);
  EXPECT_EQ(sheet.editor.selectedEntry(), activity->entries()[0]);
  EXPECT_FALSE(activity->isRunning());
  EXPECT_EQ(activity->entries()[0]->duration(), std::nullopt);
  EXPECT_EQ(sheet.fields.startDateField.focused, 1);
}

TEST_F(ActivityEditor, DeletingTheRunningEntryStopsItFirst) {
  TimeEntry& running = activity->startEntry();
  const TimeEntry& other = test.addPeriod(*activity, "2026-11-22T12:00:00Z", 60);
  sheet.edit(*activity);
  sheet.select(running);
  test.alerts.willAnswer({"Cancel", "Delete"});
  sheet.editor.deleteTimeEntry();
  EXPECT_EQ(activity->entries().size(), 2u);
  sheet.table.rowNow = [] { return -1; };
  sheet.editor.deleteTimeEntry();
  EXPECT_EQ(test.alerts.last().message, "Are you sure you want to delete this time event?");
  EXPECT_FALSE(activity->isRunning());
  EXPECT_EQ(activity->entries().copy(), std::vector{const_cast<TimeEntry*>(&other)});
  EXPECT_EQ(sheet.editor.selectedEntry(), nullptr);
  EXPECT_EQ(sheet.fields.durationField.value, "");
}

TEST_F(ActivityEditor, CountsTheNoteAndWarnsOnceEver) {
  sheet.notesField.value = QString(99, u'x');
  sheet.editor.controlEdited(sheet.notesField);
  EXPECT_EQ(sheet.notesLength.text, "99");
  EXPECT_FALSE(sheet.notesLength.tooLong);
  EXPECT_TRUE(test.alerts.shown().empty());
  sheet.notesField.value = QString(100, u'x');
  sheet.editor.controlEdited(sheet.notesField);
  EXPECT_TRUE(sheet.notesLength.tooLong);
  EXPECT_EQ(test.alerts.messages(), QStringList{"Note exceeds Vantor limits."});
  EXPECT_EQ(test.defaults.text(" PendraNoteLengthWarning"), "YES");

  TimeEntryEditorOfTest period(test);
  period.activityNotesField.value = QString(101, u'x');
  period.editor.controlEdited(period.activityNotesField);
  EXPECT_TRUE(period.notesLength.tooLong);
  EXPECT_EQ(test.alerts.shown().size(), 1u) << "either editor silences both";
}

TEST_F(ActivityEditor, OKWaitsForCustomerAndServiceAndLabelsKeepItSoWhenAdding) {
  sheet.okButton.enabled = false;
  sheet.editor.setLabels(true);
  EXPECT_FALSE(sheet.okButton.enabled);
  EXPECT_EQ(sheet.okButton.value, "Add");
  EXPECT_FALSE(sheet.autoStartCheckbox.hidden);
  sheet.fields.customerPopup.value = "Acme";
  sheet.fields.servicePopup.value = " \t";
  sheet.editor.enableOk();
  EXPECT_FALSE(sheet.okButton.enabled);
  sheet.fields.servicePopup.value = "Design";
  sheet.editor.enableOk();
  EXPECT_TRUE(sheet.okButton.enabled);
  sheet.okButton.enabled = false;
  sheet.editor.setLabels(false);
  EXPECT_TRUE(sheet.okButton.enabled);
  EXPECT_EQ(sheet.activityLabel.value, "Edit Activity");
  EXPECT_TRUE(sheet.autoStartCheckbox.hidden);
}

TEST_F(ActivityEditor, TheAreaOfEntriesGrowsAndShrinksOnlyOnAChange) {
  for (const bool display : {false, true, true, false, false}) {
    sheet.editor.setShouldDisplayPastTimeEntries(display);
  }
  EXPECT_EQ(sheet.sheet.pastTimeView, (QList<bool>{false, true, false})) << "the first when it is made";
}

}  // namespace
}  // namespace pendra
