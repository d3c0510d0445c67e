#pragma once

#include <QWidget>

#include "document/Restoring.h"

class QGridLayout;
class QLabel;
class QPushButton;

namespace pendra {

/// Beside the backups: which one is chosen, whether it is whole, and what has changed since.
class SinceBackupView final : public QWidget {
  Q_OBJECT
 public:
  explicit SinceBackupView(QWidget* parent = nullptr);

  void showBackup(const QString& when, const EntrySum& entries);
  /// The same for one that cannot be read.
  void showDamage(const QString& when, const QString& why);
  void showSince(const SinceBackup& since);

 Q_SIGNALS:
  void showInFolder();

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void colourWarning();
  void addLine(const QString& words, const QString& length = {});

  QLabel* when_;
  QLabel* whole_;
  QLabel* head_;
  QGridLayout* lines_;
  QLabel* sent_;
  QLabel* note_;
  QStringList spoken_;
};

}  // namespace pendra
