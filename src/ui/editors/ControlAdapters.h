#pragma once
// Each adapter shows one widget to an editor's logic. What the logic writes is silent; every other change of
// a text, by the keyboard or by assistive technology, is an edit.

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <functional>

#include "ui/NameComboBox.h"
#include "ui/NotesEdit.h"
#include "ui_core/EditorControls.h"

namespace pendra {

/// Told which control was edited.
using Edited = std::function<void(const Control&)>;

/// What every adapter does in the same way.
template <class Widget>
class WidgetControl : public Control {
 public:
  explicit WidgetControl(Widget& widget) : widget_(widget) {}
  [[nodiscard]] bool isEnabled() const override { return widget_.isEnabled(); }
  void setEnabled(bool enabled) override { widget_.setEnabled(enabled); }
  void takeFocus() override { widget_.setFocus(Qt::OtherFocusReason); }
  [[nodiscard]] Widget& widget() const { return widget_; }

 private:
  Widget& widget_;
};

class LineEditControl final : public WidgetControl<QLineEdit> {
 public:
  LineEditControl(QLineEdit& field, const Edited& edited) : WidgetControl(field) {
    QObject::connect(&field, &QLineEdit::textChanged, &field, [this, edited] {
      if (!writing_) edited(*this);
    });
  }
  [[nodiscard]] QString text() const override { return widget().text(); }
  void setText(const QString& text) override {
    const QScopedValueRollback writing(writing_, true);
    widget().setText(text);
  }

 private:
  bool writing_ = false;
};

class NotesControl final : public WidgetControl<NotesEdit> {
 public:
  NotesControl(NotesEdit& field, const Edited& edited) : WidgetControl(field) {
    QObject::connect(&field, &NotesEdit::noteEdited, &field, [this, edited] { edited(*this); });
  }
  [[nodiscard]] QString text() const override { return widget().note(); }
  void setText(const QString& text) override { widget().setNote(text); }
};

/// Its text is the title, which is also its accessible name.
class ButtonControl final : public WidgetControl<QPushButton> {
 public:
  using WidgetControl::WidgetControl;
  [[nodiscard]] QString text() const override { return widget().text(); }
  void setText(const QString& text) override {
    widget().setText(text);
    widget().setAccessibleName(text);
  }
};

/// The title of the sheet.
class TitleControl final : public WidgetControl<QWidget> {
 public:
  using WidgetControl::WidgetControl;
  [[nodiscard]] QString text() const override { return widget().windowTitle(); }
  void setText(const QString& text) override { widget().setWindowTitle(text); }
};

class CheckBoxControl final : public CheckControl {
 public:
  explicit CheckBoxControl(QCheckBox& box) : box_(box) {}
  [[nodiscard]] bool isChecked() const override { return box_.isChecked(); }
  void setChecked(bool checked) override { box_.setChecked(checked); }
  void setHidden(bool hidden) override { box_.setHidden(hidden); }

 private:
  QCheckBox& box_;
};

}  // namespace pendra
