#pragma once
// A new document is made whole beside its place before anything is touched: what cannot be made leaves the
// document that is open, and the file that has the name, as they were.

#include <QString>
#include <optional>

namespace pendra {

class Session;

/// What setup decides about a document for good.
struct NewDocument {
  QString path;
  QString employeeName;
  std::optional<QString> companyFileName;  ///< "" when standalone
  bool standalone = false;
};

/// Makes the document's file and opens it in place of the open document, which is stopped, saved and left.
/// The document that a first launch made goes with that when nothing was ever in it. A document that stands
/// at the path is replaced; what is no document, or held by another program, is not. False when there is no
/// new document: the notice line says why.
[[nodiscard]] bool makeDocument(Session& session, const NewDocument& wanted);

/// The path of the open document while nobody has set it up and nothing is in it; empty otherwise.
[[nodiscard]] QString documentOfNobody(const Session& session);

/// The name, in that folder, or the first free one like it with a number. What stands at `unasked` counts as
/// free.
[[nodiscard]] QString freeNameIn(const QString& folder, const QString& name, const QString& unasked);

}  // namespace pendra
