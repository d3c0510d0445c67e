#pragma once
// The commands that only hand something to the desktop. Whether it could be opened is never told: a missing
// help book or browser is the desktop's to mention.

#include <QString>
#include <optional>

#include "platform/Workspace.h"

namespace pendra {

/// Who asked for help, as far as it says where the book should open.
struct HelpSender {
  std::optional<QString> text = {};  ///< a sender that is a text: the anchor itself
  long tag = 0;                      ///< 0: it has none
  int intValue = 0;                  ///< 0: it has none
};

/// The anchor that a sender stands for; empty when it stands for none.
QString helpAnchor(const HelpSender& sender);
/// The address of the help book, at an anchor unless that is empty.
QString helpAddress(const QString& resources, const QString& anchor);

void showHelp(const HelpSender& sender, Workspace& workspace, const QString& resources);
void submitFeedback(Workspace& workspace);
void showCommunity(Workspace& workspace);
/// Opens the list of the components of others that Pendra is made with.
void showComponents(Workspace& workspace, const QString& resources);
/// "Version 1.0.0.1", for the about box.
QString versionText();

}  // namespace pendra
