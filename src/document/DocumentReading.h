#pragma once

#include <QString>
#include <memory>
#include <optional>

namespace pendra {

class OpenDocument;
class Session;

/// A document over a fresh, empty context.
std::shared_ptr<OpenDocument> makeDocument(Session& session);

/// Reads the file into the document, which becomes the open one whatever the outcome; a setup window that
/// is open at that moment closes. False when the file could not be read.
bool readDocument(Session& session, const std::shared_ptr<OpenDocument>& document, const QString& path);

}  // namespace pendra
