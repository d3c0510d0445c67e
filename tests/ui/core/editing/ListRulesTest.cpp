#include "EditorOfTest.h"
#include "support/Rows.h"

namespace pendra {
namespace {

enum class Field { Customer, Job, Service, Other };

/// What a person typed, and what either editor makes of it when the field is left.
struct Left {
  const char* name;
  bool standalone;
  Field field;
  const char* customer;
  const char* job;
  const char* service;
  QStringList answers;  ///< to what is asked
  bool mayLeave;
  QStringList said;
};

class ListRules : public testing::TestWithParam<Left> {
 protected:
  ListRules() {
    test.openDocument(GetParam().standalone);
    test.addJob(test.addCustomer("Acme"), "Roof");
    test.addJob(test.addCustomer("Zenith"), "Tower").setShown(false);
    test.addService("Design");
    test.alerts.willAnswer(GetParam().answers);
  }
  const Control& type(FieldsOfTest& fields) {
    fields.customerPopup.value = GetParam().customer;
    fields.jobPopup.value = GetParam().job;
    fields.servicePopup.value = GetParam().service;
    switch (GetParam().field) {
      case Field::Customer:
        return fields.customerPopup;
      case Field::Service:
        return fields.servicePopup;
      case Field::Job:
        return fields.jobPopup;
      case Field::Other:
        return fields.startDateField;
    }
    return fields.jobPopup;
  }
  void expectSaid() {
    EXPECT_EQ(test.alerts.messages(), GetParam().said);
    EXPECT_EQ(test.alerts.unasked(), 0u);
  }

