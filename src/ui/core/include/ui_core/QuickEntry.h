#pragma once
// The quick entry without its field: what a text means in the open document, how it may go on, and doing it.

#include <optional>
#include <span>
#include <vector>

#include "platform/DayReading.h"
#include "ui_core/NameIndex.h"
#include "ui_core/QuickReadingTexts.h"
#include "ui_core/TimerState.h"

namespace pendra {

/// Customer, job, service item and notes, as far as they are named.
struct QuickNames {
  QString customer{};
  QString job{};
  QString service{};
  QString notes{};
};

/// A way in which a text may go on.
struct QuickCompletion {
  struct Part {
    qsizetype at;
    qsizetype length;
    friend bool operator==(const Part&, const Part&) = default;
  };
  QString title{};            ///< "Acme - Roof - Design"
  QString remark{};           ///< what it is: an activity's total, "customer"
  std::vector<Part> found{};  ///< what was typed of it already
  QuickNames names{};
  QString times{};  ///< what was typed of them stays
};

/// The logic of the quick entry field. Lives as long as the timer window; follows the open document by its
/// news.
class QuickEntry {
 public:
  static constexpr std::size_t kMostCompletions = 5;

  explicit QuickEntry(TimerState& timer);

  /// Makes ready for the next letter, which otherwise waits until the names are read that have changed.
  void prepare();
  /// What the text means at this moment; nothing at all without a document.
  [[nodiscard]] QuickReading read(const QString& text);
  [[nodiscard]] QuickReadingTexts say(const QuickReading& reading) const;
  /// The activities first in which every word is begun, then what the last name may become, then activities
  /// in which some of the words are.
  [[nodiscard]] std::vector<QuickCompletion> completions(const QString& text);
  /// What the field holds when a completion is taken.
  [[nodiscard]] QString taken(const QuickCompletion& completion);
  /// Does what the text means, and selects it in the window. False when it means nothing that can be done.
  bool carryOut(const QString& text);

 private:
  void followDocument();
  [[nodiscard]] const NameIndex& index();
  [[nodiscard]] DayReader days() const;
  void addActivities(std::vector<QuickCompletion>& to, std::span<const NameIndex::Hit> hits,
                     const QuickReading& reading, const QString& text);
  void addNames(std::vector<QuickCompletion>& to, const QuickReading& reading, const QString& text);

  TimerState& timer_;
  std::optional<NameIndex> index_;
  Notifier::Subscription documents_;
  Subscription edits_;
};

}  // namespace pendra
