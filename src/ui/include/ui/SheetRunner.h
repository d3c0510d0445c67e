#pragma once

#include "platform/ModalDepth.h"

class QDialog;

namespace pendra {

/// Runs the program's sheets, application-modal and counted.
class SheetRunner {
 public:
  static constexpr int kAccepted = 1;
  static constexpr int kCancelled = 0;

  explicit SheetRunner(ModalDepth& modals) : modals_(modals) {}
  /// Runs the sheet until it ends and answers its code: what `done` was called with.
  int run(QDialog& sheet);

 private:
  ModalDepth& modals_;
};

}  // namespace pendra
