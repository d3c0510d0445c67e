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

  [[nodiscard]] const QString& path() const { return path_; }
  /// The file that is held has another name now.
  void setPath(QString path) { path_ = std::move(path); }
  [[nodiscard]] qint64 size() const;
  /// Whether nothing was ever in the file, also where a killed program had begun to make it: then its journal
  /// says that it was empty before.
  [[nodiscard]] bool isEmpty() const;
  /// The layout of the document, read from the file's first bytes without the database. Fails when it is
  /// no document of ours, or of a layout after `newest`.
  [[nodiscard]] Result<int> layout(int newest) const;
  /// True while the path names the file that is held, false when it names nothing any more; fails when
  /// another file has taken its place.
  [[nodiscard]] Result<bool> isStillThere() const;
  /// Sets the file's time to now: until now everything is in it.
  void markStored() const;

 private:
  DocumentFile(int descriptor, QString path);

  int descriptor_;
  QString path_;
};

}  // namespace pendra
