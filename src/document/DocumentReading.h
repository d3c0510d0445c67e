#pragma once

#include <QString>
#include <memory>
#include <optional>

namespace pendra {

class CorvelFileDoc;
class Session;

/// A document over a fresh, empty context.
std::shared_ptr<CorvelFileDoc> makeDocument(Session& session);

/// Reads the file into the document, which becomes the open one whatever the outcome; a setup window that
/// is open at that moment closes. False when the file could not be read.
bool readDocument(Session& session, const std::shared_ptr<CorvelFileDoc>& document, const QString& path,
                  const std::optional<QString>& ofType);

}  // namespace pendra
