#pragma once
// The commands that only hand something to the desktop. Whether it could be opened is never told: a missing
// help book or browser is the desktop's to mention.

#include <QString>

#include "platform/Workspace.h"

namespace pendra {

/// The address of the help book, at an anchor unless that is empty.
QString helpAddress(const QString& resources, const QString& anchor);

/// Opens the help book at an anchor.
void showHelp(const QString& anchor, Workspace& workspace, const QString& resources);
void submitFeedback(Workspace& workspace);
void showCommunity(Workspace& workspace);
/// Opens the list of the components of others that Pendra is made with.
void showComponents(Workspace& workspace, const QString& resources);
/// "Version 1.0.0.1", for the about box.
QString versionText();

}  // namespace pendra
