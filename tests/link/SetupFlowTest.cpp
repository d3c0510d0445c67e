#include "link/SetupFlow.h"

#include "ScriptedVantor.h"
#include "channel/ChannelFailure.h"
#include "support/LogCapture.h"
#include "support/Rows.h"

namespace pendra {
namespace {

class ScriptedSetup final : public SetupView {
 public:
  int row = 0;
  QString name = "Clerk 1";
  SetupDisplay display;
  bool wasLoading = false;
  int closed = 0;

  void showDisplay(const SetupDisplay& shown) override {
    display = shown;
    wasLoading = wasLoading || shown.loading;
  }
  [[nodiscard]] int selectedRow() const override { return row; }
  [[nodiscard]] QString selectedName() const override { return name; }
  void finish() override { ++closed; }
};

/// A launch that found a document without an identity: that document is open, and setup over it.
class SetupTest : public LinkTest {
 protected:
  SetupTest() {
    loadDocument(desk.session, desk.places.documents + "/Pendra File.pdr");
    desk.session.ports().windows.show(WindowKind::Setup);
  }
  QString save(const char* name) {
    const QString path = desk.places.documents + "/Pendra/" + name;
    desk.panels.willChoose(path);
    flow.save();
    return path;
  }
  void failAt(const char* question) {
    vantor.whenAsked = [question](const QString& what) {
      if (what == question) throw VantorFailure(kVTIPCTimeout, "scripted");
    };
  }
  [[nodiscard]] QString proposed() { return desk.panels.savePanels().back().proposedName; }
  Identity& storedIdentity() { return *queries::firstIdentity(context()); }

