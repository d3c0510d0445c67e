#include "ui_core/ShellCommands.h"

#include <QUrl>

#include "platform/Identifiers.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "platform/Version.h"

namespace pendra {

namespace {

QString fileAddress(const QString& path) { return QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded); }

}  // namespace

QString helpAddress(const QString& resources, const QString& anchor) {
  const QString page = formatted(
      u"%@%@", {fileAddress(resources), u"/Pendra.help/Contents/Resources/English.lproj/PendraHelp1_0.htm"});
  return anchor.isEmpty() ? page : formatted(u"%@#%@", {page, anchor});
}

void showHelp(const QString& anchor, Workspace& workspace, const QString& resources) {
  try {
    workspace.openUrl(helpAddress(resources, anchor));
  } catch (...) {
    // Help that fails to open never disturbs what the user was about to do.
  }
}

void submitFeedback(Workspace& workspace) { workspace.openUrl(identifiers::kFeedbackForm); }

void showCommunity(Workspace& workspace) { workspace.openUrl(identifiers::kCommunity); }

void showComponents(Workspace& workspace, const QString& resources) {
  workspace.openUrl(fileAddress(resources + u"/Third Party Components.pdf"));
}

QString versionText() { return formatted(tr("Version %@"), {bundleVersion()}); }

}  // namespace pendra
