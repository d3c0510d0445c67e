#pragma once

#include "link/RemoteServer.h"
#include "platform/Places.h"
#include "platform/Workspace.h"

namespace pendra {

/// One connection to Vantor. It can exist without a channel, when that could not be made; every question
/// is then answered with nothing.
class VantorConnection {
 public:
  /// Null only when the user's caches folder cannot be had. The workspace must outlive the server.
  static std::unique_ptr<VantorConnection> make(const Places& places, const Workspace& workspace,
                                                const ConnectToVantor& connect);

  /// Whether an application with Vantor's identifier runs.
  [[nodiscard]] bool isVantorRunning() const;
  /// Null without a channel.
  [[nodiscard]] RemoteServer* remoteServer() const { return client_.get(); }
  /// Why there is no channel, for the user; blank when there is one.
  [[nodiscard]] const QString& whyNoChannel() const { return whyNoChannel_; }

  [[nodiscard]] std::optional<QString> companyFileName() const;
  [[nodiscard]] QStringList employeeNames() const;

 private:
  VantorConnection(const Workspace& workspace, Result<std::unique_ptr<RemoteServer>> client)
      : workspace_(workspace) {
    if (client) {
      client_ = std::move(client).value();
    } else {
      whyNoChannel_ = client.error().text;
    }
  }

  const Workspace& workspace_;
  std::unique_ptr<RemoteServer> client_;
  QString whyNoChannel_;
};

}  // namespace pendra
