#include "ui/QtPanels.h"

#include <QFileDialog>

#include "platform/Preferences.h"
#include "platform/Text.h"
#include "ui/FrontWindow.h"
#include "ui/QtAlerts.h"

namespace pendra {

namespace {

/// What files of that ending are called in the plural.
QString kindOf(const QString& type) {
  return type == u"pdr" ? QObject::tr("Pendra documents")
                        : formatted(QObject::tr("%@ files"), {type.toUpper()});
}

/// Asks, when the path that a name leads to is taken; the dialog itself does not know that path yet.
bool mayReplace(ModalDepth& modals, const QString& path) {
  const QFileInfo file(path);
  if (!file.exists()) return true;
  const Alert question{
      .style = Alert::Style::Warning,
      .message = formatted(QObject::tr("“%@” already exists. Do you want to replace it?"), {file.fileName()}),
      .informative = {},
      .buttons = {QObject::tr("Replace"), QObject::tr("Cancel")},
      .returnCancels = true};
  return QtAlerts(modals).runAlert(question) == kFirstButton;
}

/// A save dialog that is accepted only with a path that may be written to.
class SaveDialog final : public QFileDialog {
 public:
  SaveDialog(QWidget* parent, ModalDepth& modals, const SavePanel& panel)
      : QFileDialog(parent),
        modals_(modals),
        type_(panel.requiredType),
        unasked_(panel.unasked),
        replaces_(panel.replaces) {}

 protected:
  void done(int result) override {
    if (result == Accepted) {
      const QStringList files = selectedFiles();
      if (files.isEmpty()) return refuse();
      const QString path = withRequiredType(files.front(), type_);
      if (replaces_ && path != unasked_ && !mayReplace(modals_, path)) return refuse();
    }
    QFileDialog::done(result);
  }

 private:
  /// It stays, to be answered otherwise; a panel of the desktop's own has gone by now.
  void refuse() {
    if (testAttribute(Qt::WA_DontShowOnScreen)) QFileDialog::done(Rejected);
  }

  ModalDepth& modals_;
  QString type_;
  QString unasked_;
  bool replaces_;
};

}  // namespace

QString fileNameFor(const QString& proposedName) {
  QString name = proposedName;
  return name.replace(u'/', u'-');
}

QString withRequiredType(const QString& path, const QString& requiredType) {
  if (requiredType.isEmpty()) return path;
  const QString ending = u'.' + requiredType;
  return path.endsWith(ending, Qt::CaseInsensitive) ? path : path + ending;
}

/// The folder chosen last, or the first one when that is gone.
QString QtPanels::folder() const {
  const QString last = defaults_.text(preferences::kLastFolder).value_or(QString());
  return QFileInfo(last).isDir() ? last : firstFolder_;
}

void QtPanels::fill(QFileDialog& dialog, const SavePanel& panel) const {
  // A desktop's own panel says only what it is told.
  dialog.setWindowTitle(panel.title.isEmpty() ? QObject::tr("Save As") : panel.title);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setFileMode(QFileDialog::AnyFile);
  dialog.setOption(QFileDialog::DontConfirmOverwrite);
  if (!panel.requiredType.isEmpty()) {
    dialog.setNameFilter(kindOf(panel.requiredType) + u" (*." + panel.requiredType + u')');
  }
  dialog.setDirectory(panel.folder.isEmpty() ? folder() : panel.folder);
  dialog.selectFile(fileNameFor(panel.proposedName));
}

QString QtPanels::chosenIn(const QFileDialog& dialog, const QString& requiredType) {
  QString path = withRequiredType(dialog.selectedFiles().value(0), requiredType);
  defaults_.setText(preferences::kLastFolder, QFileInfo(path).absolutePath());
  return path;
}

std::optional<QString> QtPanels::runSavePanel(const SavePanel& panel) {
  SaveDialog dialog(frontWindow(), modals_, panel);
  fill(dialog, panel);
  const ModalDepth::Run run(modals_);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return chosenIn(dialog, panel.requiredType);
}

std::optional<QString> QtPanels::runOpenPanel() { return runExistingPanel(QFileDialog::ExistingFile); }

std::optional<QString> QtPanels::runFolderPanel() { return runExistingPanel(QFileDialog::Directory); }

std::optional<QString> QtPanels::runExistingPanel(int mode) {
  QFileDialog dialog(frontWindow());
  dialog.setFileMode(static_cast<QFileDialog::FileMode>(mode));
  const bool isFolder = mode == QFileDialog::Directory;
  dialog.setOption(QFileDialog::ShowDirsOnly, isFolder);
  dialog.setWindowTitle(isFolder ? QObject::tr("Choose Folder") : QObject::tr("Open"));
  dialog.setLabelText(QFileDialog::Accept, isFolder ? QObject::tr("Choose") : QObject::tr("Open"));
  dialog.setDirectory(folder());
  const ModalDepth::Run run(modals_);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return chosenIn(dialog, {});
}

void QtPanels::beginSavePanel(const SavePanel& panel, std::function<void(std::optional<QString>)> ended) {
  auto* dialog = new SaveDialog(frontWindow(), modals_, panel);
  fill(*dialog, panel);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setWindowModality(Qt::WindowModal);
  QObject::connect(dialog, &QDialog::finished, dialog,
                   [this, dialog, type = panel.requiredType, ended = std::move(ended)](int result) {
                     if (result != QDialog::Accepted) return ended(std::nullopt);
                     ended(chosenIn(*dialog, type));
                   });
  dialog->open();
}

}  // namespace pendra
