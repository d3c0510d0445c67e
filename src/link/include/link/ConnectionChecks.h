#pragma once
// A connection is opened lazily by the first check of a command and closed by that command when it is
// done. A check that says no has told the user why and has closed the connection itself.

#include "document/Session.h"
#include "link/ProgressSink.h"
#include "link/VantorConnection.h"

namespace pendra {

/// Owns the program's connection to Vantor and makes the checks before it is used.
class ConnectionChecks {
 public:
  /// Session and sink must outlive it.
  ConnectionChecks(Session& session, ConnectToVantor connect, ProgressSink& progress)
      : session_(session), connect_(std::move(connect)), progress_(progress) {}

  /// Where what Vantor is asked for is shown.
  [[nodiscard]] ProgressSink& progress() const { return progress_; }

  /// None while no connection is open.
  [[nodiscard]] VantorConnection* connection() const { return connection_.get(); }
  /// Opens a fresh connection in place of the one that there was.
  void openConnection();
  void closeConnection() { connection_.reset(); }
  /// Whether Vantor runs, accepts this program and has this document's company open; when not, the user
  /// has been told and the connection is closed. Throws what the channel throws.
  [[nodiscard]] bool checkCompany();
  /// The company that is open in Vantor; while there is none, asks again for up to four seconds from the
  /// first repeat. None then, or when the user has cancelled. Throws what the channel throws.
  [[nodiscard]] std::optional<QString> awaitCompany();
  /// Vantor at the other end. Without a connection or a channel it answers nothing to every question, and
  /// takes no record.
  [[nodiscard]] RemoteServer& remoteServer() const;

  /// Closes the connection when a command ends, however it ends.
  class [[nodiscard]] Closing {
   public:
    explicit Closing(ConnectionChecks& checks) : checks_(checks) {}
    ~Closing() { checks_.closeConnection(); }
    Closing(const Closing&) = delete;
    Closing& operator=(const Closing&) = delete;

   private:
    ConnectionChecks& checks_;
  };

 private:
  void tellOfMissingChannel();
  bool refuse(const QString& message, const QString& informative);
  [[nodiscard]] bool isOfThisDocument(const std::optional<QString>& company) const;

  Session& session_;
  ConnectToVantor connect_;
  ProgressSink& progress_;
  std::unique_ptr<VantorConnection> connection_;
};

/// What stands after the last "/" of a path; a "/" at the end does not count.
[[nodiscard]] QString lastPathComponent(const QString& path);

}  // namespace pendra
