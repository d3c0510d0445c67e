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
    desk.session.ports().interfaces.load(Interface::Setup);
  }
  [[nodiscard]] QString chosen(const char* name) {
    const QString path = desk.places.documents + "/Pendra/" + name;
    desk.panels.willChoose(path);
    return path;
  }
  Identity& storedIdentity() { return *queries::firstIdentity(context()); }

  ScriptedSetup view;
  SetupFlow flow{desk.session, checks, lists, view};
};

TEST_F(SetupTest, WithoutVantorOnlyStandaloneCanBeSaved) {
  desk.workspace.setRunning(identifiers::kVantor, false);
  flow.start();
  EXPECT_TRUE(view.display.noneText && view.display.noFileOpen);
  EXPECT_FALSE(view.display.ok || view.display.linkedControls);
  EXPECT_THAT(vantor.asked, testing::IsEmpty());

  view.row = 1;
  flow.modePicked();
  EXPECT_TRUE(view.display.ok && !view.display.settingsVisible);
  view.row = 0;
  flow.modePicked();
  EXPECT_FALSE(view.display.ok) << "there is nothing to link to";
  EXPECT_TRUE(view.display.settingsVisible && !flow.standalone());
}

TEST_F(SetupTest, ACompanyIsShownAsAPathOrAsADecodedLink) {
  flow.start();
  EXPECT_EQ(view.display.companyFile, QString("/Books/Acme Ltd.cmp"));
  EXPECT_EQ(view.display.employeeNames, (QStringList{"Clerk 1", "Clerk 2"}));
  EXPECT_FALSE(view.display.noFileOpen || view.display.noneText);
  EXPECT_TRUE(view.display.ok);

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
  EXPECT_EQ(desk.panels.savePanels()[0].proposedName, QString("Late-Clerk 1.pdr"));
}

TEST_F(SetupTest, WhoDoesNotAnswerWhollyCannotBeLinkedTo) {
  vantor.whenAsked = [](const QString& what) {
    if (what == "employees") throw ChannelFailure(kVTIPCTimeout, "scripted");
  };
  EXPECT_THROW(flow.start(), ChannelFailure);
  EXPECT_FALSE(view.display.ok || view.display.linkedControls);
  EXPECT_EQ(view.display.companyFile, QString());
  EXPECT_TRUE(view.display.canLookAgain);
  view.row = 1;
  flow.modePicked();
  EXPECT_TRUE(view.display.ok) << "standalone needs no Vantor";
  vantor.whenAsked = {};
  view.row = 0;
  flow.start();
  EXPECT_TRUE(view.display.ok && view.display.linkedControls);
  EXPECT_EQ(view.display.companyFile, QString("/Books/Acme Ltd.cmp"));
}

TEST_F(SetupTest, AStandaloneDocumentMayReplaceTheOneThatIsOpen) {
  desk.workspace.setRunning(identifiers::kVantor, false);
  flow.start();
  desk.addCustomer("Left over");
  view.row = 1;
  desk.panels.willChoose(desk.session.document()->path());
  flow.save();
  ASSERT_EQ(desk.panels.savePanels().size(), 1u);
  EXPECT_EQ(desk.panels.savePanels()[0].proposedName, QString("Pendra File.pdr"));
  EXPECT_EQ(desk.panels.savePanels()[0].folder, desk.places.documents + "/Pendra");
  EXPECT_EQ(desk.panels.savePanels()[0].requiredType, QString("pdr"));

  EXPECT_EQ(storedIdentity().employeeName(), QString("Me"));
  EXPECT_EQ(storedIdentity().companyFileName(), QString(""));
  EXPECT_TRUE(desk.session.isStandalone());
  EXPECT_EQ(desk.session.settings()->standalone(), true);
  EXPECT_TRUE(context().all<Customer>().empty());
  EXPECT_FALSE(context().hasChanges());
  EXPECT_THAT(desk.windows.calls(), testing::ElementsAre(QString("close Setup")));
  EXPECT_EQ(desk.windows.loads(Interface::TimerWindow), 1);
  EXPECT_EQ(view.closed, 1);
}

TEST_F(SetupTest, ALinkedDocumentHasItsIdentityAndItsLists) {
  vantor.company = "vtmac://Acme%20Ltd";
  vantor.customers = std::vector{item("Acme", "c1")};
  flow.start();
  view.name = "Clerk 2";
  const QString path = chosen("Acme.pdr");
  flow.save();
  EXPECT_EQ(desk.panels.savePanels()[0].proposedName, QString("Acme Ltd-Clerk 2.pdr"));
  EXPECT_EQ(desk.session.document()->path(), path);
  EXPECT_EQ(storedIdentity().employeeName(), QString("Clerk 2"));
  EXPECT_EQ(storedIdentity().companyFileName(), QString("vtmac://Acme%20Ltd")) << "not decoded";
  EXPECT_FALSE(desk.session.isStandalone());
  EXPECT_EQ(context().all<Customer>().size(), 1u);
  EXPECT_TRUE(view.wasLoading && !view.display.loading);
  EXPECT_EQ(desk.windows.loads(Interface::TimerWindow), 1);
  EXPECT_EQ(vantor.openChannels, 0);
  EXPECT_THAT(desk.alerts.messages(), testing::IsEmpty());
  EXPECT_EQ(view.closed, 1);
}

