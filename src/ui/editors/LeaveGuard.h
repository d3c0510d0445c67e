#pragma once

#include <QHash>
#include <QObject>
#include <functional>

class QWidget;

namespace pendra {

/// Asks whether a field may give up the keyboard focus, and gives it back when it may not. Only a move to
/// another field of the same window is leaving: a list that pops up, an alert or another window is not.
class LeaveGuard final : public QObject {
  Q_OBJECT
 public:
  explicit LeaveGuard(QWidget& window);
  /// Watches a field. `mayLeave` is asked once for each attempt.
  void watch(QWidget& field, const std::function<bool()>& mayLeave);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool ask(QWidget* field);
  void askAfterwards(QWidget* field);

  QWidget& window_;
  QHash<QObject*, std::function<bool()>> questions_;
  QObject* answered_ = nullptr;  ///< the field that was allowed to be left by the key being pressed
  bool asking_ = false;
};

}  // namespace pendra
