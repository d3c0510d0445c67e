#include <gmock/gmock.h>

#include "document/DocumentClosing.h"
#include "store/UndoStack.h"
#include "support/LogCapture.h"
#include "support/TestSession.h"
#include "ui_core/CustomerListController.h"
#include "ui_core/ServicesListController.h"

namespace pendra {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The window around a list.
class WindowOfTest final : public ListView {
 public:
  void editColumn(int column, int row) override { edited.emplace_back(column, row); }
  void standaloneChanged() override { ++standaloneChanges; }

  int standaloneChanges = 0;
  std::vector<std::pair<int, int>> edited;
};

template <class Controller>
class Lists : public testing::Test, protected TestSession {
 protected:
  explicit Lists(bool standalone = true) { openDocument(standalone); }

  void reload() { list.setSearchString(list.searchString()); }
  /// The rows as "name" or "  job".
  QStringList rows() {
    QStringList texts;
    for (int row = 0; row < list.table().rowCount(); ++row) {
      const QString job = list.table().columnCount() > 2 ? list.table().text(row, 1) : QString();
      texts << (job.isEmpty() ? list.table().text(row, 0) : QString("  " + job));
    }
    return texts;
  }
  void select(const char* text) {
    list.selection().clearSelection();
    list.selection().selectRow(static_cast<int>(rows().indexOf(QString::fromUtf8(text))));
  }
  void type(const QString& text) { std::ignore = list.rename(list.selection().row(), text); }
  /// Presses Delete at that row, and Delete in what is asked then.
  void deleteRow(const char* text) {
    select(text);
    alerts.willAnswer({"Delete"});
    list.deleteRow();
  }
  void tick(bool shown) { list.setShown(list.selection().row(), shown); }
  /// A change that some other window makes.
  template <class Work>
  void elsewhere(const Work& work) {
    std::ignore = session.context()->edit(QStringLiteral("Elsewhere"), work);
  }
  UndoStack& steps() { return session.context()->undoStack(); }

