#pragma once

#include <QFrame>

#include "ui_core/QuickEntry.h"

class QLabel;

namespace pendra {

class CompletionList;
class QuickReadingLabel;

/// What stands under the quick entry while it is typed into: a part of its window that lies over the rest,
/// and never has the focus.
class QuickEntryPanel final : public QFrame {
  Q_OBJECT
 public:
  explicit QuickEntryPanel(QWidget* window);

  void say(const QuickReadingTexts& texts, std::vector<QuickCompletion> completions);
  /// The reading alone; what is chosen stays.
  void sayReading(const QuickReadingTexts& texts);
  /// Under a rectangle of the window, as wide as it at most; with as many completions as there is room for.
  void placeUnder(const QRect& field);
  [[nodiscard]] CompletionList& completions() { return *completions_; }

 Q_SIGNALS:
  void chosenChanged();
  /// A completion was clicked.
  void picked();

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QuickReadingLabel* reading_;
  QWidget* line_;  ///< room for the line
  QLabel* hint_;
  CompletionList* completions_;
};

}  // namespace pendra
