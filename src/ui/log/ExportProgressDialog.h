#pragma once

#include <QProgressDialog>
#include <memory>

#include "platform/ModalDepth.h"
#include "ui_core/TimeLogExport.h"

namespace pendra {

/// Shows the progress of an export that takes longer than half a second, with a way to end it. While it
/// lives, nothing ticks: the rows are written as they stood.
class ExportProgressDialog final : public ExportProgress {
 public:
  ExportProgressDialog(ModalDepth& modals, QWidget* window) : run_(modals), window_(window) {}
  bool goOn(std::size_t done, std::size_t of) override;

 private:
  ModalDepth::Run run_;
  QWidget* window_;
  std::unique_ptr<QProgressDialog>
      dialog_;  // made when the writing has begun, because its time counts from then
};

}  // namespace pendra
