#pragma once
// The rows of a report as Qt's tree: groups within groups, and their entries, which are looked for only when
// a group of the last kind is unfolded. Another report of the same rows changes figures in place, so that
// what is unfolded, selected and scrolled to stays while time runs.

#include <QAbstractItemModel>
#include <QLocale>
#include <functional>
#include <memory>

#include "model/Report.h"

namespace pendra {

/// One row: a group, or an entry of one.
struct ReportRow {
  QString name{};
  QString notes{};  ///< of an entry
  Hours hours{};
  const ReportGroup* group = nullptr;  ///< none for an entry
  std::optional<Instant> start{};      ///< of an entry
  ReportRow* parent = nullptr;
  std::vector<std::unique_ptr<ReportRow>> rows{};
  bool isFilled = true;   ///< false while its entries have not been looked for
  std::size_t place = 0;  ///< of its group at the top
};

class ReportTree final : public QAbstractItemModel {
 public:
  enum Column { Name, Entries, Billable, Sent, NotSent, Total, kColumns };
  enum Role { kNotesRole = Qt::UserRole };
  using EntriesOf = std::function<std::vector<ReportEntry>(const ReportGroup& group)>;

  /// The calendar must outlive it.
  ReportTree(const Calendar& calendar, const QLocale& locale) : calendar_(calendar), locale_(locale) {}

  /// Shows this report from now on. `entriesOf` is asked for entries as long as it is shown.
  void setReport(Report report, EntriesOf entriesOf);
  [[nodiscard]] const Report& report() const { return report_; }
  /// The row of an index; of none the one that holds all.
  [[nodiscard]] const ReportRow& row(const QModelIndex& index) const;
  /// Names a row among all of them, over reports.
  [[nodiscard]] static QString pathOf(const ReportRow& row);
  [[nodiscard]] QString text(const ReportRow& row, int column) const;

  [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
  [[nodiscard]] QModelIndex parent(const QModelIndex& index) const override;
  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& = {}) const override { return kColumns; }
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  [[nodiscard]] bool hasChildren(const QModelIndex& parent = {}) const override;
  [[nodiscard]] bool canFetchMore(const QModelIndex& parent) const override;
  void fetchMore(const QModelIndex& parent) override;
  void sort(int column, Qt::SortOrder order) override;

 private:
  void addGroups(ReportRow& parent, const std::vector<ReportGroup>& groups) const;
  [[nodiscard]] std::vector<std::unique_ptr<ReportRow>> entriesFor(ReportRow& parent) const;
  void sortRows(std::vector<std::unique_ptr<ReportRow>>& rows) const;
  /// Looks again for the entries that the old rows had.
  void fillAs(const ReportRow& old, ReportRow& row) const;
  void tellChanged(const QModelIndex& parent);

  const Calendar& calendar_;
  QLocale locale_;
  Report report_;
  EntriesOf entriesOf_;
  ReportRow root_;
  int sortColumn_ = Total;
  Qt::SortOrder order_ = Qt::DescendingOrder;
};

}  // namespace pendra
