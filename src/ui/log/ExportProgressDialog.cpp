#include "ExportProgressDialog.h"

namespace pendra {

namespace {
constexpr int kPatience = 500;  // milliseconds
}

bool ExportProgressDialog::goOn(std::size_t done, std::size_t of) {
  if (!dialog_) {
    dialog_ =
        std::make_unique<QProgressDialog>(QProgressDialog::tr("Exporting the time log…"),
                                          QProgressDialog::tr("Cancel"), 0, static_cast<int>(of), window_);
    dialog_->setObjectName(QStringLiteral("exportProgress"));
    dialog_->setWindowTitle(QProgressDialog::tr("Export Time Log"));
    dialog_->setWindowModality(Qt::ApplicationModal);
    dialog_->setMinimumDuration(kPatience);
    dialog_->setValue(0);
  }
  dialog_->setValue(static_cast<int>(done));
  return !dialog_->wasCanceled();
}

}  // namespace pendra
