#pragma once

#include <QLabel>

#include "HoursPainter.h"

namespace pendra {

/// What a line says of a bar, or of the colours when it is of no bar: words, figures, and whose colour.
struct ReadOutPart {
  QString words{};
  QString figures{};
  std::optional<std::size_t> group{};
  bool hatched = false;
  bool isHead = false;   ///< semibold
  bool isQuiet = false;  ///< secondary words
};
using ReadOutParts = std::vector<ReadOutPart>;

/// Of a bar: its name, its sum, what of it was not sent, and each group's share.
[[nodiscard]] ReadOutParts readOutOf(const Report& report, int bar, const QLocale& locale, bool hatches);
/// Of no bar: which colour is whose.
[[nodiscard]] ReadOutParts legendOf(const Report& report);
[[nodiscard]] QString textOf(const ReadOutParts& parts);
/// Draws as many parts as there is room for; the rest is counted.
void drawReadOut(QPainter& painter, const QRectF& rect, const ReadOutParts& parts, const Colours& colours);

/// The line over the bars.
class ReadOut final : public QLabel {
  Q_OBJECT
 public:
  explicit ReadOut(QWidget* parent = nullptr);
  void show(ReadOutParts parts);
  [[nodiscard]] QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }
  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  ReadOutParts parts_;
};

}  // namespace pendra
