#include "ui/TimePeriodSheet.h"

#include <QKeyEvent>

#include "EntryAdapters.h"
#include "ui/Buttons.h"
#include "ui/SheetRunner.h"
#include "ui_TimePeriodSheet.h"

namespace pendra {

namespace {

struct Form : Ui::TimePeriodSheet {
  explicit Form(QDialog* sheet) { setupUi(sheet); }
};

}  // namespace

/// The widgets, what shows them to the logic, and the logic.
struct TimePeriodSheet::Parts {
  Parts(TimePeriodSheet& sheet, Session& session)
      : form(&sheet),
        guard(*new LeaveGuard(sheet)),
        edited([this](const Control&) { controller.controlTextDidChange(); }),
        entry(form, edited),
        notesField(*form.notesField, edited),
        activityNotesField(*form.activityNotesField, edited),
        controller(session, {entry.fields(), notesField, activityNotesField, *form.notesLength, sheet}) {}

  Form form;
  LeaveGuard& guard;
  Edited edited;
  EntryAdapters entry;
  NotesControl notesField;
  NotesControl activityNotesField;
  TimePeriodController controller;
};

TimePeriodSheet::TimePeriodSheet(Session& session, QWidget* window)
    : QDialog(window), session_(session), parts_(std::make_unique<Parts>(*this, session)) {
  layOutEntry(parts_->entry);
  showAsSecondary({parts_->form.serviceHint});
  parts_->form.serviceHint->hide();
  makeSheetButton(*parts_->form.okButton);
  makeSheetButton(*parts_->form.cancelButton);
  connectControls();
  adjustSize();
}

TimePeriodSheet::~TimePeriodSheet() = default;

TimePeriodController& TimePeriodSheet::controller() { return parts_->controller; }

void TimePeriodSheet::connectControls() {
  Parts& parts = *parts_;
  connectEntry(parts.entry, parts.guard, parts.controller, false);
  for (NotesControl* notes : {&parts.notesField, &parts.activityNotesField}) {
    guardField(parts.guard, *notes, parts.controller);
    connect(&notes->widget(), &NotesEdit::returnPressed, this, [this] { parts_->controller.doSave(); });
  }
  connect(parts.form.okButton, &QPushButton::clicked, this, [this] { parts_->controller.doSave(); });
  connect(parts.form.cancelButton, &QPushButton::clicked, this, &TimePeriodSheet::reject);
}

int TimePeriodSheet::runModal() {
  const TimePeriodController& controller = parts_->controller;
  parts_->form.serviceHint->setVisible(!session_.myStandalone() && controller.serviceDataArray().isEmpty());
  // What is wrong with an entry is most often its length.
  QLineEdit& duration = *parts_->form.durationField;
  duration.selectAll();
  QWidget* first = duration.isEnabled() ? static_cast<QWidget*>(&duration) : parts_->form.notesField;
  first->setFocus();
  return SheetRunner(session_.ports().modals).runModal(*this);
}

void TimePeriodSheet::reject() { parts_->controller.cancel(); }

void TimePeriodSheet::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    parts_->controller.doSave();
  } else {
    QDialog::keyPressEvent(event);
  }
}

}  // namespace pendra
