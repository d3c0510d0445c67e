#include "link/SetupFlow.h"

#include <QDir>

#include "document/DocumentFiles.h"
#include "document/DocumentLoading.h"
#include "document/NewDocument.h"
#include "link/VantorFailure.h"
#include "platform/Log.h"
#include "platform/Text.h"
#include "platform/Translation.h"

namespace pendra {

namespace {

const QString kLink = QStringLiteral("vtmac://");
const QString kNoticeKey = QStringLiteral("setup");

}  // namespace

void SetupFlow::showLooking() {
  display_ = SetupDisplay();
  display_.noFileOpen = true;
  display_.noFileOpenText = tr("Looking for Vantor…");
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
  company_.reset();
  if (running) askVantor();
  allowOk();
  show();
}

void SetupFlow::askVantor() {
  try {
    company_ = checks_.awaitCompany();
    showCompany();
    display_.employeeNames = checks_.connection()->employeeNames();
  } catch (const VantorFailure&) {
    // Without all answers there is nobody to link to.
    company_.reset();
    display_.companyFile.clear();
    display_.linkedControls = false;
    allowOk();
    display_.noFileOpen = display_.canLookAgain = true;
    display_.noFileOpenText = tr("Vantor does not answer.");
    show();
    throw;
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

/// There is nothing to link to before a company is open.
void SetupFlow::allowOk() { display_.ok = standalone_ || company_; }

void SetupFlow::modePicked() {
  standalone_ = view_.selectedRow() != 0;
  display_.settingsVisible = !standalone_;
  allowOk();
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
  const bool standalone = view_.selectedRow() != 0;
  if (!makeDocument(*path, standalone)) return;
  if (standalone) {
    createNewTimer(session_);
  } else {
    beginLinked();
  }
  view_.finish();
}

std::optional<QString> SetupFlow::chooseFile() {
  const QString folder = documentFolder(session_.ports().places);
  QDir().mkpath(folder);
  const QString ofNobody = documentOfNobody(session_);
  return session_.ports().panels.runSavePanel({.title = {},
                                               .proposedName = freeNameIn(folder, proposedName(), ofNobody),
                                               .folder = folder,
                                               .requiredType = QStringLiteral("pdr"),
                                               .unasked = ofNobody});
}

QString SetupFlow::proposedName() const {
  if (standalone_) return QStringLiteral("Pendra File.pdr");
  const VantorConnection* vantor = checks_.connection();
  const auto company = vantor ? vantor->companyFileName() : std::nullopt;
  return documentNameFor(company.value_or(company_.value_or(QString())), view_.selectedName());
}

bool SetupFlow::makeDocument(const QString& path, bool standalone) {
  return pendra::makeDocument(
      session_, {.path = path,
                 .employeeName = standalone ? QStringLiteral("Me") : view_.selectedName(),
                 // A link stays encoded, or it would never again be the name that Vantor answers.
                 .companyFileName = standalone ? QStringLiteral("") : company_,
                 .standalone = standalone});
}

void SetupFlow::beginLinked() {
  display_.loading = true;
  show();
  try {
    lists_.loadLists();
  } catch (const VantorFailure& failure) {
    // The document stands all the same; its lists can be fetched later.
    logLine(formatted(u"%@: %@", {failure.name(), failure.reason()}));
    createNewTimer(session_);
    session_.notices().post({.key = kNoticeKey,
                             .text = tr("The lists could not be fetched, because Vantor did not "
                                        "answer. Choose “Update Lists from Vantor” to try again."),
                             .actions = {},
                             .ofDocument = true});
  }
  display_.loading = false;
  show();
}

}  // namespace pendra
