#include "EditorOfTest.h"
#include "support/Rows.h"

namespace pendra {
namespace {

class NoDisplay final : public TimerDisplay {
 public:
  void showElapsedTime(const QString&) override {}
  void showCustomerJobLabel(const QString&) override {}
  void showMainButton(bool) override {}
  void hideSendTime() override {}
  void showActivitySheet(bool) override {}
};

class LogOfFlows final : public LogPane {
 public:
  void reloadData() override {}
  void reloadNames() override {}
  void reloadKeepingChoice() override {}
  void clearSelection() override {}
  void updateRunningEntries() override {}
  void markSelectedUnsent() override {}
  void selectEntry(const TimeEntry*) override {}
  [[nodiscard]] std::vector<Ref<TimeEntry>> selectedEntries() const override { return {}; }
  [[nodiscard]] Activity* selectedActivity() const override { return activity; }
  [[nodiscard]] int numberOfSelectedRows() const override { return activity ? 1 : 0; }

  Activity* activity = nullptr;
};

class EditorFlows : public testing::Test {
 protected:
  EditorFlows() : context(test.openDocument()), sheet(test), entrySheet(test) {
    timer.setLog(log);
    table.changed = [this] { timer.selectionChanged(); };
    acme = &test.addCustomer("Acme");
    roof = &test.addJob(*acme, "Roof");
    zenith = &test.addCustomer("Zenith");
    design = &test.addService("Design");
  }
  /// What a person types before the sheet ends.
  void willType(const QString& customer, const QString& job, const QString& service, int code = 1) {
    sheet.sheet.user = [=, this] {
      sheet.fields.customerPopup.value = customer;
      sheet.fields.jobPopup.value = job;
      sheet.fields.servicePopup.value = service;
      sheet.notesField.value = "Typed";
      sheet.sheet.end(code);
    };
  }
  [[nodiscard]] std::vector<Activity*> activities() const { return context.fetch<Activity>(); }

