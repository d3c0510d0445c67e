#pragma once
// An editor's logic sees a control as a text that is read, written, enabled and given the focus. What the
// logic writes is never an edit: only what a person does comes back, as `controlEdited` and
// `mayLeave`.

#include <QString>

namespace pendra {

/// A text field, combo box, label or button of an editor.
class Control {
 public:
  virtual ~Control() = default;
  [[nodiscard]] virtual QString text() const = 0;
  virtual void setText(const QString& text) = 0;
  [[nodiscard]] virtual bool isEnabled() const = 0;
  virtual void setEnabled(bool enabled) = 0;
  /// Takes the keyboard focus.
  virtual void takeFocus() = 0;
};

/// A check box of an editor.
class CheckControl {
 public:
  virtual ~CheckControl() = default;
  [[nodiscard]] virtual bool isChecked() const = 0;
  virtual void setChecked(bool checked) = 0;
  virtual void setHidden(bool hidden) = 0;
};

/// The label that counts the characters of a note.
class LengthLabel {
 public:
  virtual ~LengthLabel() = default;
  /// In red when the note is too long for Vantor, else in the colour of text.
  virtual void showLength(const QString& text, bool tooLong) = 0;
};

/// The sheet in which an editor is shown.
class EditorSheet {
 public:
  static constexpr int kAccepted = 1;
  static constexpr int kCancelled = 0;

  virtual ~EditorSheet() = default;
  /// Shows the sheet, application-modal, until end; answers its code.
  virtual int run() = 0;
  virtual void end(int code) = 0;
};

/// The lists whose names the editors offer.
enum class OfferedList { Customers, Jobs, Services };

/// The controls that both editors have.
struct EntryFields {
  Control& customerPopup;
  Control& jobPopup;
  Control& servicePopup;
  Control& startDateField;
  Control& startTimeField;
  Control& startTimeFieldAMPM;
  Control& durationField;
};

}  // namespace pendra
