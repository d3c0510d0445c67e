#pragma once

#include <QWidget>
#include <memory>

#include "document/Notices.h"
#include "document/Restoring.h"
#include "ui_core/RowTable.h"

namespace pendra {

class RowTableView;
class TimeEntry;

/// A look inside a backup: its time log, in which nothing can be changed.
class BackupWindow final : public QWidget {
  Q_OBJECT
 public:
  BackupWindow(const Session& session, std::shared_ptr<ObjectContext> context, const BackupFile& backup,
               std::function<void()> restore);
  ~BackupWindow() override;

 private:
  [[nodiscard]] QWidget* makeTable(const Calendar& calendar);
  [[nodiscard]] QWidget* makeFooter() const;
  void sayWhatThisIs(std::function<void()> restore);
  void copy() const;

  std::shared_ptr<ObjectContext> context_;
  Notices notices_;
  std::unique_ptr<RowTable<const TimeEntry*>> rows_;
  RowTableView* table_ = nullptr;
};

}  // namespace pendra
