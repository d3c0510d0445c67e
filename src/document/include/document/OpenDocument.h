#pragma once
// A document is open once its file has been read, and only then: there is none without a file, and of a file
// that could not be read there is none. It is read aside, before the one that is open is touched.

#include <QString>
#include <memory>
#include <optional>

#include "model/DocumentSettings.h"
#include "platform/Result.h"
#include "store/ObjectContext.h"

namespace pendra {

/// A file that is held, and everything in it. Lets go of the file when it dies; what no edit and no save has
/// stored by then is lost.
class OpenDocument {
 public:
  /// Reads the file; a missing or empty one becomes a new document. What was running in it is halted, and the
  /// settings that every document has are there afterwards. Clock and calendar must outlive it.
  static Result<std::unique_ptr<OpenDocument>> read(const QString& path, const ObjectModel& model,
                                                    const Clock& clock, const Calendar& calendar);
  /// As that, into a context that may have read the file ahead.
  static Result<std::unique_ptr<OpenDocument>> read(const QString& path,
                                                    std::shared_ptr<ObjectContext> context);
  ~OpenDocument();
  OpenDocument(const OpenDocument&) = delete;
  OpenDocument& operator=(const OpenDocument&) = delete;

  [[nodiscard]] const std::shared_ptr<ObjectContext>& context() const { return context_; }
  [[nodiscard]] const QString& path() const { return path_; }
  /// The document's file is that one now.
  void setPath(const QString& path) { path_ = path; }
  /// Whether the path leads to this document's file, by whatever name.
  [[nodiscard]] bool isAt(const QString& path) const;
  /// The file's name without its last extension.
  [[nodiscard]] QString displayName() const;
  [[nodiscard]] DocumentSettings& settings() const { return *settings_; }
  /// Whether the user keeps the lists by hand, without Vantor.
  [[nodiscard]] bool isStandalone() const { return settings().standalone().value_or(false); }
  [[nodiscard]] Instant openedAt() const { return openedAt_; }

  /// What the user knows about the document's file.
  struct Told {
    QString reason;                           ///< why; empty while all is well
    std::optional<quint64> closeRefusedAt{};  ///< how many changes there were when closing was refused
    std::optional<quint64> copiedAt{};        ///< and when all of it was last written elsewhere
    int madeAnew = 0;                         ///< how often it was deleted
    bool ofCopies = false;                    ///< that copies are put in its place
    QString noBackup{};                       ///< why none makes itself; empty while all is well
  };
  Told told;
  /// Whether the newest backup holds all of it; none while nobody has looked.
  std::optional<bool> isBackedUp;

 private:
  OpenDocument(QString path, std::shared_ptr<ObjectContext> context);

  QString path_;
  std::shared_ptr<ObjectContext> context_;
  Ref<DocumentSettings> settings_;
  Instant openedAt_;
  Subscription edits_;
};

}  // namespace pendra
