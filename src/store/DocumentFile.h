#pragma once

#include <QString>

#include "platform/Result.h"

namespace pendra {

/// A document's file, held open and locked against other processes.
class DocumentFile {
 public:
  /// Opens the file, or makes an empty one, and takes the lock. The lock is advisory and independent of
  /// the database's own, so that others may read and copy the file between saves.
  static Result<DocumentFile> hold(const QString& path);
  ~DocumentFile();
  DocumentFile(DocumentFile&& other) noexcept;
  DocumentFile& operator=(DocumentFile&&) = delete;

  [[nodiscard]] bool isEmpty() const;
  /// Looks at the file's first bytes without the database: whether it is a document of ours, of a layout
  /// that we know.
  [[nodiscard]] Result<void> looksLikeADocument() const;
  /// Whether the path still names the file that is held.
  [[nodiscard]] Result<void> isStillThere() const;

 private:
  DocumentFile(int descriptor, QString path);

  int descriptor_;
  QString path_;
};

}  // namespace pendra
