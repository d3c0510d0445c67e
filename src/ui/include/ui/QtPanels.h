#pragma once

#include "platform/ModalDepth.h"
#include "platform/Panels.h"
#include "platform/UserDefaults.h"

class QFileDialog;

namespace pendra {

/// The name as a file can bear it: a slash becomes a hyphen.
[[nodiscard]] QString fileNameFor(const QString& proposedName);
/// The path with the required type at its end, whatever dots the name holds. Empty type: unchanged.
[[nodiscard]] QString withRequiredType(const QString& path, const QString& requiredType);

/// Panels as Qt's file dialogs, or the desktop's own where it has some. A panel opens in the folder that was
/// chosen last, in this run or an earlier one.
class QtPanels final : public Panels {
 public:
  /// Panels open in `firstFolder` until one was chosen. Application-modal panels are counted in `modals`.
  /// Both references must outlive this.
  QtPanels(ModalDepth& modals, UserDefaults& defaults, QString firstFolder)
      : modals_(modals), defaults_(defaults), firstFolder_(std::move(firstFolder)) {}

  std::optional<QString> runSavePanel(const SavePanel& panel) override;
  std::optional<QString> runOpenPanel() override;
  std::optional<QString> runFolderPanel() override;
  void beginSavePanel(const SavePanel& panel, std::function<void(std::optional<QString>)> ended) override;

 private:
  void fill(QFileDialog& dialog, const SavePanel& panel) const;
  [[nodiscard]] std::optional<QString> runExistingPanel(int mode);
  [[nodiscard]] QString folder() const;
  [[nodiscard]] QString chosenIn(const QFileDialog& dialog, const QString& requiredType);

  ModalDepth& modals_;
  UserDefaults& defaults_;
  QString firstFolder_;
};

}  // namespace pendra
