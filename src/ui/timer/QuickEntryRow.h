#pragma once

#include <QPointer>
#include <QTimer>
#include <QWidget>

#include "ui_core/QuickEntry.h"

class QHBoxLayout;

namespace pendra {

class QuickEntryField;
class QuickEntryPanel;

/// The row under the timer window's header: the quick entry, whose panel says what Return will do, and room
/// at its right for what belongs to the activities.
class QuickEntryRow final : public QWidget {
  Q_OBJECT
 public:
  /// `state` must outlive it. `keyHint` is shown while nothing is typed.
  QuickEntryRow(TimerState& state, const QString& keyHint);

  /// Puts the keyboard into the field, all of whose text is selected.
  void focusField();
  /// Puts a widget at the right end.
  void addTool(QWidget* tool);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void moveEvent(QMoveEvent* event) override;

 private:
  void textChanged();
  void showPanel();
  void showReading();
  void hidePanel();
  void placePanel();
  void describe();
  void enter();
  bool takeCompletion();
  void close(bool& closed);
  [[nodiscard]] bool isPanelShown() const;

  QuickEntry entry_;
  QuickEntryField* field_;
  QHBoxLayout* row_;
  QPointer<QuickEntryPanel> panel_;
  QuickReadingTexts texts_;
  QTimer clock_;
  bool typed_ = false;  ///< since a completion was taken
};

}  // namespace pendra
