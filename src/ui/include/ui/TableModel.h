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
  enum Role { kKindRole = Qt::UserRole, kRunningRole, kQuietRole, kIdentityRole };

  /// Takes a text that was typed into a cell; false when it was refused.
  using TextHandler = std::function<bool(const QString& value, const QString& identifier, int row)>;

  /// The source must outlive the model.
  explicit TableModel(TableSource& source, QObject* parent = nullptr);

  /// All rows were replaced or sorted anew.
  void reloadData();
  /// The cells of one row changed. An index past the end does nothing.
  void updateRow(int row);
  /// Sorts the source and reloads.
  void sortBy(const SortDescriptor& descriptor);
  void setTextHandler(TextHandler handler) { textHandler_ = std::move(handler); }

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
  TextHandler textHandler_;
};

}  // namespace pendra
