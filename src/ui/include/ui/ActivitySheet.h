#pragma once

#include <QDialog>
#include <memory>

#include "ui_core/ActivityEditor.h"

namespace pendra {

/// The activity editor as a sheet of the timer window. Return is its OK, Escape its Cancel.
class ActivitySheet final : public QDialog, public ActivityEditorSheet {
  Q_OBJECT
 public:
  /// A child of `window`; the session must outlive it.
  ActivitySheet(Session& session, QWidget* window);
  ~ActivitySheet() override;

  [[nodiscard]] ActivityEditor& controller();
  /// A document that is not linked sends nothing.
  void hideSendingLabel();

  int run() override;
  void end(int code) override { done(code); }
  void setPastTimeViewShown(bool shown) override;
  void showMissing(const QString& sentence) override;
  void showServiceHint(const QString& sentence) override;
  void showEchoes(const EntryEchoes& echoes) override;
  void reject() override;

 Q_SIGNALS:
  /// The window of the service items is to be opened, above the sheet.
  void serviceItemsWanted();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  struct Parts;
  void connectControls();
  void connectTimeEntries();
  void enableDelete();
  void pressReturn();
  void save();

  Session& session_;
  int pastTimeViewHeight_ = 0;  ///< taken once, when it is first needed
  std::unique_ptr<Parts> parts_;
};

}  // namespace pendra
