#pragma once

#include <QPointer>

#include "link/ProgressSink.h"

class QFrame;
class QLabel;
class QProgressBar;

namespace pendra {

/// A small panel in the middle of the window at the front that says what Vantor is being asked. It draws at
/// once and takes no clicks; without a window it shows nothing.
class BusyPanel final : public ProgressSink {
 public:
  ~BusyPanel() override;

  void startSpinner() override;
  void showProgress(int position, int total) override;
  void stopSpinner() override;

 private:
  void place();

  QPointer<QFrame> panel_;
  QPointer<QLabel> words_;
  QPointer<QProgressBar> bar_;
};

}  // namespace pendra
