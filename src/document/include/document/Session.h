#pragma once
// The session holds the one open document, or none, and the ports to the world. What is open changes whole:
// a document that has been read comes in, or none is open any more. The operations on it stand by subject in
// headers of free functions: DocumentLoading, DocumentClosing, Saving, RunningTimers, NewDocument, Backup.

#include <memory>

#include "document/Notices.h"
#include "document/OpenDocument.h"
#include "document/Windows.h"
#include "platform/Alerts.h"
#include "platform/Calendar.h"
#include "platform/Clock.h"
#include "platform/ModalDepth.h"
#include "platform/NotificationCenter.h"
#include "platform/Panels.h"
#include "platform/Places.h"
#include "platform/UserDefaults.h"
#include "platform/Workspace.h"
#include "store/Descriptors.h"

namespace pendra {

/// What the session uses of the world. All must outlive it.
struct Ports {
  const Clock& clock;
  const Calendar& calendar;
  const Places& places;
  UserDefaults& defaults;
  Alerts& alerts;
  Panels& panels;
  Workspace& workspace;
  ModalDepth& modals;
  NotificationCenter& notifications;
  Windows& windows;
};

/// Since when the document's file holds all that was done.
struct SaveState {
  std::optional<Instant> savedAt{};        ///< the last save that succeeded; none without a document
  std::optional<Instant> notSavedSince{};  ///< that same moment while saving fails; none while all is well
  QString reason{};                        ///< why it fails
};

/// The state of the program with respect to its document.
class Session {
 public:
  Session(const Ports& ports, ObjectModel model);
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  [[nodiscard]] const Ports& ports() const { return ports_; }
  [[nodiscard]] const ObjectModel& objectModel() const { return objectModel_; }

  /// The open document; none when no document is open. So are its parts.
  [[nodiscard]] OpenDocument* document() const { return document_.get(); }
  [[nodiscard]] std::shared_ptr<ObjectContext> context() const {
    return document_ ? document_->context() : nullptr;
  }
  [[nodiscard]] DocumentSettings* settings() const { return document_ ? &document_->settings() : nullptr; }
  /// False when no document is open.
  [[nodiscard]] bool isStandalone() const { return document_ && document_->isStandalone(); }

  /// This document is the open one from now on; the one before is let go of. What it says of itself goes with
  /// a document: its notices. Announced once.
  void open(std::unique_ptr<OpenDocument> document);
  /// No document is open from now on. Saves nothing. Harmless when none was open.
  void close();
  /// From now on what changes an open document outside of an edit ends the program.
  void requireEdits();
  /// Announces that another document is open, or none.
  [[nodiscard]] Notifier& documentChanges() { return documentChanges_; }
  /// Announces that the open document is about to go; it is still the open one then.
  [[nodiscard]] Notifier& documentLeaving() { return documentLeaving_; }
  /// Announces the changes of `isStandalone`.
  [[nodiscard]] Notifier& standaloneChanges() { return standaloneChanges_; }

  /// Derived from the document's attempts to store, each of which is announced.
  [[nodiscard]] SaveState saveState() const;
  [[nodiscard]] Notifier& saveStateChanges() { return saveStateChanges_; }

  [[nodiscard]] Notices& notices() { return notices_; }

  /// The introduction of a first run is due.
  bool showIntroSheet = false;
  /// Set when the user has said no to usage statistics for as long as the program runs.
  bool masterDoNotTrackEvents = false;

 private:
  void exchange(std::unique_ptr<OpenDocument> next);
  void obeyPreferences();
  void commitTried();

  Ports ports_;
  ObjectModel objectModel_;
  std::unique_ptr<OpenDocument> document_;
  bool editsRequired_ = false;
  Subscription commits_;
  Notifier::Subscription settings_;
  Notifier::Subscription oneAtATime_;
  Notifier documentLeaving_;
  Notifier documentChanges_;
  Notifier standaloneChanges_;
  Notifier saveStateChanges_;
  Notices notices_;
};

}  // namespace pendra
