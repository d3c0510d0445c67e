#pragma once

#include <QPointer>
#include <QTimer>

#include "link/ProgressSink.h"
#include "link/WaitPort.h"
#include "platform/ModalDepth.h"

class QFrame;
class QLabel;
class QProgressBar;
class QPushButton;

namespace pendra {

/// A panel in the middle of the window at the front, which stands while Vantor is asked and has the only
/// button that can be pressed then. It is drawn before a call begins; while the call goes on events are
/// handled, so that everything is drawn and Cancel, Escape and signals are heard, but whatever else a user
/// could do is refused with the reason. It stays for a moment after a call, because the next one often
/// follows.
class BusyPanel final : public QObject, public ProgressSink, public WaitPort {
  Q_OBJECT
 public:
  /// The depth must outlive it.
  explicit BusyPanel(ModalDepth& modals);
  ~BusyPanel() override;

  void startSpinner(const QString& words, int answers) override;
  void showProgress(int position, int total) override;
  void stopSpinner() override;
  [[nodiscard]] bool pause(std::chrono::milliseconds time) override;

  void prepare() override;
  void wait(PendingCall& call) override;

  /// Ends the call that goes on, and those that the same command would begin next; harmless when there is
  /// none.
  void cancel();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  class Standing;

  void show();
  void build(QWidget& window);
  void showState();
  void place();
  void hide();
  void takeAway();
  void refuse();

  ModalDepth& modals_;
  QTimer hiding_;
  PendingCall* call_ = nullptr;
  bool cancelled_ = false;
  QString words_;    ///< empty: nothing more is known than that Vantor is asked
  int answers_ = 0;  ///< how many have come
  int awaited_ = 0;  ///< of how many; 0: not known

  QPointer<QFrame> panel_;
  QLabel* label_ = nullptr;  ///< in the panel, as the next ones
  QLabel* reason_ = nullptr;
  QProgressBar* bar_ = nullptr;
  QPushButton* cancelButton_ = nullptr;
};

}  // namespace pendra
