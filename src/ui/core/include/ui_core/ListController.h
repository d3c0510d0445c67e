#pragma once
// The two lists follow the same steps by different rules. The steps that are the same stand here, once; every
// rule stands in the controller whose rule it is, also where the other one's looks much alike. A list follows
// its document: what it does is an edit, and what it shows comes from the news of edits, whoever made them.

#include <QString>
#include <functional>
#include <optional>

#include "document/Session.h"
#include "store/Observers.h"
#include "ui_core/ListEditor.h"
#include "ui_core/RowTable.h"
#include "ui_core/TableSelection.h"

namespace pendra {

class ChangeSet;

/// What a list asks of its window beyond its table.
class ListView {
 public:
  virtual ~ListView() = default;
  /// Opens the editor of a cell, once the one that is open has closed. A cell that is not there, or that
  /// cannot be edited, opens nothing.
  virtual void editColumn(int column, int row) = 0;
  /// Whether the user keeps the list by hand may have changed: adding is offered or not.
  virtual void standaloneChanged() = 0;
};

/// The steps that both lists share.
class ListController : public ListEditor {
 public:
  ListController(const ListController&) = delete;
  ListController& operator=(const ListController&) = delete;

  /// First load; from then on the list follows the document, and its coming, going and mode.
  void start();
  [[nodiscard]] const QString& searchString() const { return searchString_; }
  /// Lists what the text asks for.
  void setSearchString(const QString& text);
  /// Whether the document is kept without Vantor: only then are names the user's to write.
  [[nodiscard]] bool standalone() const { return session_.isStandalone(); }

  [[nodiscard]] virtual TableModel& table() = 0;
  [[nodiscard]] virtual const TableModel& table() const = 0;
  /// One row at a time.
  [[nodiscard]] virtual TableSelection& selection() = 0;
  [[nodiscard]] virtual const TableSelection& selection() const = 0;

  /// Takes a name that was typed into a row; an empty one leaves the name as it was. False when it was
  /// refused, which the user has been told.
  [[nodiscard]] bool rename(int row, const QString& name);
  /// Whether what the row shows is offered in the pick lists from now on.
  void setShown(int row, bool shown);
  /// Whether a job can be added to what is selected.
  [[nodiscard]] virtual bool canAddJob() const { return false; }
  void markAllShown() override;
  void markNoneShown() override;
  [[nodiscard]] bool canDelete() const override { return selection().hasSelection(); }

 protected:
  /// All must outlive it.
  ListController(Session& session, ListView& view);

  /// Lists what the document holds now, in its order.
  virtual void rebuild() = 0;
  virtual void documentEdited(const ChangeSet& changes) = 0;
  /// As `rename`, of a name that is not empty.
  [[nodiscard]] virtual bool takeName(int row, const QString& name) = 0;
  [[nodiscard]] virtual QString nameInRow(int row) const = 0;
  /// Marks what the row shows; inside an edit.
  virtual void markShown(int row, bool shown) = 0;

  /// Changes the open document under a name.
  void edit(const QString& name, const std::function<void()>& work) const;
  /// "Delete %@?", and what goes with it; true for "Delete".
  [[nodiscard]] bool confirmDelete(const QString& name, const QString& whatGoes) const;
  /// Deletes it in an edit; the activities that lose its name remember that.
  void deleteNamed(ManagedObject& named, const QString& name) const;

  /// Adds in an edit what `make` makes. It stands first, unsorted and whatever the search, and is selected.
  void add(const QString& name, const std::function<ManagedObject*()>& make);
  [[nodiscard]] bool wasAdded(const ManagedObject& object) const;
  /// What was added takes its place among the others.
  void settleAdded();

  [[nodiscard]] Session& session() const { return session_; }
  [[nodiscard]] ListView& view() const { return view_; }
  /// The open document's objects; none when no document is open.
  [[nodiscard]] ObjectContext* context() const;

 private:
  /// The document came, went or was exchanged for another.
  void followDocument();
  void markAll(const QString& name, bool shown);

  Session& session_;
  ListView& view_;
  QString searchString_;
  std::vector<Ref<ManagedObject>> added_;  // the newest last
  Subscription news_;
  Notifier::Subscription documentChanges_;
  Notifier::Subscription standaloneChanges_;
};

/// A list whose rows are of one kind.
template <class Row>
class ListOf : public ListController {
 public:
  [[nodiscard]] const RowTable<Row>& rows() const { return rows_; }
  [[nodiscard]] RowTable<Row>& rows() { return rows_; }
  [[nodiscard]] TableModel& table() override { return rows_; }
  [[nodiscard]] const TableModel& table() const override { return rows_; }
  [[nodiscard]] TableSelection& selection() override { return selection_; }
  [[nodiscard]] const TableSelection& selection() const override { return selection_; }

 protected:
  ListOf(Session& session, ListView& view, std::vector<Column<Row>> columns, RowTraits<Row> traits)
      : ListController(session, view), rows_(std::move(columns), std::move(traits)) {}

  [[nodiscard]] virtual std::vector<Row> listedRows() const = 0;
  void rebuild() override { rows_.setRows(listedRows()); }

 private:
  RowTable<Row> rows_;
  TableSelection selection_{rows_};
};

}  // namespace pendra
