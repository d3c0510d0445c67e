#pragma once
// The two lists follow the same steps by different rules. The steps that are the same stand here, once; every
// rule stands in the controller whose rule it is, also where the other one's looks much alike.

#include <QString>
#include <optional>
#include <variant>

#include "document/Session.h"
#include "ui_core/ListEditor.h"
#include "ui_core/TablePort.h"
#include "ui_core/TableSource.h"

namespace pendra {

/// A cell's value: the state of its check box, or its text.
using CellValue = std::variant<bool, QString>;

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

  /// First load; from then on the list follows the document's coming, going and mode. Called once the
  /// window shows `source`.
  void start();
  [[nodiscard]] const QString& searchString() const { return searchString_; }
  /// Lists what the text asks for.
  void setSearchString(const QString& text);
  /// Whether the document is kept without Vantor: only then are names the user's to write.
  [[nodiscard]] bool standalone() const { return session_.isStandalone(); }

  /// Rebuilds all rows from the document.
  virtual void reloadData() = 0;
  /// What the table shows.
  [[nodiscard]] virtual TableSource& source() = 0;
  [[nodiscard]] virtual const TableSource& source() const = 0;
  virtual void setValue(const CellValue& value, const QString& column, int row) = 0;

  void markAllShown() override { setAllShown(true); }
  void markNoneShown() override { setAllShown(false); }
  [[nodiscard]] bool isDeleteOK() const override { return selectedRow().has_value(); }

 protected:
  /// All must outlive it.
  ListController(Session& session, TablePort& table, ListView& view);

  virtual void setAllShown(bool shown) = 0;
  /// "Delete %@?"; true for "Delete".
  [[nodiscard]] bool confirmDelete(const QString& name);

  [[nodiscard]] Session& session() const { return session_; }
  [[nodiscard]] TablePort& table() const { return table_; }
  [[nodiscard]] ListView& view() const { return view_; }
  /// The open document's objects; none when no document is open.
  [[nodiscard]] ObjectContext* context() const { return session_.context().get(); }
  /// The selected row, if it is there.
  [[nodiscard]] std::optional<int> selectedRow() const;
  /// The document came, went or was exchanged for another.
  virtual void documentChanged() { reloadData(); }

 private:
  Session& session_;
  TablePort& table_;
  ListView& view_;
  QString searchString_;
  Notifier::Subscription contextChanges_;
  Notifier::Subscription standaloneChanges_;
};

}  // namespace pendra
