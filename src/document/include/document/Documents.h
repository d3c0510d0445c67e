#pragma once

#include <QStringList>
#include <memory>
#include <optional>
#include <vector>

#include "platform/Result.h"

namespace pendra {

class OpenDocument;
class Session;

/// Opens documents from outside the program, makes untitled ones, and remembers recent files.
class Documents {
 public:
  explicit Documents(Session& session) : session_(session) {}

  /// Open Recent, and opens from the desktop. An error of domain "NSURLErrorDomain", code -1, when the
  /// user declined; nobody shows it.
  Result<void> open(const QString& url);
  /// The files of recent documents that exist, newest first, ten at most.
  [[nodiscard]] QStringList recentDocuments() const;
  void clearRecentDocuments();

 private:
  std::shared_ptr<OpenDocument> readFrom(const QString& url);

  Session& session_;
};

/// Puts a path at the head of the recent documents.
void noteRecentDocument(Session& session, const QString& path);

/// This document becomes the open one and the timer window is loaded.
void showDocument(Session& session, std::shared_ptr<OpenDocument> document);

}  // namespace pendra
