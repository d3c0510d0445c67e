#pragma once

#include <QTreeView>

#include "ui_core/ReportTree.h"

namespace pendra {

/// The report's groups and entries, with the sum of all of them under the last row.
class ReportTable final : public QTreeView {
  Q_OBJECT
 public:
  /// The tree must outlive it. Without `linked` nothing is said of sending.
  explicit ReportTable(ReportTree& tree, QWidget* parent = nullptr);
  void setLinked(bool linked);
  [[nodiscard]] bool isLinked() const { return linked_; }
  [[nodiscard]] const ReportTree& tree() const { return tree_; }
  /// The rows that are to be seen now, from the first to the last, each with how deep it stands.
  struct Shown {
    const ReportRow* row;
    int depth;
  };
  [[nodiscard]] std::vector<Shown> shownRows() const;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const override;
  void drawRow(QPainter* painter, const QStyleOptionViewItem& options,
               const QModelIndex& index) const override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;

 private:
  void placeColumns();
  void keepUnfolded();
  void unfoldAgain(const QModelIndex& parent);

  ReportTree& tree_;
  bool linked_ = true;
  QStringList unfolded_;
  QString current_;
};

/// "All": the last line under the table, in the columns of it.
class ReportSumRow final : public QWidget {
  Q_OBJECT
 public:
  explicit ReportSumRow(ReportTable& table);
  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  ReportTable& table_;
};

}  // namespace pendra
