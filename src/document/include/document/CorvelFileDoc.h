#pragma once

#include <QString>
#include <memory>
#include <optional>

#include "platform/Result.h"
#include "store/ObjectContext.h"

namespace pendra {

/// One document: its file and the context over it. The open one is the session's `theFileDoc`.
class CorvelFileDoc : public std::enable_shared_from_this<CorvelFileDoc> {
 public:
  /// An empty document without a file, over a fresh context.
  explicit CorvelFileDoc(std::shared_ptr<ObjectContext> context) : context_(std::move(context)) {}

  /// Reads the file; a missing or empty one becomes a new document. Whatever the outcome, the document
  /// has that file from now on; after a failure no save ever writes to it.
  Result<void> readFromURL(const QString& url, const std::optional<QString>& ofType);
  /// Writes the document to its own file, of the type under which it was read; false on any error.
  bool save();

  [[nodiscard]] const std::shared_ptr<ObjectContext>& managedObjectContext() const { return context_; }
  /// The document's path; none for one that has no file yet.
  [[nodiscard]] const std::optional<QString>& fileURL() const { return fileURL_; }
  /// The file type under which it was read, used again on every save.
  [[nodiscard]] const QString& curFileExtension() const { return curFileExtension_; }
  void setCurFileExtension(QString type) { curFileExtension_ = std::move(type); }
  /// The file's name without its last extension; "Untitled" without a file.
  [[nodiscard]] QString displayName() const;

  /// Kept: every type is native.
  [[nodiscard]] static bool isNativeType(const QString& type);

 private:
  std::shared_ptr<ObjectContext> context_;
  std::optional<QString> fileURL_;
  QString curFileExtension_;
};

}  // namespace pendra
