#include "ui/ActivitySheet.h"

#include <QKeyEvent>
#include <QShortcut>

#include "EntryAdapters.h"
#include "ui/Buttons.h"
#include "ui/SheetRunner.h"
#include "ui_ActivitySheet.h"

namespace pendra {

namespace {

struct Form : Ui::ActivitySheet {
  explicit Form(QDialog* sheet) { setupUi(sheet); }
};

}  // namespace

/// The widgets, what shows them to the logic, and the logic.
struct ActivitySheet::Parts {
  Parts(ActivitySheet& sheet, Session& session)
      : form(&sheet),
        guard(*new LeaveGuard(sheet)),
        edited([this](const Control& control) { controller.controlEdited(control); }),
        entry(form, edited),
        notesField(*form.notesField, edited),
        activityLabel(sheet),
        billableCheckbox(*form.billableCheckbox),
        autoStartCheckbox(*form.autoStartCheckbox),
        okButton(*form.okButton),
        littleSaveButton(*form.littleSaveButton),
        controller(session, {entry.fields(), notesField, *form.notesLength, activityLabel, billableCheckbox,
                             autoStartCheckbox, okButton, littleSaveButton, *form.activityTable, sheet}) {}

  Form form;
  LeaveGuard& guard;
  Edited edited;
  EntryAdapters entry;
  NotesControl notesField;
  TitleControl activityLabel;
  CheckBoxControl billableCheckbox;
  CheckBoxControl autoStartCheckbox;
  ButtonControl okButton;
  ButtonControl littleSaveButton;
  ActivityEditor controller;
  Notifier::Subscription deletability;
};

ActivitySheet::ActivitySheet(Session& session, QWidget* window)
    : QDialog(window), session_(session), parts_(std::make_unique<Parts>(*this, session)) {
  layOutEntry(parts_->entry);
  const Form& form = parts_->form;
  showAsSecondary({form.serviceHint, form.sendToVTLabel});
  form.serviceHint->hide();
  for (QPushButton* button : {form.okButton, form.cancelButton, form.littleSaveButton,
                              form.addTimeEntryButton, form.deleteTimeEntryButton}) {
    makeSheetButton(*button);
  }
  makeQuiet(*form.addTimeEntryButton);
  makeQuiet(*form.deleteTimeEntryButton);
  form.okButton->setEnabled(false);
  form.littleSaveButton->setEnabled(false);
  connectControls();
  connectTimeEntries();
  // As wide without the time entries as with them.
  const QMargins margins = layout()->contentsMargins();
  setMinimumWidth(form.pastTimeView->sizeHint().width() + margins.left() + margins.right());
  adjustSize();
}

ActivitySheet::~ActivitySheet() {
  // The rows go with the logic, before the table that shows them.
  hide();
  parts_->form.activityTable->setModel(nullptr);
}

ActivityEditor& ActivitySheet::controller() { return parts_->controller; }

void ActivitySheet::hideSendingLabel() { parts_->form.sendToVTLabel->hide(); }

void ActivitySheet::connectControls() {
  Parts& parts = *parts_;
  ActivityEditor& controller = parts.controller;
  connectEntry(parts.entry, parts.guard, controller, true);
  guardField(parts.guard, parts.notesField, controller);
  connectService();
  connect(parts.form.notesField, &NotesEdit::returnPressed, this, &ActivitySheet::pressReturn);
  connect(parts.form.okButton, &QPushButton::clicked, this, &ActivitySheet::save);
  connect(parts.form.cancelButton, &QPushButton::clicked, this, &ActivitySheet::reject);
}

/// The service is looked at again whenever it is left, not only when it has changed: the customer, which OK
/// waits for as well, may have come later.
void ActivitySheet::connectService() {
  NameComboControl& popup = parts_->entry.servicePopup;
  ActivityEditor& controller = parts_->controller;
  const auto mayLeave = [&] {
    const bool may = controller.mayLeave(popup);
    if (may) controller.enableOk();
    return may;
  };
  popup.widget().setRules({.names = [&] { return controller.namesFor(popup); },
                           .mayLeave = mayLeave,
                           .opensListWhileTyping = true});
  connect(&popup.widget(), &NameComboBox::picked, this, [&] { controller.enableOk(); });
}

void ActivitySheet::connectTimeEntries() {
  const Form& form = parts_->form;
  ActivityEditor& controller = parts_->controller;
  form.activityTable->setController(controller);
  connect(form.littleSaveButton, &QPushButton::clicked, this, [&] { controller.applyToSelectedEntry(); });
  connect(form.addTimeEntryButton, &QPushButton::clicked, this, [&] { controller.addTimeEntry(); });
  connect(form.deleteTimeEntryButton, &QPushButton::clicked, this, [&] { controller.deleteTimeEntry(); });
  auto* deleteKey = new QShortcut(QKeySequence::Delete, form.activityTable);
  deleteKey->setContext(Qt::WidgetShortcut);
  connect(deleteKey, &QShortcut::activated, this, [&] { controller.deleteTimeEntry(); });
  const auto enable = [&] {
    parts_->form.deleteTimeEntryButton->setEnabled(parts_->controller.canDeleteEntries());
  };
  parts_->deletability = controller.canDeleteEntriesChanges.observe(enable);
  enable();
}

int ActivitySheet::run() {
  const ActivityEditor& controller = parts_->controller;
  parts_->form.serviceHint->setVisible(!session_.isStandalone() && controller.offersNoServices());
  return SheetRunner(session_.ports().modals).run(*this);
}

void ActivitySheet::setPastTimeViewShown(bool shown) {
  auto* pastTimeView = findChild<QWidget*>("pastTimeView");
  if (pastTimeViewHeight_ == 0) {
    pastTimeViewHeight_ = pastTimeView->sizeHint().height() + layout()->spacing();
  }
  const int wanted = height() + (shown ? pastTimeViewHeight_ : -pastTimeViewHeight_);
  pastTimeView->setVisible(shown);
  layout()->activate();
  resize(width(), wanted);
}

void ActivitySheet::reject() { parts_->controller.cancel(); }

void ActivitySheet::save() {
  parts_->form.activityTable->commitEditing();
  parts_->controller.save();
}

void ActivitySheet::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    pressReturn();
  } else {
    QDialog::keyPressEvent(event);
  }
}

/// Where the focus is in a name, the name has been asked about before Return comes here.
void ActivitySheet::pressReturn() {
  if (parts_->form.okButton->isEnabled()) save();
}

/// A click beside the fields, or on OK while it is disabled, leaves the name that is being typed.
void ActivitySheet::mousePressEvent(QMouseEvent* event) {
  QDialog::mousePressEvent(event);
  if (QWidget* name = qobject_cast<NameComboBox*>(focusWidget())) name->clearFocus();
}

}  // namespace pendra