  TestSession test;
  ObjectContext& context;
  ActivityEditorOfTest sheet;
  TimeEntryEditorOfTest entrySheet;
  NoDisplay display;
  LogOfFlows log;
  TableOfEditor table;
  TimerState timer{test.session, table, display};
  ActivitySheetFlow flow{timer, table, sheet.editor};
  Customer* acme = nullptr;
  Customer* zenith = nullptr;
  Job* roof = nullptr;
  Service* design = nullptr;
};

TEST_F(EditorFlows, ANewActivityIsAppliedStartedAndSelected) {
  willType("Acme", "roof", "Design");
  flow.showActivitySheet(true);
  ASSERT_EQ(activities().size(), 1u);
  const Activity& added = *activities()[0];
  EXPECT_EQ(added.customer(), acme);
  EXPECT_EQ(added.job(), roof) << "a job is found in any case";
  EXPECT_EQ(added.service(), design);
  EXPECT_EQ(added.notes(), "Typed");
  EXPECT_TRUE(added.isRunning());
  EXPECT_EQ(added.entries().size(), 1u) << "started once";
  EXPECT_EQ(timer.currentActivity(), &added);
  EXPECT_EQ(table.row, 0);
  EXPECT_TRUE(timer.currentActivity()->isRunning());
}

TEST_F(EditorFlows, TheBoxesOpenAsTheActivityHasThemAndAreTakenOnOK) {
  willType("Acme", "", "Design");
  const auto type = sheet.sheet.user;
  sheet.sheet.user = [&] {
    EXPECT_TRUE(sheet.billableCheckbox.checked);
    EXPECT_TRUE(sheet.autoStartCheckbox.checked);
    sheet.billableCheckbox.checked = false;
    sheet.autoStartCheckbox.checked = false;
    type();
  };
  flow.showActivitySheet(true);
  EXPECT_EQ(activities()[0]->billable(), false);
  EXPECT_EQ(activities()[0]->shouldAutoStartTimer(), false);
  EXPECT_FALSE(activities()[0]->isRunning());
}

TEST_F(EditorFlows, CancelDeletesTheNewActivityAndGoesBackToTheOneBefore) {
  Activity& before = test.addActivity(acme, design);
  timer.setCurrentActivity(&before);
  willType("Acme", "", "Design", 0);
  flow.showActivitySheet(true);
  EXPECT_EQ(activities(), std::vector{&before});
  EXPECT_EQ(timer.currentActivity(), &before);
  EXPECT_EQ(sheet.editor.currentActivity(), nullptr);
}

TEST_F(EditorFlows, CancelKeepsAnEditedActivityAsItWas) {
  Activity& edited = test.addActivity(acme, design, roof, "Old");
  timer.setCurrentActivity(&edited);
  willType("Zenith", "", "Design", 0);
  flow.showActivitySheet(false);
  EXPECT_EQ(edited.customer(), acme);
  EXPECT_EQ(edited.notes(), "Old");
}

TEST_F(EditorFlows, EditingFillsTheSheetAndNothingOpensWithoutAnActivity) {
  bool opened = false;
  sheet.sheet.user = [&] { opened = true; };
  flow.showActivitySheet(false);
  EXPECT_FALSE(opened);

  Activity& edited = test.addActivity(acme, design, roof, "Old");
  edited.setBillable(false);
  timer.setCurrentActivity(&edited);
  flow.showActivitySheet(false);
  EXPECT_TRUE(opened);
  EXPECT_EQ(sheet.fields.customerPopup.value, "Acme");
  EXPECT_EQ(sheet.fields.jobPopup.value, "Roof");
  EXPECT_EQ(sheet.fields.servicePopup.value, "Design");
  EXPECT_EQ(sheet.notesField.value, "Old");
  EXPECT_EQ(sheet.notesLength.text, "3");
  EXPECT_EQ(sheet.notesField.focused, 1);
  EXPECT_FALSE(sheet.billableCheckbox.checked);
}

/// Names typed for an activity of Acme, Roof, Design, and how far they are applied.
struct Nested {
  const char* name;
  QString customer;
  QString job;
  QString service;
  QString hasCustomer;
  QString hasJob;
  QString hasNotes;
};

class NestedNames : public EditorFlows, public testing::WithParamInterface<Nested> {};

TEST_P(NestedNames, AreAppliedUpToTheFirstUnknownOne) {
  const Nested& row = GetParam();
  Activity& edited = test.addActivity(acme, design, roof, "Old");
  timer.setCurrentActivity(&edited);
  willType(row.customer, row.job, row.service);
  flow.showActivitySheet(false);
  EXPECT_EQ(queries::nameOf(edited.customer()), row.hasCustomer);
  EXPECT_EQ(queries::nameOf(edited.job()), row.hasJob);
  EXPECT_EQ(edited.service(), design);
  EXPECT_EQ(edited.notes(), row.hasNotes);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, NestedNames,
    testing::Values(Nested{"UnknownCustomer", "Nobody", "", "Design", "Acme", "Roof", "Old"},
                    Nested{"UnknownService", "Zenith", "", "Unknown", "Zenith", "Roof", "Old"},
                    Nested{"UnknownJobKeepsTheOldOne", "Zenith", "Attic", "Design", "Zenith", "Roof",
                           "Typed"},
                    Nested{"EmptyJobClearsIt", "Acme", "", "Design", "Acme", "", "Typed"}),
    RowName());

TEST_F(EditorFlows, ANewActivityOfAnUnknownCustomerStaysAsItWasMade) {
  willType("Nobody", "", "Design");
  flow.showActivitySheet(true);
  ASSERT_EQ(activities().size(), 1u);
  EXPECT_EQ(activities()[0]->customer(), nullptr);
  EXPECT_EQ(activities()[0]->notes(), "");
  EXPECT_FALSE(activities()[0]->isRunning());
  EXPECT_EQ(timer.rows().rowCount(), 0) << "listed by the next reload only";
}

TEST_F(EditorFlows, ATimeEntryIsEditedWithItsOwnActivityOnOKOnly) {
  TimeEntrySheetFlow entryFlow(timer, entrySheet.editor);
  Activity& activity = test.addActivity(acme, design);
  TimeEntry& entry = test.addPeriod(activity, "2026-11-23T08:00:00Z", 60);
  entryFlow.showTimeEntrySheet();
  EXPECT_EQ(entrySheet.editor.currentEntry(), nullptr) << "nothing is selected";

  timer.setCurrentEntry(&entry);
  log.activity = &test.addActivity(zenith, design);
  int code = EditorSheet::kCancelled;
  entrySheet.sheet.user = [&] {
    EXPECT_EQ(entrySheet.fields.customerPopup.value, "Acme") << "whatever the log has selected";
    entrySheet.type(entrySheet.fields.durationField, "2:00");
    entrySheet.sheet.end(code);
  };
  entryFlow.showTimeEntrySheet();
  EXPECT_EQ(entry.duration(), 60);
  code = EditorSheet::kAccepted;
  entryFlow.showTimeEntrySheet();
  EXPECT_EQ(entry.duration(), 7200);
  EXPECT_EQ(context.undoStack().undoName(), "Edit of an Entry");
}

}  // namespace
}  // namespace pendra
