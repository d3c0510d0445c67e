#pragma once

#include <QLineEdit>
#include <QStringListModel>

class QCompleter;

namespace pendra {

/// The list under a cell that is being typed over, of what may be meant. What is chosen in it stands in the
/// field at once, and is stored as if it had been typed.
class CellCompletions final : public QObject {
  Q_OBJECT
 public:
  explicit CellCompletions(QLineEdit& field);

  /// Opens the list of these under the field, or closes it when there are none.
  void offer(const QStringList& texts);
  [[nodiscard]] bool isOpen() const;
  void close();
  /// Closes it with what had been typed before something was chosen; false when it is not open.
  bool takeBack();

 Q_SIGNALS:
  void openChanged(bool isOpen);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QLineEdit& field_;
  QCompleter* list_;
  QStringListModel lines_;
  QStringList offered_;
  QString typed_;
};

}  // namespace pendra
