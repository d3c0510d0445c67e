#pragma once
// A call is a message, an answer is another message, and nothing ties the two but the operation's name.

#include <QByteArray>

#include "DatagramSocket.h"
#include "channel/ArchiveValue.h"

namespace pendra {

/// What a socket brought, joined and read.
struct Message {
  QString operation;           ///< the name that it begins with
  ArchiveValue::Array values;  ///< the arguments of a call, the answer of a reply; nil where they are nil
  bool isReply = false;
  SocketAddress from;
  pid_t process = 0;
};

/// The archive of a message. Throws "VTIPCArchiverFailure".
QByteArray archivedMessage(QStringView operation, const ArchiveValue::Array& values);

/// Reads a whole message; throws "VTIPCUnArchiverFailure".
Message readMessage(const QByteArray& archive);

[[noreturn]] void raiseSendFailure(int error);

/// Joins and reads what arrives at a socket.
class Inbox {
 public:
  /// The socket must outlive it.
  explicit Inbox(DatagramSocket& socket) : socket_(socket) {}

  /// What one datagram made: nothing when none was there, a message when it was the last one of it.
  struct Taken {
    bool any = false;
    std::optional<Message> message;
  };
  /// Takes the next datagram that is there. Throws "VTIPCUnArchiverFailure".
  Taken take();
  /// Forgets the beginning of a message whose end has not come.
  void forgetBeginning() { gatherer_ = {}; }

 private:
  DatagramSocket& socket_;
  DatagramGatherer gatherer_;
};

}  // namespace pendra
