#pragma once
// The model never watches its source: the source changes, and whoever changed it says so by `reloadData` or
// `updateRow`. In between, the table shows what it last heard of.

#include <QAbstractTableModel>
#include <functional>

#include "ui_core/TableSource.h"

namespace pendra {

/// A TableSource for Qt's views.
class TableModel : public QAbstractTableModel {
  Q_OBJECT
 public:
  enum Role { kKindRole = Qt::UserRole, kRunningRole, kQuietRole, kIdentityRole, kWarningRole };

  /// What the owner of the rows says about typing over a cell. Any part may be left out.
  struct EditRules {
    /// Asked when an editor is about to open over a cell that the source calls editable.
    std::function<bool(const QString& identifier, int row)> shouldEdit{};
    /// What the editor starts with; left out: what the cell shows.
    std::function<QString(const QString& identifier, int row)> textForEditing{};
    /// Takes the text that was typed.
    std::function<void(const QString& value, const QString& identifier, int row)> setValue{};
  };

  /// The source must outlive the model.
  explicit TableModel(TableSource& source, QObject* parent = nullptr);

  /// All rows were replaced or sorted anew.
  void reloadData();
  /// The cells of one row changed. An index past the end does nothing.
  void updateRow(int row);
  /// Sorts the source and reloads.
  void sortBy(const SortOrder& descriptor);
  void setEditRules(EditRules rules) { edits_ = std::move(rules); }
  [[nodiscard]] bool shouldEdit(const QModelIndex& index) const;

  [[nodiscard]] const TableSource& source() const { return source_; }
  [[nodiscard]] int columnOf(QStringView identifier) const;

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;

 private:
  [[nodiscard]] QString accessibleText(const QModelIndex& index) const;

  TableSource& source_;
  EditRules edits_;
};

}  // namespace pendra
