#include "link/SetupFlow.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>

#include "channel/ChannelFailure.h"
#include "document/DocumentFiles.h"
#include "document/DocumentLoading.h"
#include "document/Saving.h"
#include "model/Identity.h"
#include "model/Queries.h"
#include "platform/Log.h"
#include "platform/Text.h"
#include "store/PersistentStore.h"

namespace pendra {

namespace {

/// How long the company's name is asked for again, counted from the first repeat.
constexpr qint64 kCompanyMilliseconds = 4000;
const QString kLink = QStringLiteral("vtmac://");
const QString kNoticeKey = QStringLiteral("setup");

template <class T>
T& firstOrNew(ObjectContext& context, T* first) {
  return first ? *first : context.insert<T>();
}

}  // namespace

void SetupFlow::showLooking() {
  display_ = SetupDisplay();
  display_.noFileOpen = true;
  display_.noFileOpenText = QStringLiteral("Looking for Vantor…");
  display_.linkedControls = display_.ok = false;
  show();
}

void SetupFlow::start() {
  standalone_ = view_.selectedRow() != 0;
  checks_.closeConnection();
  checks_.openConnection();
  const VantorConnection* vantor = checks_.connection();
  const bool running = vantor && vantor->isVantorRunning();
  display_ = SetupDisplay();
  display_.settingsVisible = !standalone_;
  display_.noneText = display_.noFileOpen = display_.canLookAgain = !running;
  display_.linkedControls = running;
  display_.ok = running || standalone_;
  if (running) askVantor();
  show();
}

void SetupFlow::askVantor() {
  try {
    awaitCompany();
    showCompany();
    display_.employeeNames = checks_.connection()->getEmployeeNamesArray();
  } catch (const ChannelFailure&) {
    // Without all answers there is nobody to link to.
    company_.reset();
    display_.companyFile.clear();
    display_.linkedControls = false;
    display_.ok = standalone_;
    display_.noFileOpen = display_.canLookAgain = true;
    display_.noFileOpenText = QStringLiteral("Vantor does not answer.");
    show();
    throw;
  }
}

void SetupFlow::awaitCompany() {
  company_ = checks_.connection()->getCompanyFileName();
  QElapsedTimer repeating;
  repeating.start();
  while (!company_ && repeating.elapsed() < kCompanyMilliseconds) {
    company_ = checks_.connection()->getCompanyFileName();
  }
}

void SetupFlow::showCompany() {
  if (company_ && company_->startsWith(kLink)) {
    display_.noFileOpen = true;
    display_.noFileOpenText = percentDecoded(*company_).value_or(*company_);
  } else if (company_) {
    display_.companyFile = *company_;
  } else {
    display_.noFileOpen = display_.canLookAgain = true;
  }
}

void SetupFlow::modePicked() {
  const bool chosen = view_.selectedRow() != 0;
  display_.settingsVisible = !chosen;
  // Kept: going back to linked does not take the button away again.
  if (chosen && !standalone_) display_.ok = true;
  standalone_ = chosen;
  show();
}

void SetupFlow::save() {
  standalone_ = view_.selectedRow() != 0;
  const auto path = chooseFile();
  if (!path) return;
  if (!standalone_ && !checks_.checkCompany()) {
    Session& session = session_;  // the window, and this with it, may be gone while newDoc asks something
    view_.finish();
    newDoc(session);
    return;
  }
  if (!makeDocument(*path)) return;
  const bool standalone = view_.selectedRow() != 0;
  writeIdentity(standalone);
  if (standalone) {
    beginStandalone();
  } else {
    beginLinked();
  }
  view_.finish();
}

std::optional<QString> SetupFlow::chooseFile() {
  const QString folder = documentFolder(session_.ports().places);
  QDir().mkpath(folder);
  return session_.ports().panels.runSavePanel({.title = {},
                                               .proposedName = proposedName(),
                                               .folder = folder,
                                               .requiredType = QStringLiteral("pdr"),
                                               .unasked = documentWithoutOwner()});
}

/// The path of the open document while nobody has set it up: the program made it and nothing is in it.
QString SetupFlow::documentWithoutOwner() const {
  const OpenDocument* document = session_.document();
  if (!session_.hasReadDocument()) return {};
  const ObjectContext& context = *document->context();
  const Identity* owner = queries::firstIdentity(context);
  const bool isNobodys = !owner || owner->employeeName().value_or(QString()).isEmpty();
  const bool isEmpty = context.all<Activity>().empty() && context.all<Customer>().empty() &&
                       context.all<Job>().empty() && context.all<Service>().empty();
  return isNobodys && isEmpty ? document->path().value_or(QString()) : QString();
}

QString SetupFlow::proposedName() const {
  if (standalone_) return QStringLiteral("Pendra File.pdr");
  const VantorConnection* vantor = checks_.connection();
  const auto company = vantor ? vantor->getCompanyFileName() : std::nullopt;
  return documentNameFor(company.value_or(QStringLiteral("(null)")), view_.selectedName());
}

/// False when there is no such document now; the notice line has said why, and the window stays.
bool SetupFlow::makeDocument(const QString& path) {
  // The document that setup was opened for goes first: it may be the very file that is chosen.
  const OpenDocument* open = session_.document();
  if (session_.hasReadDocument() && open->path() != path) saveAction(session_);
  session_.clearDoc();
  session_.setContext(nullptr);
  session_.setSettings(nullptr);
  if (const auto made = PersistentStore::makeEmptyFile(path); !made) {
    session_.notices().post({.key = kNoticeKey,
                             .text = formatted(u"“%@” could not be created: %@.",
                                               {QFileInfo(path).fileName(), made.error().text}),
                             .actions = {}});
    return false;
  }
  session_.notices().withdraw(kNoticeKey);
  loadDocument(session_, path);
  saveAction(session_);
  return session_.hasReadDocument();
}

void SetupFlow::writeIdentity(bool standalone) {
  ObjectContext& context = *session_.context();
  auto& document = firstOrNew(context, queries::firstDocument(context));
  auto& identity = firstOrNew(context, queries::firstIdentity(context));
  identity.setEmployeeName(standalone ? QStringLiteral("Me") : view_.selectedName());
  // A link stays encoded, or it would never again be the name that Vantor answers.
  identity.setCompanyFileName(standalone ? std::optional(QStringLiteral("")) : company_);
  document.setStandalone(standalone);
  document.setIdentity(&identity);
  session_.setStandalone(standalone);
  session_.setSettings(&document);
  if (const auto saved = saveContext(session_); !saved) {
    logLine(formatted(u"Save Error = %@", {saved.error().text}));
  }
}

void SetupFlow::beginStandalone() {
  createNewTimer(session_);
  session_.ports().menus.hideVantorItems();
}

void SetupFlow::beginLinked() {
  display_.loading = true;
  show();
  try {
    lists_.loadLists();
  } catch (const ChannelFailure& failure) {
    // The document stands all the same; its lists can be fetched later.
    logLine(formatted(u"%@: %@", {failure.name(), failure.reason()}));
    createNewTimer(session_);
    session_.notices().post(
        {.key = kNoticeKey,
         .text = QStringLiteral("The lists could not be fetched, because Vantor did not "
                                "answer. Choose “Update Lists from Vantor” to try again."),
         .actions = {}});
  }
  display_.loading = false;
  show();
}

}  // namespace pendra
