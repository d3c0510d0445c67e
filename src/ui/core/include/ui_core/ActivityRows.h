#pragma once
// The table holds all open activities and lists those that contain what is searched for. What is left out
// runs, counts and is sent like the others.

#include <QSet>
#include <QString>
#include <vector>

#include "document/Session.h"
#include "model/Activity.h"
#include "model/ActivityTimes.h"
#include "ui_core/RowTable.h"
#include "ui_core/SearchText.h"

namespace pendra {

class ChangeSet;

/// One row of the activity table, a snapshot. "edit" and "complete" show constant texts.
struct ActivityRow {
  Ref<Activity> activity;
  QString customer;
  QString job;
  QString service;
  QString notes;
  QString total;
  QString today;
  bool running = false;    ///< shows the pause sign, else the play sign
  QString warning{};       ///< why the row is marked; empty when it is not
  bool favourite = false;  ///< stands above the others
  friend bool operator==(const ActivityRow&, const ActivityRow&) = default;
};

/// The rows of the activity table.
class ActivityRows {
 public:
  /// The session must outlive it.
  explicit ActivityRows(const Session& session);

  [[nodiscard]] RowTable<ActivityRow>& table() { return table_; }
  [[nodiscard]] const RowTable<ActivityRow>& table() const { return table_; }

  /// Takes all rows from the open document.
  void reload();
  /// Follows what an edit changed.
  void follow(const ChangeSet& changes);
  /// The tick: shows the lengths of what runs, and looks at nothing else.
  void updateRunning();

  /// Lists what contains all words that were typed, whatever the case, in the names or the notes.
  void search(const QString& typed);
  [[nodiscard]] const SearchText& searchText() const { return search_; }
  /// How many rows the search leaves out.
  [[nodiscard]] int leftOut() const { return table_.heldBack(); }
  /// The row of an activity; none when it is not listed.
  [[nodiscard]] std::optional<int> rowOf(const Activity* activity) const;

 private:
  [[nodiscard]] static ActivityRow rowFor(Activity& activity, const Today& today);
  [[nodiscard]] static bool contains(const ActivityRow& row, const SearchText& text);
  [[nodiscard]] Today today() const;
  void followRows(const QSet<const Activity*>& touched);
  void lookThrough();
  void findRunning();

  const Session& session_;
  RowTable<ActivityRow> table_;
  SearchText search_;
  std::vector<QPersistentModelIndex> running_;
};

}  // namespace pendra
