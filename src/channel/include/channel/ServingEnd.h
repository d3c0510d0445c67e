#pragma once

#include <functional>
#include <memory>

#include "channel/ArchiveValue.h"
#include "channel/ChannelFailure.h"
#include "channel/Datagram.h"
#include "channel/Operations.h"
#include "channel/SocketAddress.h"
#include "platform/Result.h"

namespace pendra {

class DatagramSocket;
class Inbox;
struct Message;

/// The end of a channel that performs calls.
class ServingEnd {
 public:
  /// Performs a call with as many arguments as its operation has, and answers it. What it throws passes
  /// through `serveInput`, and the call stays unanswered.
  using Perform = std::function<ArchiveValue(const Operation&, const ArchiveValue::Array&)>;

  /// The error is of the POSIX domain.
  static Result<std::unique_ptr<ServingEnd>> bound(const QString& localPath, Perform perform);
  ~ServingEnd();
  Q_DISABLE_COPY_MOVE(ServingEnd)

  /// Takes the next message as far as it has arrived, and performs and answers it when it is a call. Throws
  /// `ChannelFailure`, after which it goes on. Waits without limit where the caller has no room for the
  /// answer.
  void serveInput();
  /// The descriptor that an event loop watches in order to call `serveInput`.
  [[nodiscard]] int descriptor() const;

  /// Sends one datagram; 0 or an errno value.
  [[nodiscard]] int send(const Datagram& datagram, const SocketAddress& to);
  /// Sends an archive in as many datagrams as it takes.
  void sendReply(QByteArrayView archive, const SocketAddress& to);

 private:
  ServingEnd(std::unique_ptr<DatagramSocket> socket, Perform perform);
  void answer(const Message& call);

  std::unique_ptr<DatagramSocket> socket_;
  std::unique_ptr<Inbox> inbox_;
  Perform perform_;
};

/// The archive of a reply. Throws "VTIPCArchiverFailure".
QByteArray archivedReply(QStringView operation, const ArchiveValue& answer);

}  // namespace pendra
