#pragma once

#include <QString>
#include <memory>
#include <optional>

#include "platform/Result.h"
#include "store/ObjectContext.h"

namespace pendra {

/// One document: its file and the context over it. The open one is the session's `document`.
class OpenDocument : public std::enable_shared_from_this<OpenDocument> {
 public:
  /// An empty document without a file, over a fresh context.
  explicit OpenDocument(std::shared_ptr<ObjectContext> context) : context_(std::move(context)) {}

  /// Reads the file; a missing or empty one becomes a new document. Whatever the outcome, the document
  /// has that file from now on; after a failure no save ever writes to it.
  Result<void> read(const QString& url);
  /// Writes the document to its own file, of the type under which it was read; false on any error.
  bool save();

  [[nodiscard]] const std::shared_ptr<ObjectContext>& context() const { return context_; }
  /// The document's path; none for one that has no file yet.
  [[nodiscard]] const std::optional<QString>& path() const { return path_; }
  /// The file's name without its last extension; "Untitled" without a file.
  [[nodiscard]] QString displayName() const;

 private:
  std::shared_ptr<ObjectContext> context_;
  std::optional<QString> path_;
};

}  // namespace pendra
