#pragma once

#include <QDialog>
#include <QTimer>
#include <memory>

#include "ui_core/TimeEntryEditor.h"

namespace pendra {

/// The time entry editor as a sheet of the timer window. Return is its OK, Escape its Cancel.
class TimeEntrySheet final : public QDialog, public EditorSheet, public EchoDisplay {
  Q_OBJECT
 public:
  /// A child of `window`; the session must outlive it.
  TimeEntrySheet(Session& session, QWidget* window);
  ~TimeEntrySheet() override;

  [[nodiscard]] TimeEntryEditor& controller();

  int run() override;
  void end(int code) override { done(code); }
  void reject() override;
  void showEchoes(const EntryEchoes& echoes) override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  struct Parts;
  void connectControls();
  /// OK and Return.
  void finish();

  Session& session_;
  std::unique_ptr<Parts> parts_;
  QTimer tick_;
};

}  // namespace pendra
