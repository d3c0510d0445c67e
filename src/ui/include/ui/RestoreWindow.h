#pragma once

#include <QTimer>
#include <functional>
#include <memory>

#include "document/Restoring.h"
#include "ui/AppWindow.h"
#include "ui_core/RowTable.h"

class QLabel;
class QPushButton;

namespace pendra {

class BackupWindow;
class RowTableView;
class SinceBackupView;

/// "Restore": the backups of the open document, what has changed since the chosen one, a look inside it, and
/// the way back to it. It goes with the document.
class RestoreWindow final : public AppWindow {
 public:
  /// Whoever takes steps back is told what was restored, in a sentence.
  using OfferUndo = std::function<void(const QString& sentence)>;

  RestoreWindow(const WindowFrame& frame, OfferUndo offerUndo);
  ~RestoreWindow() override;

 private:
  /// A backup and, once they have been looked up, its entries.
  struct Row {
    BackupFile file;
    std::optional<EntrySum> entries;
    bool isLookedUp = false;
  };
  [[nodiscard]] static std::vector<Column<Row>> columns(Session& session);
  [[nodiscard]] QWidget* makeTable();
  [[nodiscard]] QWidget* makeButtons();
  void listBackups();
  void lookUpNext();
  void showChosen();
  void showSince();
  void lookInside();
  void restore();
  [[nodiscard]] const Row* chosen() const;

  Session& session_;
  OfferUndo offerUndo_;
  RowTable<Row> rows_;
  RowTableView* table_ = nullptr;
  SinceBackupView* side_ = nullptr;
  QPushButton* look_ = nullptr;
  QPushButton* restore_ = nullptr;
  std::shared_ptr<ObjectContext> then_;  ///< the chosen backup's; none while none is chosen or it is damaged
  std::unique_ptr<BackupWindow> inside_;
  QTimer lookUp_;
  QTimer again_;
  Notifier::Subscription documents_;
  Subscription edits_;
};

/// "Today, 09:02", "Wed 25 Nov, 18:04", with the year where it is another one.
[[nodiscard]] QString backupTime(const Session& session, Instant madeAt);

}  // namespace pendra
