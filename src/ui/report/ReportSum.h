#pragma once

#include <QPushButton>
#include <QRadioButton>

#include "model/Hours.h"
#include "ui/TabularText.h"

namespace pendra {

/// One of the report's sums under its word, perhaps with the sign by which the bars show it.
class ReportSum final : public QWidget {
  Q_OBJECT
 public:
  enum class Sign { None, Solid, Hatched };
  ReportSum(const QString& objectName, const QString& word, const QFont& font, Sign sign);
  void show(Length sum);
  /// Sums of different sizes stand on one line.
  static void alignBaseLines(std::initializer_list<ReportSum*> sums);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString word_;
  Sign sign_;
  TabularLabel* figures_;
};

/// One of several choices in a row that share a frame.
class SegmentButton final : public QRadioButton {
  Q_OBJECT
 public:
  enum class Place { First, Middle, Last };
  SegmentButton(const QString& text, Place place);
  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  [[nodiscard]] bool hitButton(const QPoint& position) const override { return rect().contains(position); }

 private:
  Place place_;
};

/// The sign that goes one step on or back.
class StepButton final : public QPushButton {
  Q_OBJECT
 public:
  explicit StepButton(Qt::ArrowType towards);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Qt::ArrowType towards_;
};

}  // namespace pendra
