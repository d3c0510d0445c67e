#pragma once

#include <QVariantMap>

#include "Order.h"
#include "document/OpenDocument.h"
#include "document/Session.h"

/// What others may do to a document. Each is an edit as if by hand, or leaves everything as it was; a
/// document that cannot be stored is not changed.
namespace pendra::orders {

/// Starts the open activity that matches, and tells what it is.
[[nodiscard]] Result<QVariantMap> start(OpenDocument& document, const QString& match);
/// Stops the running activity that matches, or all for an empty text; each with how long it ran.
[[nodiscard]] Result<QVariantList> stop(OpenDocument& document, const QString& match);
/// Does what the quick entry does with the text. Names that do not exist are made where `create` is set and
/// the lists are kept by hand, else refused. Answers what was "added" or "started".
[[nodiscard]] Result<QVariantMap> add(OpenDocument& document, const QString& text, bool create);
/// Writes every time entry to a new file, as the menu does. Refused while time runs: an entry has no length
/// then.
[[nodiscard]] Result<QVariantMap> exportLog(OpenDocument& document, const QString& path);
/// Copies the document to a new file, as the menu does; what runs goes on.
[[nodiscard]] Result<QVariantMap> backUp(OpenDocument& document, const ObjectModel& model,
                                         const QString& path);

/// The open document; or why others may not change it now: there is none, or the program is `busyWith`
/// something that must be answered first.
[[nodiscard]] Result<OpenDocument*> documentToChange(const Session& session, const QString& busyWith);
/// Whether what is done now will be on the disk.
[[nodiscard]] Result<void> mayChange(const ObjectContext& context);

/// What `start` would start, for whoever only reads the document.
[[nodiscard]] Result<Activity*> startable(const ObjectContext& context, const QString& match);
/// Whether `add` would start a timer.
[[nodiscard]] Result<bool> addStarts(const ObjectContext& context, const QString& text, bool create);

}  // namespace pendra::orders