  WindowOfTest window;
  Controller list{session, window};
};

class CustomerList : public Lists<CustomerListController> {
 protected:
  explicit CustomerList(bool standalone = true) : Lists(standalone) {
    acme = &addCustomer(QStringLiteral("Acme"));
    zed = &addCustomer(QStringLiteral("Zed"));
    addJob(*acme, QStringLiteral("Phone"));
    addJob(*acme, QStringLiteral("Accounts"));
    addJob(*zed, QStringLiteral("Backup"));
    list.start();
  }
  Customer* acme;
  Customer* zed;
};

TEST_F(CustomerList, FindsCustomersByTheirJobsToo) {
  const QStringList acmes{"Acme", "  Phone", "  Accounts"};
  const QStringList zeds{"Zed", "  Backup"};
  for (const auto& [text, found] :
       {std::pair("ac", acmes + zeds), std::pair("ZED", zeds), std::pair("phone", acmes),
        std::pair("xyz", QStringList()), std::pair(" ", QStringList())}) {
    list.setSearchString(QString::fromUtf8(text));
    EXPECT_EQ(rows(), found) << text;
  }
}

TEST_F(CustomerList, HidesASecondCustomerOfOneName) {
  addJob(addCustomer(QStringLiteral("Acme")), QStringLiteral("Hidden"));
  reload();
  EXPECT_THAT(rows(), ElementsAre("Acme", "  Phone", "  Accounts", "Zed", "  Backup"));
  list.setSearchString(QStringLiteral("hidden"));
  EXPECT_THAT(rows(), ElementsAre("Acme", "  Hidden")) << "of those that match, the first";
}

TEST_F(CustomerList, RenamesSortsAgainAndRefusesATakenName) {
  select("Acme");
  type(QStringLiteral("Zulu"));
  EXPECT_THAT(rows(), ElementsAre("Zed", "  Backup", "Zulu", "  Phone", "  Accounts"));
  EXPECT_EQ(acme->name(), "Zulu");
  select("Zulu");
  type(QStringLiteral("Zed"));
  EXPECT_EQ(acme->name(), "Zulu");
  EXPECT_EQ(alerts.last().message, "Zed already exists!");
  EXPECT_EQ(alerts.last().informative, "Please choose a different name for the customer.");
  EXPECT_THAT(window.edited, ElementsAre(std::pair(2, 2))) << "the row's number for the column too";
  type(QStringLiteral("Zulu"));
  EXPECT_EQ(alerts.last().message, "Zulu already exists!") << "its own name too";
  select("  Phone");
  type(QStringLiteral("Zed"));
  EXPECT_EQ(acme->jobs()[0]->name(), "Phone") << "a job's name is compared with the customers'";
  type(QStringLiteral("Backup"));
  EXPECT_EQ(acme->jobs()[0]->name(), "Backup");
  EXPECT_EQ(alerts.shown().size(), 3U);
  EXPECT_TRUE(list.rename(list.selection().row(), QString()));
  EXPECT_EQ(acme->jobs()[0]->name(), "Backup") << "an empty name is left unchanged";
}

TEST_F(CustomerList, ShowsWhatIsDoneElsewhereAndTakesItsOwnStepsBack) {
  elsewhere([this] { addJob(addCustomer(QStringLiteral("moon")), QStringLiteral("Landing")); });
  EXPECT_THAT(rows(), ElementsAre("Acme", "  Phone", "  Accounts", "Zed", "  Backup", "moon", "  Landing"));
  elsewhere([this] { acme->setName(QStringLiteral("Zz")); });
  EXPECT_THAT(rows(), ElementsAre("Zed", "  Backup", "Zz", "  Phone", "  Accounts", "moon", "  Landing"));
  int others = 0;
  QObject::connect(&list.table(), &QAbstractItemModel::modelReset, [&] { others += 100; });
  QObject::connect(&list.table(), &QAbstractItemModel::dataChanged, [&] { ++others; });
  elsewhere([this] { addActivity(acme, nullptr); });
  select("Zed");
  tick(false);
  EXPECT_EQ(others, 1) << "one row shows what one row is told";
  EXPECT_EQ(steps().undoName(), "Hide Zed");
  type(QStringLiteral("Star"));
  EXPECT_EQ(steps().undoName(), "Rename of Zed");
  list.markNoneShown();
  EXPECT_EQ(steps().undoName(), "Mark None Shown");
  list.addNewCustomer();
  for (int step = 0; step < 4; ++step) steps().undo();
  EXPECT_THAT(rows(), ElementsAre("Zed", "  Backup", "Zz", "  Phone", "  Accounts", "moon", "  Landing"));
  EXPECT_TRUE(list.table().isChecked(0, 2));
}

TEST_F(CustomerList, NumbersANewCustomerWithOneTryMore) {
  const auto made = [this] {
    list.addNewCustomer();
    return list.table().text(0, 0);
  };
  EXPECT_EQ(made(), "Customer3");
  elsewhere([this] { acme->setName(QStringLiteral("Customer4")); });
  EXPECT_EQ(made(), "Customer5");
  elsewhere([this] { acme->setName(QStringLiteral("Customer6")); });
  EXPECT_EQ(made(), "Customer6") << "that is taken too";
}

TEST_F(CustomerList, AddsAtTheTopUnsortedEvenWhileSearching) {
  list.setSearchString(QStringLiteral("zed"));
  EXPECT_FALSE(list.canDelete());
  list.deleteRow();
  list.addNewCustomer();
  EXPECT_TRUE(list.canDelete());
  EXPECT_THAT(rows(), ElementsAre("Customer3", "Zed", "  Backup"));
  EXPECT_EQ(session.context()->all<Customer>()[2]->vtObjectID(), "0");
  EXPECT_EQ(session.context()->all<Customer>()[2]->shown(), true);
  list.addNewJob();
  EXPECT_THAT(rows(), ElementsAre("Customer3", "  Job Name", "Zed", "  Backup"));
  EXPECT_EQ(list.selection().row(), 1);
  EXPECT_EQ(list.jobForRow(1)->customer()->name(), "Customer3");
  EXPECT_EQ(list.jobForRow(1)->vtObjectID(), "0");
  EXPECT_EQ(list.jobForRow(1)->shown(), true);
  EXPECT_FALSE(list.canAddJob());
  list.addNewJob();
  EXPECT_EQ(list.table().rowCount(), 4) << "a job's row takes no job";
}

TEST_F(CustomerList, MarksOnlyWhatIsListed) {
  list.setSearchString(QStringLiteral("zed"));
  list.markNoneShown();
  EXPECT_EQ(zed->shown(), false);
  EXPECT_EQ(zed->jobs()[0]->shown(), false);
  EXPECT_EQ(acme->shown(), true);
  EXPECT_FALSE(list.table().isChecked(0, 2));
  list.markAllShown();
  EXPECT_EQ(zed->jobs()[0]->shown(), true);
  EXPECT_TRUE(list.table().isChecked(1, 2));
}

TEST_F(CustomerList, DeletesACustomerWhoseActivitiesAreComplete) {
  auto& activity = addActivity(acme, nullptr, acme->jobs()[1]);
  activity.setCompleted(true);
  addEntry(activity, "2026-11-20 09:00", 60);
  select("Acme");
  alerts.willAnswer({"Cancel", "Delete"});
  list.deleteRow();
  EXPECT_EQ(alerts.last().message, "Delete Acme?");
  EXPECT_EQ(alerts.last().buttons, QStringList({"Delete", "Cancel"}));
  EXPECT_EQ(alerts.last().style, Alert::Style::Critical) << "Cancel is its default";
  EXPECT_EQ(alerts.last().informative,
            "Its 2 jobs go with it. 1 completed activity with 1 entry keeps its time and loses this name.");
  EXPECT_EQ(list.table().rowCount(), 5);
  list.deleteRow();
  EXPECT_THAT(rows(), ElementsAre("Zed", "  Backup"));
  EXPECT_EQ(activity.customer(), nullptr);
  EXPECT_TRUE(activity.loss().customer && activity.loss().job);
  EXPECT_EQ(session.context()->all<Job>().size(), 1U);
  EXPECT_EQ(session.notices().standing().size(), 0U);
  EXPECT_EQ(steps().undoName(), "Delete of Acme");
  steps().undo();
  EXPECT_EQ(activity.job(), acme->jobs()[1]);
  EXPECT_FALSE(activity.loss().any());
}

TEST_F(CustomerList, RefusesWhatAnOpenActivityUses) {
  addActivity(acme, nullptr, acme->jobs()[0]);
  deleteRow("Acme");
  EXPECT_EQ(alerts.last().message, "Cannot Delete Customer");
  EXPECT_EQ(alerts.last().informative,
            "You cannot delete Acme because you have current activities for this customer. Mark complete any "
            "activities for this customer and try again.");
  deleteRow("  Phone");
  EXPECT_EQ(alerts.last().style, Alert::Style::Critical);
  EXPECT_EQ(alerts.last().message,
            "You cannot delete Phone because you have current activities for this job. Mark complete any "
            "activities for this job and try again.");
  EXPECT_EQ(alerts.last().informative, "");
  EXPECT_EQ(list.table().rowCount(), 5);
  deleteRow("  Accounts");
  EXPECT_THAT(rows(), ElementsAre("Acme", "  Phone", "Zed", "  Backup"));
  addCustomer(QStringLiteral("*"));
  reload();
  deleteRow("*");
  EXPECT_EQ(alerts.last().message, "Cannot Delete Customer") << "a star stands for any text";
}

TEST_F(CustomerList, DeletesNothingWhenANameBreaksTheQuestion) {
  Customer& quoted = addCustomer(QStringLiteral("5\" disks"));
  addActivity(&quoted, nullptr);
  reload();
  const LogCapture log;
  deleteRow("5\" disks");
  EXPECT_EQ(alerts.shown().size(), 1U) << "no alert beyond the confirmation";
  EXPECT_FALSE(quoted.isDeleted());
  EXPECT_EQ(log.lines().size(), 1);
  EXPECT_EQ(session.notices().standing().size(), 1U);
}

TEST_F(CustomerList, OutlivesItsDocumentAndFollowsTheNextOne) {
  select("Acme");
  session.context()->deleteObject(*acme);
  tick(false);
  list.deleteRow();
  list.markNoneShown();
  const int changes = window.standaloneChanges;
  closeDoc(session);
  EXPECT_EQ(list.table().rowCount(), 0);
  EXPECT_EQ(window.standaloneChanges, changes + 1) << "without a document nothing is standalone";
  list.addNewCustomer();
  list.setSearchString(QStringLiteral("x"));
  list.setSearchString({});
  loadDocument(session, places.path("Next.pdr"));
  EXPECT_EQ(list.table().rowCount(), 0);
}

class LinkedCustomerList : public CustomerList {
 protected:
  LinkedCustomerList() : CustomerList(false) {}
};

TEST_F(LinkedCustomerList, OnlyChoosesWhatIsOfferedButStillDeletes) {
  EXPECT_FALSE(list.table().isEditable(0, 0));
  list.addNewCustomer();
  select("Acme");
  list.addNewJob();
  EXPECT_EQ(list.table().rowCount(), 5);
  tick(false);
  EXPECT_EQ(acme->shown(), false);
  Activity& done = addActivity(zed, nullptr, zed->jobs()[0]);
  done.setCompleted(true);
  for (const char* sent : {"2026-11-20 09:00", "", ""}) {
    TimeEntry& entry = addEntry(done, "2026-11-19 09:00", 60);
    if (*sent) entry.setDateSubmitted(instantOf(sent));
  }
  select("  Backup");
  tick(false);
  EXPECT_EQ(zed->jobs()[0]->shown(), false);
  alerts.willAnswer({"Delete"});
  list.deleteRow();
  EXPECT_EQ(alerts.last().informative,
            "1 completed activity with 3 entries, 2 of them unsent, keeps its time and loses this name.");
  EXPECT_TRUE(zed->jobs().empty());
}

// ---- service items

class ServicesList : public Lists<ServicesListController> {
 protected:
  explicit ServicesList(bool standalone = true) : Lists(standalone) {
    design = &addService(QStringLiteral("Design"));
    advice = &addService(QStringLiteral("Advice"));
    list.start();
  }
  Service* design;
  Service* advice;
};

TEST_F(ServicesList, AcceptsDuplicatesAndListsThemAll) {
  select("Advice");
  type(QStringLiteral("Design"));
  EXPECT_THAT(rows(), ElementsAre("Design", "Design"));
  EXPECT_EQ(list.rows().row(0)->service.get(), design) << "the first inserted first";
  EXPECT_THAT(alerts.messages(), IsEmpty());
  list.setSearchString(QStringLiteral("SIG"));
  EXPECT_EQ(list.table().rowCount(), 2);
}

TEST_F(ServicesList, AddsAtTheTopAndNumbersNothing) {
  list.addNewService();
  list.addNewService();
  EXPECT_THAT(rows(), ElementsAre("Service Name", "Service Name", "Advice", "Design"));
  EXPECT_EQ(list.rows().row(0)->service->shown(), true);
  EXPECT_EQ(list.rows().row(0)->service->vtObjectID(), "0");
  EXPECT_EQ(list.selection().row(), 0);
  elsewhere([this] { addService(QStringLiteral("Base")); });
  EXPECT_THAT(rows(), ElementsAre("Service Name", "Service Name", "Advice", "Base", "Design"));
}

TEST_F(ServicesList, KeepsAnAbsentCheckBoxAbsentUntilItIsTicked) {
  design->setShown(std::nullopt);
  reload();
  EXPECT_FALSE(list.table().isChecked(1, 1));
  select("Design");
  tick(false);
  EXPECT_EQ(design->shown(), false);
  list.markAllShown();
  EXPECT_EQ(design->shown(), true);
}

TEST_F(ServicesList, DeletesAnItemThatIsInUse) {
  auto& activity = addActivity(nullptr, design);
  addEntry(activity, "2026-11-20 09:00", 60);
  addActivity(nullptr, design).setCompleted(true);
  select("Design");
  alerts.willAnswer({"Cancel", "Delete"});
  list.deleteRow();
  EXPECT_EQ(alerts.last().message, "Delete Design?");
  EXPECT_EQ(alerts.last().informative, "2 activities with 1 entry keep their time and lose this name.");
  list.deleteRow();
  EXPECT_THAT(rows(), ElementsAre("Advice"));
  EXPECT_EQ(activity.service(), nullptr);
}

class LinkedServicesList : public ServicesList {
 protected:
  LinkedServicesList() : ServicesList(false) {}
};

TEST_F(LinkedServicesList, OnlyChoosesWhatIsOffered) {
  select("Design");
  list.deleteRow();
  list.addNewService();
  EXPECT_FALSE(list.table().isEditable(0, 0));
  EXPECT_THAT(rows(), ElementsAre("Advice", "Design"));
  tick(false);
  EXPECT_EQ(design->shown(), false);
}

}  // namespace
}  // namespace pendra
