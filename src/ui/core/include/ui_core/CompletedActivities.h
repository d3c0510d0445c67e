#pragma once
// An activity that was completed has left the activity table, and where it has no entries the log knows
// nothing of it either. Here all of them are found, and come back.

#include <QLocale>

#include "document/Session.h"
#include "model/Activity.h"
#include "store/Observers.h"
#include "ui_core/RowTable.h"
#include "ui_core/TableSelection.h"

namespace pendra {

/// A completed activity, as it was when the document last changed.
struct CompletedRow {
  Ref<Activity> activity;
  QString customer;
  QString job;
  QString service;
  std::optional<Instant> lastEntry;  ///< when it began; none without entries
  QString total;
  friend bool operator==(const CompletedRow&, const CompletedRow&) = default;
};

/// The completed activities of the open document, the last timed first.
class CompletedActivities {
 public:
  /// The session must outlive it. The locale shapes the dates.
  explicit CompletedActivities(Session& session, const QLocale& locale = QLocale());

  [[nodiscard]] RowTable<CompletedRow>& table() { return table_; }
  /// Several rows at a time.
  [[nodiscard]] TableSelection& selection() { return selection_; }

  /// Lists those whose names or notes contain all words that were typed.
  void search(const QString& typed);
  /// Whether any is completed, whether it is listed or not.
  [[nodiscard]] bool hasAny() const { return hasAny_; }
  /// The selected ones become current again, in one step that can be taken back.
  void makeCurrent();

 private:
  void followDocument();
  void list();

  Session& session_;
  RowTable<CompletedRow> table_;
  TableSelection selection_{table_};
  SearchText search_;
  bool hasAny_ = false;
  Subscription news_;
  Notifier::Subscription documentChanges_;
};

}  // namespace pendra