  TestSession test;
};

class ActivityListRules : public ListRules {};

TEST_P(ActivityListRules, DecideWhetherAFieldIsLeft) {
  ActivityEditorOfTest sheet(test);
  EXPECT_EQ(sheet.editor.mayLeave(type(sheet.fields)), GetParam().mayLeave);
  expectSaid();
}

const QStringList kOK{"OK"};
const QStringList kCancel{"Cancel"};

INSTANTIATE_TEST_SUITE_P(
    Rows, ActivityListRules,
    testing::Values(
        Left{"KnownCustomer", false, Field::Customer, "Acme", "", "", {}, true, {}},
        Left{"BlankCustomer", false, Field::Customer, " \t", "", "", {}, true, {}},
        Left{"NewCustomer",
             true,
             Field::Customer,
             "New",
             "",
             "",
             kOK,
             true,
             {"Add \"New\" to the Customers list?"}},
        Left{"NewCustomerDeclined",
             true,
             Field::Customer,
             "acme",
             "",
             "",
             kCancel,
             false,
             {"Add \"acme\" to the Customers list?"}},
        Left{"UnknownCustomerLinked",
             false,
             Field::Customer,
             "Acme ",
             "",
             "",
             {},
             false,
             {"Choose an existing customer"}},
        Left{"KnownService", false, Field::Service, "", "", "Design", {}, true, {}},
        Left{"BlankService", false, Field::Service, "", "", " ", {}, true, {}},
        Left{"NewService",
             true,
             Field::Service,
             "",
             "",
             "%@ work",
             kOK,
             true,
             {"Add \"%@ work\" to the Services list?"}},
        Left{"UnknownServiceLinked",
             false,
             Field::Service,
             "",
             "",
             "Work",
             {},
             false,
             {"Choose an existing service"}},
        Left{"KnownJob", false, Field::Job, "Acme", "Roof", "", {}, true, {}},
        Left{"HiddenJob", false, Field::Job, "Zenith", "Tower", "", {}, true, {}},
        Left{"JobWithoutCustomer", false, Field::Job, "", "Roof", "", {}, true, {}},
        Left{"JobOfUnknownCustomer", false, Field::Job, "Nobody", "Roof", "", {}, true, {}},
        Left{"BlankJob", true, Field::Job, "Acme", "  ", "", {}, false, {"Please enter a proper job name."}},
        Left{"JobOfAnother", false, Field::Job, "Acme", "Tower", "", {}, false, {"Choose an existing job"}},
        Left{"JobInOtherCase",
             true,
             Field::Job,
             "Acme",
             "roof",
             "",
             kOK,
             true,
             {"Add \"roof\" to the Jobs list?"}},
        Left{"AnyOtherFieldAsksForTheJob",
             true,
             Field::Other,
             "Acme",
             "New",
             "",
             kCancel,
             false,
             {"Add \"New\" to the Jobs list?"}}),
    RowName());

class TimeEntryListRules : public ListRules {};

TEST_P(TimeEntryListRules, DecideWhetherAFieldIsLeft) {
  TimeEntryEditorOfTest sheet(test);
  const Control& left = type(sheet.fields);
  sheet.editor.controlEdited(sheet.fields.jobPopup);
  EXPECT_EQ(sheet.editor.mayLeave(left), GetParam().mayLeave);
  expectSaid();
}

const QStringList kAskedTwice{"Add \"New\" to the Customers list?", "Add \"New\" to the Customers list?"};
const QStringList kBlankAskedTwice{"Add \" \" to the Services list?", "Add \" \" to the Services list?"};

INSTANTIATE_TEST_SUITE_P(
    Rows, TimeEntryListRules,
    testing::Values(
        Left{"KnownCustomer", false, Field::Customer, "Acme", "", "", {}, true, {}},
        Left{"BlanksAreAName",
             false,
             Field::Customer,
             " ",
             "",
             "",
             {},
             false,
             {"Choose an existing customer"}},
        Left{"SecondAnswerCounts", true, Field::Customer, "New", "", "", {"Cancel", "OK"}, true, kAskedTwice},
        Left{"FirstAnswerDoesNotCount",
             true,
             Field::Customer,
             "New",
             "",
             "",
             {"OK", "Cancel"},
             false,
             kAskedTwice},
        Left{"BlankService", true, Field::Service, "", "", " ", {"OK", "OK"}, true, kBlankAskedTwice},
        Left{"UnknownServiceLinked",
             false,
             Field::Service,
             "",
             "",
             "Work",
             {},
             false,
             {"Choose an existing service item"}},
        Left{"KnownJob", true, Field::Job, "Acme", "Roof", "", {}, true, {}},
        Left{"UnknownJobIsSilent", true, Field::Job, "Acme", "New", "", {}, false, {}},
        Left{"JobOfUnknownCustomerIsStuck", true, Field::Job, "Nobody", "Roof", "", {}, false, {}},
        Left{"AnyOtherFieldAsksForTheJob", true, Field::Other, "Acme", "roof", "", {}, false, {}},
        Left{"EmptyJob", true, Field::Job, "Nobody", "", "", {}, true, {}}),
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

TEST_F(ListEntries, AJobIsAddedToTheFirstCustomerOfTheName) {
  test.openDocument();
  const Customer& first = test.addCustomer("Acme");
  const Customer& second = test.addCustomer("Acme");
  test.alerts.willAnswer({"OK"});
  ActivityEditorOfTest sheet(test);
  sheet.fields.customerPopup.value = "Acme";
  sheet.fields.jobPopup.value = "Roof";
  EXPECT_TRUE(sheet.editor.mayLeave(sheet.fields.jobPopup));
  EXPECT_EQ(first.jobs().size(), 1u);
  EXPECT_EQ(second.jobs().size(), 0u);
}

TEST_F(ListEntries, ListsHoldDistinctOfferedNamesWhateverTheirCase) {
  test.openDocument();
  test.addCustomer("zebra");
  test.addCustomer("Acme");
  test.addCustomer("Acme");
  test.addCustomer("Hidden").setShown(false);
  ActivityEditorOfTest activity(test);
  TimeEntryEditorOfTest period(test);
  period.editor.reloadNames();
  const QStringList expected{"Acme", "zebra"};
  EXPECT_EQ(activity.editor.namesFor(activity.fields.customerPopup), expected);
  EXPECT_EQ(period.editor.namesFor(period.fields.customerPopup), expected);
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

  TimeEntryEditorOfTest period(test);
  period.editor.setCustomer(&acme);
  period.fields.customerPopup.value = "Acme";
  period.fields.jobPopup.value = "Cellar";
  period.editor.customerPicked();
  EXPECT_EQ(period.editor.namesFor(period.fields.jobPopup), (QStringList{"Cellar", "roof", "roof"}));
  EXPECT_EQ(period.fields.jobPopup.value, "Cellar") << "the same customer keeps its job";
}

}  // namespace
}  // namespace pendra
