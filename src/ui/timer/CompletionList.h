#pragma once

#include <QListWidget>

#include "ui_core/QuickEntry.h"

namespace pendra {

/// How a text may go on, a line each: bold what was typed of it, at the right what it is. Never has the
/// focus.
class CompletionList final : public QListWidget {
  Q_OBJECT
 public:
  explicit CompletionList(QWidget* parent = nullptr);

  void offer(std::vector<QuickCompletion> completions);
  /// The chosen one; none without a current line.
  [[nodiscard]] const QuickCompletion* chosen() const;
  [[nodiscard]] const QuickCompletion* first() const { return shown_.empty() ? nullptr : &shown_.front(); }
  /// Moves the choice; above the first line nothing is chosen.
  void move(int by);
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 private:
  std::vector<QuickCompletion> shown_;
};

}  // namespace pendra
