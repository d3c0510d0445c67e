#pragma once
// A window has one filled button: what most people came for. Every other one is quiet.

#include <QPushButton>
#include <QTimer>

namespace pendra {

/// Set on a push button, decides whether it is drawn filled. Without it the default button of a dialog is.
inline constexpr const char* kPrimaryProperty = "primary";
/// Set on a push button that destroys something, writes it in the colour of warnings.
inline constexpr const char* kDestructiveProperty = "destructive";
/// Set on a field, marks its text as one that could not be read.
inline constexpr const char* kUnreadableProperty = "unreadable";

/// Makes this the filled button of its window.
void makePrimary(QPushButton& button);
/// Draws the button as words only, in the colour of links.
void makeQuiet(QPushButton& button);
/// What lies under the words or the sign of a button that shows no frame: that it is pointed at, is down, or
/// has the keyboard.
void drawPlate(QPainter& painter, const QAbstractButton& button);
/// For a button of a sheet that has fields with a veto: a click on it leaves the keyboard focus where it is,
/// so that pressing "Cancel" never asks the field whether it may be left. The affirmative button asks by the
/// sheet's `LeaveGuard`.
void makeSheetButton(QAbstractButton& button);
/// The same, as a new button.
QPushButton* makeSheetButton(const QString& title, QWidget* parent);

/// A round button with the start or the pause sign, for the selected activity. Its accessible description
/// is what a press does: "Start" or "Stop". A long press, or the arrow down with Alt, asks for its menu.
class BigButton : public QAbstractButton {
  Q_OBJECT
 public:
  explicit BigButton(QWidget* parent = nullptr);
  void setRunning(bool running);
  [[nodiscard]] bool isRunning() const { return running_; }
  /// Smaller, for a low window.
  void setSmall(bool small);
  [[nodiscard]] QSize sizeHint() const override;

 Q_SIGNALS:
  void menuAsked();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;
  [[nodiscard]] bool hitButton(const QPoint& position) const override;

 private:
  void askAfterLongPress();

  bool running_ = false;
  int diameter_ = 0;
  QTimer longPress_;
};

}  // namespace pendra
