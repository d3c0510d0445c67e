#include "EditorOfTest.h"
#include "support/Rows.h"

namespace pendra {
namespace {

enum Editor { kActivity, kEntry };
enum Field { kCustomer, kJob, kService, kOther };
constexpr bool kLinked = false;
constexpr bool kStandalone = true;

/// What a person typed, and what an editor makes of it when the field is left.
struct Left {
  const char* name;
  Editor editor;
  bool standalone;
  Field field;
  const char* typed;    ///< customer, job and service, with a bar after each
  const char* answers;  ///< to what is asked, with a comma between two
  bool mayLeave;
  const char* said;  ///< a name that is asked about twice stands with "2 x"
};

class ListRules : public testing::TestWithParam<Left> {
 protected:
  ListRules() {
    test.openDocument(GetParam().standalone);
    test.addJob(test.addCustomer("Acme"), "Roof");
    test.addJob(test.addCustomer("Zenith"), "Tower").setShown(false);
    test.addService("Design");
    test.alerts.willAnswer(QString(GetParam().answers).split(',', Qt::SkipEmptyParts));
  }
  const Control& type(FieldsOfTest& fields) {
    const QStringList typed = QString(GetParam().typed).split('|');
    const std::array<ControlOfTest*, 4> all{&fields.customerPopup, &fields.jobPopup, &fields.servicePopup,
                                            &fields.startDateField};
    for (std::size_t at = 0; at < 3; ++at) all.at(at)->value = typed.value(static_cast<qsizetype>(at));
    return *all.at(GetParam().field);
  }
  TestSession test;
};

TEST_P(ListRules, DecideWhetherAFieldIsLeft) {
  if (GetParam().editor == kActivity) {
    ActivityEditorOfTest sheet(test);
    EXPECT_EQ(sheet.editor.mayLeave(type(sheet.fields)), GetParam().mayLeave);
  } else {
    TimeEntryEditorOfTest sheet(test);
    const Control& left = type(sheet.fields);
    sheet.editor.controlEdited(sheet.fields.jobPopup);
    EXPECT_EQ(sheet.editor.mayLeave(left), GetParam().mayLeave);
  }
  const QString said = GetParam().said;
  QStringList expected(said.startsWith("2 x ") ? 2 : 1, said.mid(said.startsWith("2 x ") ? 4 : 0));
  if (said.isEmpty()) expected.clear();
  EXPECT_EQ(test.alerts.messages(), expected);
  EXPECT_EQ(test.alerts.unasked(), 0u);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, ListRules,
    testing::Values(
        Left{"BlankCustomer", kActivity, kLinked, kCustomer, " \t", "", true, ""},
        Left{"BlankService", kActivity, kLinked, kService, "|| ", "", true, ""},
        Left{"UnknownService", kActivity, kLinked, kService, "||Work", "", false,
             "Choose an existing service"},
        Left{"HiddenJob", kActivity, kLinked, kJob, "Zenith|Tower|", "", true, ""},
        Left{"JobWithoutCustomer", kActivity, kLinked, kJob, "|Roof|", "", true, ""},
        Left{"JobOfUnknownCustomer", kActivity, kLinked, kJob, "Nobody|Roof|", "", true, ""},
        Left{"JobOfAnother", kActivity, kLinked, kJob, "Acme|Tower|", "", false, "Choose an existing job"},
        Left{"OtherCase", kActivity, kStandalone, kJob, "Acme|roof|", "OK", true,
             "Add \"roof\" to the Jobs list?"},
        Left{"Other", kActivity, kStandalone, kOther, "Acme|New|", "Cancel", false,
             "Add \"New\" to the Jobs list?"},
        Left{"EntryBlanksAreAName", kEntry, kLinked, kCustomer, " ", "", false,
             "Choose an existing customer"},
        Left{"EntrySecondAnswerCounts", kEntry, kStandalone, kCustomer, "New", "Cancel,OK", true,
             "2 x Add \"New\" to the Customers list?"},
        Left{"EntryFirstAnswerDoesNotCount", kEntry, kStandalone, kCustomer, "New", "OK,Cancel", false,
             "2 x Add \"New\" to the Customers list?"},
        Left{"EntryBlankService", kEntry, kStandalone, kService, "|| ", "OK,OK", true,
             "2 x Add \" \" to the Services list?"},
        Left{"EntryUnknownService", kEntry, kLinked, kService, "||Work", "", false,
             "Choose an existing service item"},
        Left{"EntryKnownJob", kEntry, kStandalone, kJob, "Acme|Roof|", "", true, ""},
        Left{"EntryJobOfUnknownCustomerIsStuck", kEntry, kStandalone, kJob, "Nobody|Roof|", "", false, ""},
        Left{"EntryOtherAsksForTheJob", kEntry, kStandalone, kOther, "Acme|roof|", "", false, ""},
        Left{"EntryEmptyJob", kEntry, kStandalone, kJob, "Nobody||", "", true, ""}),
    RowName());

class ListEntries : public testing::Test {
 protected:
  TestSession test;
};

TEST_F(ListEntries, AddedNamesExistOnlyHereAndAServiceItemIsNotOffered) {
  const ObjectContext& context = test.openDocument();
  test.alerts.willAnswer({"OK", "OK", "OK"});
  ActivityEditorOfTest sheet(test);
  sheet.fields.customerPopup.value = "New";
  ASSERT_TRUE(sheet.editor.mayLeave(sheet.fields.customerPopup));
  sheet.fields.jobPopup.value = "Roof";
  ASSERT_TRUE(sheet.editor.mayLeave(sheet.fields.jobPopup));
  sheet.fields.servicePopup.value = "Design";
  ASSERT_TRUE(sheet.editor.mayLeave(sheet.fields.servicePopup));

  const Customer& customer = *queries::customersNamed(context, "New")[0];
  EXPECT_EQ(customer.vtObjectID(), "0");
  EXPECT_EQ(customer.shown(), true);
  ASSERT_EQ(customer.jobs().size(), 1u);
  EXPECT_EQ(customer.jobs()[0]->name(), "Roof");
  EXPECT_EQ(customer.jobs()[0]->vtObjectID(), "0");
  const Service& service = *queries::servicesNamed(context, "Design")[0];
  EXPECT_EQ(service.vtObjectID(), "0");
  EXPECT_NE(service.shown(), true);
  EXPECT_EQ(sheet.editor.namesFor(sheet.fields.servicePopup), QStringList());
  EXPECT_EQ(sheet.editor.namesFor(sheet.fields.jobPopup), QStringList{"Roof"});
}

TEST_F(ListEntries, OfEqualNamesTheFirstIsMeantAndOneIsListed) {
  test.openDocument();
  test.addCustomer("zebra");
  const Customer& first = test.addCustomer("Acme");
  test.addCustomer("Acme");
  test.addCustomer("Hidden").setShown(false);
  test.alerts.willAnswer({"OK"});
  ActivityEditorOfTest activity(test);
  TimeEntryEditorOfTest entry(test);
  entry.editor.reloadNames();
  const QStringList expected{"Acme", "zebra"};
  EXPECT_EQ(activity.editor.namesFor(activity.fields.customerPopup), expected);
  EXPECT_EQ(entry.editor.namesFor(entry.fields.customerPopup), expected);
  activity.fields.customerPopup.value = "Acme";
  activity.fields.jobPopup.value = "Roof";
  EXPECT_TRUE(activity.editor.mayLeave(activity.fields.jobPopup));
  EXPECT_EQ(first.jobs().size(), 1u);
}

TEST_F(ListEntries, PickingACustomerListsItsJobsEachEditorInItsOwnWay) {
  test.openDocument(false);
  Customer& acme = test.addCustomer("Acme");
  test.addJob(acme, "roof");
  test.addJob(acme, "Cellar");
  test.addJob(acme, "roof");
  test.addJob(acme, "Hidden").setShown(false);
  ActivityEditorOfTest activity(test);
  activity.fields.customerPopup.value = "Acme";
  activity.fields.jobPopup.value = "Cellar";
  activity.editor.customerPicked();
  EXPECT_EQ(activity.editor.namesFor(activity.fields.jobPopup), (QStringList{"Cellar", "roof"}));
  EXPECT_EQ(activity.fields.jobPopup.value, "");

  TimeEntryEditorOfTest entry(test);
  entry.editor.setCustomer(&acme);
  entry.fields.customerPopup.value = "Acme";
  entry.fields.jobPopup.value = "Cellar";
  entry.editor.customerPicked();
  EXPECT_EQ(entry.editor.namesFor(entry.fields.jobPopup), (QStringList{"Cellar", "roof", "roof"}));
  EXPECT_EQ(entry.fields.jobPopup.value, "Cellar") << "the same customer keeps its job";
}

}  // namespace
}  // namespace pendra
