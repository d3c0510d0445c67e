#pragma once
// The session is the state of the one open document and the ports to the world; it does nothing. The
// operations on it stand by subject in headers of free functions: RunningTimers, DocumentLoading,
// DocumentClosing, Launch, Backup.

#include <memory>

#include "document/HaltedEntries.h"
#include "document/Notices.h"
#include "document/OpenDocument.h"
#include "document/Windows.h"
#include "model/DocumentSettings.h"
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
  InterfaceLoader& interfaces;
  VantorMenus& menus;
};

/// Since when the document's file holds all that was done.
struct SaveState {
  std::optional<Instant> savedAt{};        ///< the last save that succeeded
  std::optional<Instant> notSavedSince{};  ///< the first that failed after it; none while all is well
  QString reason{};                        ///< why it failed
  /// How many changes there had been when the user tried to close and was told that they would be lost.
  std::optional<quint64> closeRefusedAt{};
};

/// The state of the application with respect to its document.
class Session {
 public:
  Session(const Ports& ports, ObjectModel model) : ports_(ports), objectModel_(std::move(model)) {}
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  [[nodiscard]] const Ports& ports() const { return ports_; }
  [[nodiscard]] const ObjectModel& objectModel() const { return objectModel_; }

  /// The open document's context; none when no document is open.
  [[nodiscard]] const std::shared_ptr<ObjectContext>& context() const { return context_; }
  void setContext(std::shared_ptr<ObjectContext> context);
  /// Whether a document is open that was read; one that could not be read leaves a context without a file.
  [[nodiscard]] bool hasReadDocument() const { return context_ && context_->hasStore(); }
  /// Announces the changes of `context`.
  [[nodiscard]] Notifier& documentChanges() { return documentChanges_; }

  /// The open document's settings; none when no document is open.
  [[nodiscard]] DocumentSettings* settings() const { return settings_.get(); }
  void setSettings(DocumentSettings* doc) { settings_ = doc; }

  /// A copy of the document's `standalone`. Kept: it outlives the document that it came from.
  [[nodiscard]] bool isStandalone() const { return standalone_; }
  void setStandalone(bool standalone);
  /// Announces the changes of `isStandalone`.
  [[nodiscard]] Notifier& standaloneChanges() { return standaloneChanges_; }

  /// The open document; none when no document is open.
  [[nodiscard]] OpenDocument* document() const { return document_.get(); }
  void setDocument(std::shared_ptr<OpenDocument> doc) { document_ = std::move(doc); }
  /// Forgets the open document and stops the timer window's ticking.
  void clearDoc();

  [[nodiscard]] const SaveState& saveState() const { return saveState_; }
  void setSaveState(SaveState state);
  /// Announces the changes of `saveState`.
  [[nodiscard]] Notifier& saveStateChanges() { return saveStateChanges_; }

  [[nodiscard]] Notices& notices() { return notices_; }

  /// The windows that are open; each enters itself when it is loaded and leaves when it closes.
  MainWindow* window = nullptr;
  AuxiliaryWindow* setupController = nullptr;
  AuxiliaryWindow* customerListController = nullptr;
  AuxiliaryWindow* servicesListController = nullptr;
  AuxiliaryWindow* welcomeController = nullptr;
  /// What was halted when the document was read; emptied once the user has been told.
  HaltedEntries halted;
  /// The introduction of a first run is due.
  bool showIntroSheet = false;
  /// Set when the user has said no to usage statistics for as long as the program runs.
  bool masterDoNotTrackEvents = false;

 private:
  Ports ports_;
  ObjectModel objectModel_;
  std::shared_ptr<ObjectContext> context_;
  Notifier documentChanges_;
  Ref<DocumentSettings> settings_;
  bool standalone_ = false;
  Notifier standaloneChanges_;
  std::shared_ptr<OpenDocument> document_;
  SaveState saveState_;
  Notifier saveStateChanges_;
  Notices notices_;
};

}  // namespace pendra
