#pragma once

#include "ControlAdapters.h"
#include "ui/EchoLine.h"
#include "ui/LeaveGuard.h"
#include "ui_core/ListSteps.h"

namespace pendra {

class NameComboControl final : public WidgetControl<NameComboBox> {
 public:
  NameComboControl(NameComboBox& popup, const Edited& edited) : WidgetControl(popup) {
    QObject::connect(&popup, &NameComboBox::textEdited, &popup, [this, edited] { edited(*this); });
  }
  [[nodiscard]] QString text() const override { return widget().text(); }
  void setText(const QString& text) override { widget().setText(text); }
};

/// The adapters of the fields that both sheets have under the same names.
struct EntryAdapters {
  template <class Form>
  EntryAdapters(const Form& form, const Edited& edited)
      : customerPopup(*form.customerPopup, edited),
        jobPopup(*form.jobPopup, edited),
        servicePopup(*form.servicePopup, edited),
        startDateField(*form.startDateField, edited),
        startTimeField(*form.startTimeField, edited),
        startTimeFieldAMPM(*form.startTimeFieldAMPM, edited),
        durationField(*form.durationField, edited) {}

  [[nodiscard]] EntryFields fields() {
    return {customerPopup,  jobPopup,           servicePopup, startDateField,
            startTimeField, startTimeFieldAMPM, durationField};
  }

  NameComboControl customerPopup;
  NameComboControl jobPopup;
  NameComboControl servicePopup;
  LineEditControl startDateField;
  LineEditControl startTimeField;
  LineEditControl startTimeFieldAMPM;
  LineEditControl durationField;
};

/// Gives a combo box its list from a controller, which also decides whether it is left.
template <class Controller>
void connectNames(LeaveGuard& guard, NameComboControl& popup, Controller& controller,
                  bool opensListWhileTyping) {
  NameComboBox& box = popup.widget();
  box.setRules({.names = [&] { return controller.namesFor(popup); },
                .opensListWhileTyping = opensListWhileTyping,
                .whenEmpty = emptyListText(listOf(controller.controls().entry, popup))});
  const auto mayLeave = [&] {
    if (!controller.mayLeave(popup)) return false;
    box.accept();
    return true;
  };
  guard.watch(box, {.mayLeave = mayLeave, .isTyped = [&] { return box.isTyped(); }});
}

/// Lets the controller decide whether any other field is left.
template <class Widget, class Controller>
void guardField(LeaveGuard& guard, WidgetControl<Widget>& field, Controller& controller) {
  guard.watch(field.widget(), {.mayLeave = [&] { return controller.mayLeave(field); }});
}

/// What both sheets do with the fields of an entry.
template <class Controller>
void connectEntry(EntryAdapters& entry, LeaveGuard& guard, Controller& controller,
                  bool opensListWhileTyping) {
  for (NameComboControl* popup : {&entry.customerPopup, &entry.jobPopup, &entry.servicePopup}) {
    connectNames(guard, *popup, controller, opensListWhileTyping);
  }
  for (LineEditControl* field :
       {&entry.startDateField, &entry.startTimeField, &entry.startTimeFieldAMPM, &entry.durationField}) {
    guardField(guard, *field, controller);
  }
  QObject::connect(&entry.customerPopup.widget(), &NameComboBox::picked, &guard,
                   [&] { controller.customerPicked(); });
}

/// Sizes of the fields, for the longest text that each is made for.
void layOutEntry(EntryAdapters& entry);
/// Frames a field in the colour of a warning, or not.
void markUnreadable(QWidget& field, bool unreadable);

/// Shows what stands beside start and duration in a form that names its lines alike.
template <class Form>
void showTimeEchoes(const Form& form, const EntryEchoes& echoes) {
  form.startEcho->showEcho(echoes.start);
  form.durationEcho->showEcho(echoes.duration);
  form.adviceEcho->showEcho(echoes.advice);
  for (QWidget* field : {form.startDateField, form.startTimeField, form.startTimeFieldAMPM}) {
    describeField(*field, {echoes.start});
  }
  describeField(*form.durationField, {echoes.duration, echoes.advice});
  form.durationField->setReadOnly(echoes.lengthRuns);
  markUnreadable(*form.durationField, echoes.duration.tone == Echo::Tone::Warning);
}

/// Shows words that matter less than the fields as such.
void showAsSecondary(std::initializer_list<QWidget*> labels);

}  // namespace pendra
