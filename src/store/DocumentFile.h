#pragma once

#include <sys/types.h>

#include <QString>

#include "NameLock.h"
#include "platform/Result.h"

namespace pendra {

/// What has become of a file that is held.
enum class Whereabouts { InPlace, Deleted, Moved, Replaced, OutOfReach };

/// One state of one file.
struct FileMark {
  dev_t device = 0;
  ino_t number = 0;
  qint64 size = 0;
  qint64 changed = 0;  ///< when it was last written to, in nanoseconds
  QByteArray state;    ///< what every save changes in it
  friend bool operator==(const FileMark&, const FileMark&) = default;
};

/// A document's file, held open and locked against other processes.
class DocumentFile {
 public:
  /// Opens the file, or makes an empty one, and takes the locks. They are advisory and independent of the
  /// database's own, so that others may read and copy the file between saves.
  static Result<DocumentFile> hold(const QString& path);
  /// Opens the file for reading, whoever holds it; takes no lock and makes nothing.
  static Result<DocumentFile> look(const QString& path);
  ~DocumentFile();
  DocumentFile(DocumentFile&& other) noexcept;
  DocumentFile& operator=(DocumentFile&& other) noexcept;

  /// Where the file lies, links followed.
  [[nodiscard]] const QString& path() const { return path_; }
  /// The file that is held has that name now, whose lock is `lock`.
  void setPlace(const QString& path, NameLock lock);
  /// Gives the lock of the name away, for another file that gets it.
  [[nodiscard]] NameLock takeLock() { return std::move(lock_); }
  /// Whether any lock keeps others out.
  [[nodiscard]] bool isLocked() const { return isLocked_ || lock_.isHeld(); }

  [[nodiscard]] qint64 size() const;
  [[nodiscard]] mode_t mode() const;
  [[nodiscard]] bool isWritable() const;
  /// Whether nothing was ever in the file, also where a killed program had begun to make it: then its journal
  /// says that it was empty before.
  [[nodiscard]] bool isEmpty() const;
  /// The layout of the document, read from the file's first bytes without the database. Fails when it is
  /// no document of ours, or of a layout after `newest`.
  [[nodiscard]] Result<int> layout(int newest) const;

  /// Bytes of the file that every program's save changes: the database's count of changes, and sizes.
  [[nodiscard]] QByteArray state() const;
  /// Tells this file as it is now from every other, and from itself at another time.
  [[nodiscard]] FileMark mark() const;

  [[nodiscard]] Whereabouts whereabouts() const;
  /// The path that a file has which was moved; empty when nobody knows.
  [[nodiscard]] QString movedTo() const;
  /// Holds the file that has taken this one's place, if that is the same byte for byte.
  Result<void> takeOver();
  /// Sets the file's time to now: until now everything is in it.
  void markStored() const;

 private:
  DocumentFile(int descriptor, const QString& path);
  static Result<DocumentFile> ofDescriptor(int descriptor, const QString& place);
  [[nodiscard]] bool isAt(const QString& path) const;

  int descriptor_;
  QString path_;
  dev_t folderDevice_ = 0;
  bool isLocked_ = false;
  NameLock lock_;
};

}  // namespace pendra