TEST_F(SetupTest, AFileThatCannotBeTakenIsLeftAloneAndTheWindowStays) {
  flow.start();
  view.row = 1;
  const QString held = chosen("Held.pdr");
  QDir().mkpath(desk.places.documents + "/Pendra");
  ObjectContext another(testModel(), desk.clock, desk.calendar);
  ASSERT_TRUE(another.open(held));
  another.insert<Customer>().setName("Acme");
  ASSERT_TRUE(another.save());
  const qint64 size = QFileInfo(held).size();
  flow.save();
  EXPECT_EQ(QFileInfo(held).size(), size);
  EXPECT_EQ(view.closed, 0);
  EXPECT_NE(desk.session.setupController, nullptr);
  ASSERT_EQ(desk.session.notices().standing().size(), 1u);
  EXPECT_EQ(desk.session.notices().standing()[0].text,
            QString("“Held.pdr” could not be created: another program has this document open."));
  desk.panels.willChoose(desk.places.documents + "/no such folder/New.pdr");
  flow.save();
  EXPECT_EQ(view.closed, 0);
  (void)chosen("Free.pdr");
  flow.save();
  EXPECT_EQ(view.closed, 1);
  EXPECT_EQ(storedIdentity().employeeName(), QString("Me"));
  EXPECT_THAT(desk.session.notices().standing(), testing::IsEmpty());
}

TEST_F(SetupTest, ACancelledPanelLeavesTheWindow) {
  flow.start();
  desk.panels.willCancel();
  flow.save();
  EXPECT_EQ(view.closed, 0);
  EXPECT_EQ(desk.session.document()->displayName(), QString("Pendra File"));
}

TEST_F(SetupTest, ARefusedCompanyBeginsSetupAnewBeforeAnyFileIsMade) {
  flow.start();
  const QString path = chosen("Acme.pdr");
  desk.panels.whileOpen([this] { desk.workspace.setRunning(identifiers::kVantor, false); });
  flow.save();
  EXPECT_EQ(desk.alerts.messages(), QStringList{"Please start Vantor and try again"});
  EXPECT_FALSE(QFile::exists(path));
  EXPECT_EQ(view.closed, 1);
  EXPECT_THAT(desk.windows.calls(), testing::Contains(QString("bringToFront Setup")));
}

TEST_F(SetupTest, AVantorThatGoesWhileTheListsLoadLeavesAUsableDocument) {
  flow.start();
  (void)chosen("Acme.pdr");
  vantor.whenAsked = [](const QString& what) {
    if (what == "customers") throw ChannelFailure(kVTIPCTimeout, "timeout");
  };
  const LogCapture log;
  flow.save();
  EXPECT_THAT(log.lines(), testing::Contains(QString("VTIPCTimeout: timeout")));
  EXPECT_EQ(desk.windows.loads(Interface::TimerWindow), 1);
  EXPECT_EQ(desk.session.notices().standing().size(), 1u);
  EXPECT_EQ(vantor.openChannels, 0);
  EXPECT_EQ(view.closed, 1);
}

struct NameRow {
  const char* name;
  const char* company;
  const char* employee;
  const char* expected;
};

class DocumentNameTest : public testing::TestWithParam<NameRow> {};

TEST_P(DocumentNameTest, IsMadeOfCompanyAndEmployee) {
  EXPECT_EQ(documentNameFor(GetParam().company, GetParam().employee), QString(GetParam().expected));
}

INSTANTIATE_TEST_SUITE_P(
    All, DocumentNameTest,
    testing::Values(NameRow{"Plain", "/Books/Acme Ltd.cmp", "Clerk 1", "Acme Ltd-Clerk 1.pdr"},
                    NameRow{"LastExtensionOnly", "/Books/Acme v2.1.cmp", "Clerk 1", "Acme v2.1-Clerk 1.pdr"},
                    NameRow{"NoExtension", "vtmac://Acme%20Ltd", "Clerk 1", "Acme Ltd-Clerk 1.pdr"},
                    NameRow{"Umlauts", "/B/B%C3%A4ckerei.cmp", "Ärger", "Bäckerei-Ärger.pdr"},
                    NameRow{"UndecodableStaysWhole", "/B/Acme%20Ltd.cmp", "50% Club",
                            "Acme%20Ltd-50% Club.pdr"},
                    NameRow{"BrokenUtf8StaysWhole", "/B/Acme%FF.cmp", "Clerk", "Acme%FF-Clerk.pdr"}),
    RowName());

}  // namespace
}  // namespace pendra
