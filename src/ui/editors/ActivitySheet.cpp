#include "ui/ActivitySheet.h"

#include <QKeyEvent>
#include <QShortcut>

#include "EntryAdapters.h"
#include "ui/Buttons.h"
#include "ui/HelpPlace.h"
#include "ui/SheetRunner.h"
#include "ui_ActivitySheet.h"
#include "ui_core/HelpAnchors.h"

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
                             autoStartCheckbox, okButton, littleSaveButton, sheet}) {}

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
};

ActivitySheet::ActivitySheet(Session& session, QWidget* window)
    : QDialog(window), session_(session), parts_(std::make_unique<Parts>(*this, session)) {
  setHelpAnchor(*this, help::kActivityEditor);
  layOutEntry(parts_->entry);
  const Form& form = parts_->form;
  showAsSecondary({form.serviceHint, form.sendToVTLabel, form.missingLabel});
  form.serviceHintRow->hide();
  form.notesLength->setVisible(!session.isStandalone());  // it counts what Vantor takes
  for (QPushButton* button : {form.okButton, form.cancelButton, form.littleSaveButton,
                              form.addTimeEntryButton, form.deleteTimeEntryButton, form.serviceItemsButton}) {
    makeSheetButton(*button);
  }
  makeQuiet(*form.addTimeEntryButton);
  makeQuiet(*form.deleteTimeEntryButton);
  makeQuiet(*form.serviceItemsButton);
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
  parts_->form.activityTable->dropTable();
}

ActivityEditor& ActivitySheet::controller() { return parts_->controller; }

void ActivitySheet::hideSendingLabel() { parts_->form.sendToVTLabel->hide(); }

void ActivitySheet::connectControls() {
  Parts& parts = *parts_;
  connectEntry(parts.entry, parts.guard, parts.controller, true);
  guardField(parts.guard, parts.notesField, parts.controller);
  connect(parts.form.notesField, &NotesEdit::returnPressed, this, &ActivitySheet::pressReturn);
  connect(parts.form.okButton, &QPushButton::clicked, this, &ActivitySheet::save);
  connect(parts.form.serviceItemsButton, &QPushButton::clicked, this, &ActivitySheet::serviceItemsWanted);
  connect(parts.form.cancelButton, &QPushButton::clicked, this, &ActivitySheet::reject);
}

void ActivitySheet::connectTimeEntries() {
  const Form& form = parts_->form;
  ActivityEditor& controller = parts_->controller;
  TimeEntriesTable& table = *form.activityTable;
  table.setController(controller);
  // Whatever is done to an entry, the note that is being typed comes first.
  const auto afterTyping = [&table](auto act) {
    return [&table, act] {
      table.commitEditing();
      act();
    };
  };
  const auto deletes = afterTyping([&] { controller.deleteTimeEntry(); });
  connect(form.littleSaveButton, &QPushButton::clicked, this,
          afterTyping([&] { controller.applyToSelectedEntry(); }));
  connect(form.addTimeEntryButton, &QPushButton::clicked, this,
          afterTyping([&] { controller.addTimeEntry(); }));
  connect(form.deleteTimeEntryButton, &QPushButton::clicked, this, deletes);
  auto* deleteKey = new QShortcut(QKeySequence::Delete, &table);
  deleteKey->setContext(Qt::WidgetShortcut);
  connect(deleteKey, &QShortcut::activated, this, deletes);
  connect(&table, &RowTableView::selectionChanged, this, &ActivitySheet::enableDelete);
  enableDelete();
}

void ActivitySheet::enableDelete() {
  parts_->form.deleteTimeEntryButton->setEnabled(parts_->controller.canDeleteEntries());
}

void ActivitySheet::showMissing(const QString& sentence) {
  const Form& form = parts_->form;
  if (form.missingLabel->text() == sentence) return;  // a screen reader hears what changed
  form.missingLabel->setText(sentence);
  form.missingLabel->setAccessibleDescription(sentence);
  form.okButton->setToolTip(sentence);
  form.okButton->setAccessibleDescription(sentence);
}

void ActivitySheet::showServiceHint(const QString& sentence) {
  const Form& form = parts_->form;
  if (form.serviceHint->text() == sentence) return;
  const int spare = std::max(0, height() - sizeHint().height());  // what a person has added
  form.serviceHint->setText(sentence);
  form.serviceHint->setAccessibleDescription(sentence);
  form.serviceHintRow->setHidden(sentence.isEmpty());
  layout()->activate();
  resize(width(), sizeHint().height() + spare);
}

int ActivitySheet::run() { return SheetRunner(session_.ports().modals).run(*this); }

void ActivitySheet::setPastTimeViewShown(bool shown) {
  auto* pastTimeView = findChild<QWidget*>(QStringLiteral("pastTimeView"));
  if (pastTimeViewHeight_ == 0) {
    pastTimeViewHeight_ = pastTimeView->sizeHint().height() + layout()->spacing();
  }
  const int wanted = height() + (shown ? pastTimeViewHeight_ : -pastTimeViewHeight_);
  pastTimeView->setVisible(shown);
  layout()->activate();
  resize(width(), wanted);
}

void ActivitySheet::showEchoes(const EntryEchoes& echoes) { showTimeEchoes(parts_->form, echoes); }

void ActivitySheet::reject() { parts_->controller.cancel(); }

void ActivitySheet::save() {
  parts_->form.activityTable->commitEditing();
  if (parts_->guard.mayFinish()) parts_->controller.save();
}

void ActivitySheet::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    pressReturn();
  } else {
    QDialog::keyPressEvent(event);
  }
}

/// Where OK is not enabled yet Return only ends the typing of a name.
void ActivitySheet::pressReturn() {
  if (parts_->form.okButton->isEnabled()) return save();
  std::ignore = parts_->guard.mayFinish();
}

/// A click beside the fields, or on OK while it is disabled, leaves the name that is being typed.
void ActivitySheet::mousePressEvent(QMouseEvent* event) {
  QDialog::mousePressEvent(event);
  if (QWidget* name = qobject_cast<NameComboBox*>(focusWidget())) name->clearFocus();
}

}  // namespace pendra
