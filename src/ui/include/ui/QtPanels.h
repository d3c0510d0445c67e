#pragma once

#include "platform/ModalDepth.h"
#include "platform/Panels.h"

class QFileDialog;

namespace pendra {

/// The name as a file can bear it: a slash becomes a hyphen.
[[nodiscard]] QString fileNameFor(const QString& proposedName);
/// The path with the required type at its end, whatever dots the name holds. Empty type: unchanged.
[[nodiscard]] QString withRequiredType(const QString& path, const QString& requiredType);

/// Panels as Qt's file dialogs, or the desktop's own where it has some. A panel opens in the folder that was
/// chosen last.
class QtPanels final : public Panels {
 public:
  /// Panels open in `folder` at first. Application-modal panels are counted in `modals`, which must
  /// outlive this.
  QtPanels(ModalDepth& modals, QString folder) : modals_(modals), folder_(std::move(folder)) {}

  std::optional<QString> runSavePanel(const SavePanel& panel) override;
  std::optional<QString> runOpenPanel() override;
  void beginSavePanel(const SavePanel& panel, std::function<void(std::optional<QString>)> ended) override;

 private:
  void fill(QFileDialog& dialog, const SavePanel& panel) const;
  [[nodiscard]] QString chosenIn(const QFileDialog& dialog, const QString& requiredType);

  ModalDepth& modals_;
  QString folder_;
};

}  // namespace pendra