  ScriptedSetup view;
  SetupFlow flow{desk.session, checks, lists, view};
  LogCapture log;
};

TEST_F(SetupTest, OnlyAVantorThatAnswersWithACompanyCanBeLinkedTo) {
  desk.workspace.setRunning(identifiers::kVantor, false);
  flow.start();
  EXPECT_TRUE(view.display.noneText && view.display.noFileOpen && view.display.canLookAgain);
  EXPECT_FALSE(view.display.ok || view.display.linkedControls);
  EXPECT_THAT(vantor.asked, testing::IsEmpty());
  view.row = 1;
  flow.modePicked();
  EXPECT_TRUE(view.display.ok && !view.display.settingsVisible) << "standalone needs no Vantor";
  view.row = 0;
  flow.modePicked();
  EXPECT_FALSE(view.display.ok) << "there is nothing to link to";
  EXPECT_TRUE(view.display.settingsVisible);

  desk.workspace.setRunning(identifiers::kVantor, true);
  failAt("employees");
  EXPECT_THROW(flow.start(), VantorFailure);
  EXPECT_FALSE(view.display.ok || view.display.linkedControls);
  EXPECT_EQ(view.display.companyFile, QString());
  EXPECT_EQ(view.display.noFileOpenText, "Vantor does not answer.");

  vantor.whenAsked = {};
  flow.start();
  EXPECT_EQ(view.display.companyFile, QString("/Books/Acme Ltd.cmp"));
  EXPECT_EQ(view.display.employeeNames, (QStringList{"Clerk 1", "Clerk 2"}));
  EXPECT_TRUE(view.display.ok && view.display.linkedControls);
  EXPECT_FALSE(view.display.noFileOpen || view.display.noneText);
  vantor.company = "vtmac://Acme%20Ltd";
  flow.start();
  EXPECT_EQ(view.display.noFileOpenText, QString("vtmac://Acme Ltd"));
  EXPECT_EQ(view.display.companyFile, QString());
  EXPECT_EQ(vantor.openChannels, 1) << "a fresh connection each time, and one only";
}

TEST_F(SetupTest, ACompanyThatIsNotOpenYetIsAskedForAgainTenTimesASecondForFourSeconds) {
  vantor.company = std::nullopt;
  flow.start();
  EXPECT_EQ(vantor.timesAsked("companyFileName"), 41);
  EXPECT_FALSE(view.display.ok) << "there is nothing to link to";
  EXPECT_TRUE(view.display.canLookAgain);
  progress.cancelsPauses = true;
  flow.start();
  EXPECT_EQ(vantor.timesAsked("companyFileName"), 42);

  progress.cancelsPauses = false;
  vantor.whenAsked = [this](const QString&) {
    if (vantor.timesAsked("companyFileName") == 44) vantor.company = "/Books/Late.cmp";
  };
  flow.start();
  EXPECT_EQ(view.display.companyFile, QString("/Books/Late.cmp"));
  EXPECT_TRUE(view.display.ok);
  vantor.company = std::nullopt;
  desk.panels.willCancel();
  flow.save();
  EXPECT_EQ(proposed(), QString("Late-Clerk 1.pdr"));
  EXPECT_EQ(view.closed, 0);
  EXPECT_EQ(desk.session.document()->displayName(), QString("Pendra File"));
}

TEST_F(SetupTest, AStandaloneDocumentMayReplaceTheOneThatIsOpen) {
  flow.start();
  desk.addCustomer("Left over");
  view.row = 1;
  save("no such folder/New.pdr");
  EXPECT_EQ(proposed(), QString("Pendra File.pdr"));
  EXPECT_EQ(desk.panels.savePanels()[0].folder, desk.places.documents + "/Pendra");
  EXPECT_TRUE(desk.windows.isOpen(WindowKind::Setup));
  ASSERT_EQ(desk.session.notices().standing().size(), 1u);
  EXPECT_EQ(view.closed, 0);

  desk.panels.willChoose(desk.session.document()->path());
  flow.save();
  EXPECT_EQ(view.closed, 1);
  EXPECT_THAT(desk.session.notices().standing(), testing::IsEmpty());
  EXPECT_EQ(storedIdentity().employeeName(), QString("Me"));
  EXPECT_EQ(storedIdentity().companyFileName(), QString(""));
  EXPECT_TRUE(desk.session.isStandalone());
  EXPECT_TRUE(context().all<Customer>().empty());
  EXPECT_FALSE(context().hasChanges());
  EXPECT_EQ(desk.windows.made(WindowKind::Timer), 1);
}

TEST_F(SetupTest, ALinkedDocumentHasItsIdentityAndItsListsAndIsUsableWithoutThem) {
  vantor.company = "vtmac://Acme%20Ltd";
  vantor.customers = std::vector{item("Acme", "c1")};
  flow.start();
  view.name = "Clerk 2";
  failAt("customers");
  save("Without.pdr");
  EXPECT_EQ(proposed(), QString("Acme Ltd-Clerk 2.pdr"));
  EXPECT_THAT(log.lines(), testing::Contains(QString("VTIPCTimeout: scripted")));
  EXPECT_EQ(desk.windows.made(WindowKind::Timer), 1);
  EXPECT_EQ(desk.session.notices().standing().size(), 1u);

  vantor.whenAsked = {};
  flow.start();
  const QString path = save("Acme.pdr");
  EXPECT_EQ(desk.session.document()->path(), path);
  EXPECT_EQ(storedIdentity().employeeName(), QString("Clerk 2"));
  EXPECT_EQ(storedIdentity().companyFileName(), QString("vtmac://Acme%20Ltd")) << "not decoded";
  EXPECT_FALSE(desk.session.isStandalone());
  EXPECT_EQ(context().all<Customer>().size(), 1u);
  EXPECT_TRUE(view.wasLoading && !view.display.loading);
  EXPECT_EQ(vantor.openChannels, 0);
  EXPECT_THAT(desk.alerts.messages(), testing::IsEmpty());
  EXPECT_EQ(view.closed, 2);
}

TEST_F(SetupTest, ARefusedCompanyBeginsSetupAnewBeforeAnyFileIsMade) {
  flow.start();
  desk.panels.whileOpen([this] { desk.workspace.setRunning(identifiers::kVantor, false); });
  const QString path = save("Acme.pdr");
  EXPECT_EQ(desk.alerts.messages(), QStringList{"Please start Vantor and try again"});
  EXPECT_FALSE(QFile::exists(path));
  EXPECT_EQ(view.closed, 1);
  EXPECT_THAT(desk.windows.calls(), testing::Contains(QString("show Setup")));
}

TEST(DocumentName, IsMadeOfCompanyAndEmployee) {
  const QList<QStringList> rows{{"/Books/Acme v2.1.cmp", "Clerk 1", "Acme v2.1-Clerk 1.pdr"},
                                {"vtmac://Acme%20Ltd", "Clerk 1", "Acme Ltd-Clerk 1.pdr"},
                                {"/B/B%C3%A4ckerei.cmp", "Ärger", "Bäckerei-Ärger.pdr"},
                                {"/B/Acme%20Ltd.cmp", "50% Club", "Acme%20Ltd-50% Club.pdr"},
                                {"/B/Acme%FF.cmp", "Clerk", "Acme%FF-Clerk.pdr"}};
  for (const QStringList& row : rows) EXPECT_EQ(documentNameFor(row[0], row[1]), row[2]);
}

}  // namespace
}  // namespace pendra
