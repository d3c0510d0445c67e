#pragma once

#include <QLineEdit>
#include <QPointer>

namespace pendra {

/// A field for what is looked for in a table: a magnifier before the words, a cross behind them. Escape
/// empties it, and an empty one gives the keyboard back to where it was; Down and Return go to what was
/// found.
class SearchField : public QLineEdit {
  Q_OBJECT
 public:
  /// The name is its accessible name, and what it says while it is empty.
  explicit SearchField(const QString& name, QWidget* parent = nullptr);
  /// The table that is searched.
  void setTable(QWidget* table) { table_ = table; }

 Q_SIGNALS:
  /// The keyboard has come: letters may follow.
  void entered();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;

 private:
  [[nodiscard]] QRect crossRect() const;
  [[nodiscard]] bool isOnCross(const QPoint& place) const;
  void leave();

  QPointer<QWidget> table_;
  QPointer<QWidget> before_;  // had the keyboard
};

/// Says of a field that it searches its window.
void markAsSearch(QLineEdit& field);
/// The field of a window that does; none where there is none.
[[nodiscard]] QLineEdit* searchFieldIn(const QWidget& window);
/// Puts the keyboard there, with all that stands there selected.
void beginSearch(QLineEdit& field);

}  // namespace pendra
