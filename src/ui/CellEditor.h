#pragma once

#include <QLineEdit>
#include <memory>

#include "ui/LeaveGuard.h"
#include "ui_core/CellReading.h"

namespace pendra {

class CellCompletions;
class CellEcho;

/// The field in a cell that is being typed over. It says under the cell what storing will do, and keeps what
/// cannot be stored. When it is left, `LeaveGuard` knows; what then becomes of the text is its table's to do.
class CellEditor final : public QLineEdit {
  Q_OBJECT
 public:
  using Read = std::function<CellReading(const QString& text)>;

  CellEditor(QWidget* parent, Read read);
  ~CellEditor() override;

  /// What it begins with, which is nobody's typing.
  void begin(const QString& text);
  /// The same, with something typed already.
  void goOn(const QString& before, const QString& typed);
  [[nodiscard]] const QString& before() const { return before_; }
  [[nodiscard]] bool isTyped() const { return !settled_ && text() != before_; }
  /// Whether what stands in it may not be stored.
  [[nodiscard]] bool isRefused() const { return isTyped() && reading_.isRefused; }
  /// Nothing is to be done with the text any more.
  void settle() { settled_ = true; }
  [[nodiscard]] bool isSettled() const { return settled_; }
  [[nodiscard]] LeaveGuard& guard() { return *guard_; }
  /// Looks again at what the text would do: time goes on, and the entry may be another by now.
  void readAgain();

 Q_SIGNALS:
  /// The text is to be stored, and the field to be closed; `isSettled` afterwards says that it was.
  void storeAsked();
  void abandoned();
  /// Tab has left it.
  void wentOn(bool forward);
  /// Another cell of the row will read otherwise; an empty column for none.
  void followed(const pendra::CellReading::Following& following);

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  [[nodiscard]] bool leave();
  void textHasChanged();

  Read read_;
  QString before_;
  CellReading reading_;
  bool settled_ = false;
  bool isReading_ = false;
  bool isTyping_ = false;  // by hand, which is told before that the text is another
  LeaveGuard* guard_;
  std::unique_ptr<CellEcho> echo_;
  CellCompletions* completions_;
};

}  // namespace pendra
