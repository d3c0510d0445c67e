#pragma once

#include <QSet>
#include <QStringList>
#include <optional>

namespace pendra {

/// The state of a pop-up menu: its titles, each once, and which of them is chosen. -1 is no choice, which
/// differs from the choice of the first.
class PopUp {
 public:
  /// One title, which is chosen.
  explicit PopUp(const QString& onlyTitle) { reset(onlyTitle); }

  [[nodiscard]] const QStringList& titles() const { return titles_; }
  [[nodiscard]] int selectedIndex() const { return selected_; }
  /// The chosen title; none without a choice.
  [[nodiscard]] std::optional<QString> selectedTitle() const {
    if (selected_ < 0) return std::nullopt;
    return titles_[selected_];
  }

  /// Leaves one title, which is chosen.
  void reset(const QString& onlyTitle) {
    titles_ = {onlyTitle};
    known_ = {onlyTitle};
    selected_ = 0;
  }
  /// A title that is there already is not added again.
  void addItem(const QString& title) {
    if (known_.contains(title)) return;
    known_ << title;
    titles_ << title;
  }
  /// An index out of range chooses nothing.
  void selectAt(int index) { selected_ = index >= 0 && index < titles_.size() ? index : -1; }
  void selectTitle(const QString& title) { selected_ = static_cast<int>(titles_.indexOf(title)); }

 private:
  QStringList titles_;
  QSet<QString> known_;
  int selected_ = -1;
};

}  // namespace pendra
