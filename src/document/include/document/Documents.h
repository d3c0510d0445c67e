#pragma once

#include <QStringList>
#include <optional>
#include <vector>

#include "platform/Result.h"

namespace pendra {

class Session;

/// Opens documents from outside the program, makes untitled ones, and remembers recent files.
class Documents {
 public:
  explicit Documents(Session& session) : session_(session) {}

  /// Open Recent, and opens from the desktop: what is open already comes to the front, anything else takes
  /// its place once the user agrees and the file has been read. An error of domain "NSURLErrorDomain", code
  /// -1, when the user declined or it could not be read, which the notice line says; another one when no file
  /// is there.
  Result<void> open(const QString& path);
  /// The files of recent documents that exist, newest first, ten at most.
  [[nodiscard]] QStringList recentDocuments() const;
  void clearRecentDocuments();

 private:
  Session& session_;
};

/// Puts a path at the head of the recent documents.
void noteRecentDocument(Session& session, const QString& path);

/// Takes a path out of the recent documents.
void forgetRecentDocument(Session& session, const QString& path);

}  // namespace pendra
