#pragma once
// In tabular figures every digit is as wide as the widest one, so that a time that counts does not tremble
// and times under each other stand in columns. Not every face has such figures; these are set one by one.

#include <QFont>
#include <QLabel>
#include <QRectF>

class QPainter;

namespace pendra {

[[nodiscard]] qreal tabularWidth(const QFont& font, const QString& text);
/// Draws with the painter's font and pen, upright in the middle of the rectangle's height.
void drawTabular(QPainter& painter, const QRectF& rect, Qt::Alignment alignment, const QString& text);

/// A label whose figures are tabular. Its accessible description is the text that it shows.
class TabularLabel : public QLabel {
  Q_OBJECT
 public:
  explicit TabularLabel(QWidget* parent = nullptr);
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
};

/// Shows a text in a label that has an accessible name of its own; the text becomes its description.
void showText(QLabel& label, const QString& text);

}  // namespace pendra
