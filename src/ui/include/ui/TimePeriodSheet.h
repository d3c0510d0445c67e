#pragma once

#include <QDialog>
#include <memory>

#include "ui_core/TimePeriodController.h"

namespace pendra {

/// The time entry editor as a sheet of the timer window. Return is its OK, Escape its Cancel.
class TimePeriodSheet final : public QDialog, public EditorSheet {
  Q_OBJECT
 public:
  /// A child of `window`; the session must outlive it.
  TimePeriodSheet(Session& session, QWidget* window);
  ~TimePeriodSheet() override;

  [[nodiscard]] TimePeriodController& controller();

  int runModal() override;
  void stopModal(int code) override { done(code); }
  void reject() override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  struct Parts;
  void connectControls();

  Session& session_;
  std::unique_ptr<Parts> parts_;
};

}  // namespace pendra
