#pragma once
// What a text in the quick entry means is a value: what will be done, for what and when, or why nothing can
// be. It is read before anything is done, shown, and read again when it is done, because time goes on.

#include <QLocale>
#include <optional>
#include <vector>

#include "model/Activity.h"
#include "model/Overlaps.h"
#include "model/TimeEntry.h"
#include "store/ObjectContext.h"
#include "ui_core/NameIndex.h"

namespace pendra {

struct QuickReading {
  enum class Deed { Nothing, StartNow, StartEarlier, Book };

  /// Why nothing can be done. Whatever it is, nothing changes.
  enum class Why {
    NotUnderstood,  ///< the text is not written as it should be, or lacks something
    Unknown,        ///< a name does not exist and may not be made
    Several,        ///< more than one thing is called so
    Impossible,     ///< it is still to come, or never was
    Running,        ///< it runs already
  };
  struct Fault {
    Why why = Why::NotUnderstood;
    qsizetype at = 0;  ///< where in the text, and how much of it
    qsizetype length = 0;
    QString reason{};
  };

  struct Name {
    QString text{};
    bool isNew = false;  ///< will be added to its list
  };

  Deed deed = Deed::Nothing;
  std::optional<Fault> fault{};
  Name customer{};
  Name job{};
  Name service{};
  QString notes{};
  Activity* activity = nullptr;  ///< the one that is used; none where a new one is made
  Instant start;
  Instant end;                   ///< now, where it will run
  Overlaps overlaps{};           ///< what of it is in another entry as well
  std::vector<Instant> twice{};  ///< times of that day that it had twice; the first is meant
  qsizetype namesAt = 0;         ///< where names and notes stand in the text
  qsizetype timesAt = 0;         ///< where they end and the times begin

  /// Whether it says nothing at all.
  [[nodiscard]] bool isEmpty() const { return deed == Deed::Nothing && !fault; }
};

/// Whether names that do not exist may be made.
enum class NewNames { Refused, Made };

/// Reads a text against a document at this moment. Dates are read as the locale writes them. The index must
/// be of the document as it is.
[[nodiscard]] QuickReading readQuickEntry(const QString& text, const NameIndex& index,
                                          const ObjectContext& context, NewNames newNames,
                                          const QLocale& locale = QLocale());

}  // namespace pendra
