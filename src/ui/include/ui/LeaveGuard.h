#pragma once
// Whether a field may keep the text that was typed into it is the editor's to say; when that is asked is one
// rule for every field: before Tab moves the keyboard away, after a click has moved it to another field of
// the same window, and before Return or the affirmative button finishes the window. Cancel asks nothing, and
// a list that pops up, a menu, an alert or another window is no leaving.

#include <QHash>
#include <QObject>
#include <functional>

class QWidget;

namespace pendra {

/// Asks the fields of one window whether they may be left, and keeps the keyboard in one that may not.
class LeaveGuard final : public QObject {
  Q_OBJECT
 public:
  struct Rule {
    std::function<bool()> mayLeave;
    /// Whether something was typed that nobody has been asked about yet. A field without it is left out when
    /// the window is finished.
    std::function<bool()> isTyped{};
  };

  explicit LeaveGuard(QWidget& window);
  /// Watches a field. Its rule is asked once for each attempt to leave it.
  void watch(QWidget& field, const Rule& rule);
  /// Whether the window may be finished with what was typed. Where it may not, the keyboard is in the field
  /// that refused. To be asked by Return and by the affirmative button, not by Cancel.
  [[nodiscard]] bool mayFinish();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  [[nodiscard]] bool ask(QWidget& field);
  void askAfterwards(QWidget& field);
  static void takeBack(QWidget& field);

  QWidget& window_;
  QHash<QObject*, Rule> rules_;
  std::vector<QWidget*> fields_;       // in the order of watching
  const QObject* answered_ = nullptr;  // the field that the key being pressed was allowed to leave
  bool asking_ = false;
};

}  // namespace pendra
