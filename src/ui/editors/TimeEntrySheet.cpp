#include "ui/TimeEntrySheet.h"

#include <QKeyEvent>

#include "EntryAdapters.h"
#include "ui/Buttons.h"
#include "ui/HelpPlace.h"
#include "ui/SheetRunner.h"
#include "ui_TimeEntrySheet.h"
#include "ui_core/HelpAnchors.h"

namespace pendra {

namespace {

constexpr std::chrono::milliseconds kTick{1000};

struct Form : Ui::TimeEntrySheet {
  explicit Form(QDialog* sheet) { setupUi(sheet); }
};

}  // namespace

/// The widgets, what shows them to the logic, and the logic.
struct TimeEntrySheet::Parts {
  Parts(TimeEntrySheet& sheet, Session& session)
      : form(&sheet),
        guard(*new LeaveGuard(sheet)),
        edited([this](const Control& control) { controller.controlEdited(control); }),
        entry(form, edited),
        notesField(*form.notesField, edited),
        activityNotesField(*form.activityNotesField, edited),
        controller(session,
                   {entry.fields(), notesField, activityNotesField, *form.notesLength, sheet, sheet}) {}

  Form form;
  LeaveGuard& guard;
  Edited edited;
  EntryAdapters entry;
  NotesControl notesField;
  NotesControl activityNotesField;
  TimeEntryEditor controller;
};

TimeEntrySheet::TimeEntrySheet(Session& session, QWidget* window)
    : QDialog(window), session_(session), parts_(std::make_unique<Parts>(*this, session)) {
  setHelpAnchor(*this, help::kTimeEntryEditor);
  layOutEntry(parts_->entry);
  showAsSecondary({parts_->form.serviceHint});
  parts_->form.serviceHint->hide();
  parts_->form.notesLength->setVisible(!session.isStandalone());  // it counts what Vantor takes
  makeSheetButton(*parts_->form.okButton);
  makeSheetButton(*parts_->form.cancelButton);
  connectControls();
  adjustSize();
}

TimeEntrySheet::~TimeEntrySheet() = default;

TimeEntryEditor& TimeEntrySheet::controller() { return parts_->controller; }

void TimeEntrySheet::connectControls() {
  Parts& parts = *parts_;
  connectEntry(parts.entry, parts.guard, parts.controller, false);
  for (NotesControl* notes : {&parts.notesField, &parts.activityNotesField}) {
    guardField(parts.guard, *notes, parts.controller);
    connect(&notes->widget(), &NotesEdit::returnPressed, this, &TimeEntrySheet::finish);
  }
  connect(&tick_, &QTimer::timeout, this, [this] { parts_->controller.tick(); });
  connect(parts.form.okButton, &QPushButton::clicked, this, &TimeEntrySheet::finish);
  connect(parts.form.cancelButton, &QPushButton::clicked, this, &TimeEntrySheet::reject);
}

void TimeEntrySheet::showEchoes(const EntryEchoes& echoes) {
  const Form& form = parts_->form;
  const int spare = std::max(0, height() - sizeHint().height());  // what a person has added
  showTimeEchoes(form, echoes);
  form.jobEcho->showEcho(echoes.job);
  form.namesEcho->showEcho(echoes.names);
  for (QWidget* popup :
       {static_cast<QWidget*>(form.customerPopup), static_cast<QWidget*>(form.servicePopup)}) {
    describeField(*popup, {echoes.names});
  }
  describeField(*form.jobPopup, {echoes.job, echoes.names});
  markUnreadable(*form.jobPopup, !echoes.job.text.isEmpty());
  layout()->activate();
  resize(width(), sizeHint().height() + spare);
}

int TimeEntrySheet::run() {
  const TimeEntryEditor& controller = parts_->controller;
  parts_->form.serviceHint->setVisible(!session_.isStandalone() && controller.offersNoServices());
  // What is wrong with an entry is most often its length.
  QLineEdit& duration = *parts_->form.durationField;
  duration.selectAll();
  const bool typed = duration.isEnabled() && !duration.isReadOnly();
  QWidget* first = typed ? static_cast<QWidget*>(&duration) : parts_->form.notesField;
  first->setFocus();
  tick_.start(kTick);
  const int code = SheetRunner(session_.ports().modals).run(*this);
  tick_.stop();
  return code;
}

void TimeEntrySheet::finish() {
  if (parts_->guard.mayFinish()) parts_->controller.accept();
}

void TimeEntrySheet::reject() { parts_->controller.cancel(); }

void TimeEntrySheet::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    finish();
  } else {
    QDialog::keyPressEvent(event);
  }
}

}  // namespace pendra
