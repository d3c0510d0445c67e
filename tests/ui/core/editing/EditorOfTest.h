#pragma once

#include "store/UndoStack.h"
#include "support/CellText.h"
#include "support/TestSession.h"
#include "ui_core/EditorFlows.h"

namespace pendra {

class ControlOfTest final : public Control {
 public:
  [[nodiscard]] QString text() const override { return value; }
  void setText(const QString& newText) override { value = newText; }
  [[nodiscard]] bool isEnabled() const override { return enabled; }
  void setEnabled(bool yes) override { enabled = yes; }
  void takeFocus() override { ++focused; }

  QString value;
  bool enabled = true;
  int focused = 0;
};

class CheckOfTest final : public CheckControl {
 public:
  [[nodiscard]] bool isChecked() const override { return checked; }
  void setChecked(bool value) override { checked = value; }
  void setHidden(bool value) override { hidden = value; }

  bool checked = false;
  bool hidden = false;
};

class LengthOfTest final : public LengthLabel {
 public:
  void showLength(const QString& value, bool isTooLong) override {
    text = value;
    tooLong = isTooLong;
  }

  QString text;
  bool tooLong = false;
};

/// A sheet that only notes how it ended.
class SheetOfTest final : public ActivityEditorSheet {
 public:
  int run() override { return kCancelled; }
  void end(int code) override { ended = code; }
  void setPastTimeViewShown(bool) override {}
  void showMissing(const QString&) override {}
  void showServiceHint(const QString&) override {}
  void showEchoes(const EntryEchoes&) override {}

  std::optional<int> ended;
};

/// The fields that both editors have, filled with an entry that passes every check.
struct FieldsOfTest {
  ControlOfTest customerPopup, jobPopup, servicePopup;
  ControlOfTest startDateField, startTimeField, startTimeFieldAMPM, durationField;
  EntryFields entry{customerPopup,  jobPopup,           servicePopup, startDateField,
                    startTimeField, startTimeFieldAMPM, durationField};

  void write(const char* time, const char* marker, const char* date, const char* duration) {
    startTimeField.value = time;
    startTimeFieldAMPM.value = marker;
    startDateField.value = date;
    durationField.value = duration;
  }
};

/// The activity editor over a document of its own.
struct ActivityEditorOfTest {
  explicit ActivityEditorOfTest(TestSession& test) : editor(test.session, controls) {}

  FieldsOfTest fields;
  ControlOfTest notesField, activityLabel, okButton, littleSaveButton;
  LengthOfTest notesLength;
  CheckOfTest billableCheckbox, autoStartCheckbox;
  SheetOfTest sheet;
  ActivityEditorControls controls{fields.entry,  notesField,       notesLength,
                                  activityLabel, billableCheckbox, autoStartCheckbox,
                                  okButton,      littleSaveButton, sheet};
  ActivityEditor editor;
};

/// The time entry editor over a document of its own.
struct TimeEntryEditorOfTest : EchoDisplay {
  explicit TimeEntryEditorOfTest(TestSession& test) : editor(test.session, controls) {}
  void showEchoes(const EntryEchoes& now) override { echoes = now; }
  /// What a person does: unlike a text that is set, it counts as touched.
  void type(ControlOfTest& control, const QString& text) {
    control.value = text;
    editor.controlEdited(control);
  }
  void typeStart(const char* time, const char* marker, const char* date) {
    type(fields.startTimeField, time);
    type(fields.startTimeFieldAMPM, marker);
    type(fields.startDateField, date);
  }

  FieldsOfTest fields;
  ControlOfTest notesField, activityNotesField;
  LengthOfTest notesLength;
  SheetOfTest sheet;
  EntryEchoes echoes;
  TimeEntryEditorControls controls{fields.entry, notesField, activityNotesField, notesLength, *this, sheet};
  TimeEntryEditor editor;
};

}  // namespace pendra
