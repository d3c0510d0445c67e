#pragma once

#include <QStringList>
#include <memory>
#include <optional>
#include <vector>

#include "platform/Result.h"

namespace pendra {

class CorvelFileDoc;
class Session;

/// Opens documents from outside the program, makes untitled ones, and remembers recent files.
class CorvelDocController {
 public:
  explicit CorvelDocController(Session& session) : session_(session) {}

  /// Open Recent, and opens from the desktop. An error of domain "NSURLErrorDomain", code -1, when the
  /// user declined; nobody shows it.
  Result<void> openDocumentWithContentsOfURL(const QString& url);
  /// An untitled document with a setup window. Kept: it holds two pairs of identity and settings.
  void newDocument();
  /// Saves the open document, then closes the timer window.
  void saveAllDocuments();

  [[nodiscard]] QStringList fileExtensionsFromType(const QString& type) const;
  /// Kept: always true.
  [[nodiscard]] bool validateMenuItem() const { return true; }
  /// Kept: always false, so quitting never asks about unsaved documents.
  [[nodiscard]] bool hasEditedDocuments() const { return false; }
  /// Opening errors are never shown.
  [[nodiscard]] std::optional<Error> willPresentOpeningError(const Error&) const { return std::nullopt; }

  /// The files of recent documents that exist, newest first, ten at most.
  [[nodiscard]] QStringList recentDocuments() const;
  void clearRecentDocuments();

 private:
  std::shared_ptr<CorvelFileDoc> initWithType(const QString& type);
  std::shared_ptr<CorvelFileDoc> initWithContentsOfURL(const QString& url);

  Session& session_;
};

/// Puts a path at the head of the recent documents.
void noteRecentDocument(Session& session, const QString& path);

/// This document becomes the open one and the timer window is loaded.
void makeWindowControllers(Session& session, std::shared_ptr<CorvelFileDoc> document);

}  // namespace pendra
