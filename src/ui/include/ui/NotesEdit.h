#pragma once

#include <QLabel>
#include <QPlainTextEdit>

#include "ui_core/EditorControls.h"

namespace pendra {

/// A field for a note of a few lines. Return is the sheet's OK; with Shift it begins a new line.
class NotesEdit final : public QPlainTextEdit {
  Q_OBJECT
 public:
  explicit NotesEdit(QWidget* parent = nullptr);

  /// The note, to the character as it was set for as long as nobody has edited it: the text document
  /// itself keeps neither every kind of blank nor every kind of line end.
  [[nodiscard]] QString note() const;
  void setNote(const QString& note);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 Q_SIGNALS:
  /// Somebody edited the note; setting it is silent.
  void noteEdited();
  void returnPressed();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void insertFromMimeData(const QMimeData* source) override;

 private:
  QString set_;
  bool setting_ = false;
};

/// Counts the characters of a note. The count is its accessible description.
class NotesLengthLabel final : public QLabel, public LengthLabel {
  Q_OBJECT
 public:
  explicit NotesLengthLabel(QWidget* parent = nullptr);
  void showLength(const QString& text, bool tooLong) override;

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void paintCount();

  QString count_;
  bool tooLong_ = false;
};

}  // namespace pendra
