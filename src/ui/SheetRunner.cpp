#include "ui/SheetRunner.h"

#include <QDialog>

#include "ui/AccessKeys.h"

namespace pendra {

static_assert(SheetRunner::kAccepted == QDialog::Accepted && SheetRunner::kCancelled == QDialog::Rejected);

int SheetRunner::run(QDialog& sheet) {
  giveAccessKeys(sheet);
  sheet.setWindowModality(Qt::ApplicationModal);
  const ModalDepth::Run run(modals_);
  return sheet.exec();
}

}  // namespace pendra
