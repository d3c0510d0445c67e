#pragma once
// A call is a message, an answer is another message, and nothing ties the two but the selector's name. What
// arrives is looked at only while a call waits (calling side) or when `serveInput` is called (serving side).

#include <chrono>
#include <memory>
#include <optional>

#include "channel/ArchiveValue.h"
#include "channel/ChannelFailure.h"
#include "channel/Datagram.h"
#include "channel/IPCAddress.h"
#include "channel/KeyedUnarchiver.h"
#include "channel/Protocol.h"
#include "channel/SupportedClasses.h"
#include "channel/VendedObject.h"
#include "platform/Result.h"

namespace pendra {

class IPCSocket;

/// How long the channel waits. Others than these are for tests only.
struct IPCTimeLimits {
  std::chrono::milliseconds reply{5000};  ///< for a reply, once the call is sent
  std::chrono::milliseconds send{5000};   ///< for room for one datagram, before asking again
};

/// One end of a channel of calls between two processes of the same user. Either it calls, or it vends an
/// object that performs calls. A call blocks its thread and serves nothing but the channel meanwhile.
/// Failures are thrown as `ChannelFailure`, out of `forwardInvocation` and `serveInput`; after one the
/// endpoint goes on, but a late answer may still come, so a caller that cares makes a new endpoint.
class IPCMgr {
 public:
  /// The calling side: whom to call, the interface there, and the path of this end. The error of both
  /// initialisers is of the POSIX domain, or blank when the system gives no socket.
  static Result<std::unique_ptr<IPCMgr>> initForPath(const QString& path, Protocol protocol,
                                                     const QString& localPath,
                                                     SupportedClasses supportedClasses);
  /// The serving side. The object must outlive the endpoint.
  static Result<std::unique_ptr<IPCMgr>> initVendedProxy(VendedObject& vendedProxy, const QString& localPath,
                                                         Protocol protocol,
                                                         SupportedClasses supportedClasses);
  ~IPCMgr();
  Q_DISABLE_COPY_MOVE(IPCMgr)

  /// Calls the peer and waits for its answer; nil for a nil or void one. A nil argument is passed as a nil
  /// value.
  ArchiveValue forwardInvocation(QStringView selector, const QList<ArchiveValue>& arguments);
  /// The same for whoever builds the answer, element 1, from the reply; null for a one-way call. The reply is
  /// good until the next call.
  const KeyedUnarchiver* replyToInvocation(QStringView selector, const QList<ArchiveValue>& arguments);
  [[nodiscard]] const ProtocolMethod* methodSignatureForSelector(QStringView selector) const;

  /// Forgets what has arrived and was not looked at: late answers to calls that were given up, here or at an
  /// endpoint that had this path before.
  void discardInput();
  /// Takes the next message as far as it has arrived, and performs and answers it when it is a call.
  void serveInput();
  /// Sends one archive in as many datagrams as it takes, however long the receiver lets it wait for room.
  /// What was sent before a failure stays sent.
  Result<void> fragmentAndSendArchive(QByteArrayView archive, const IPCAddress& toAddress, bool isReply);
  /// Takes one datagram, as if it had arrived.
  void receivedData(QByteArrayView data, quint32 sequence, bool isReply, const IPCAddress& fromAddress,
                    bool lastDatagram);

  [[nodiscard]] bool isValid() const { return socket_ != nullptr; }
  /// Closes the endpoint. Its socket file stays until the next bind.
  void invalidate();

  /// The descriptor of the socket, -1 once it is closed.
  [[nodiscard]] int socketRef() const;
  /// The descriptor that an event loop of the serving side watches in order to call `serveInput`.
  [[nodiscard]] int runLoopSource() const { return socketRef(); }
  [[nodiscard]] const QByteArray& fragmentBuffer() const { return gatherer_.fragmentBuffer(); }
  void setTimeLimits(const IPCTimeLimits& limits) { limits_ = limits; }

 private:
  using Deadline = std::chrono::steady_clock::time_point;

  IPCMgr(std::unique_ptr<IPCSocket> socket, Protocol protocol, SupportedClasses supportedClasses);
  static Result<std::unique_ptr<IPCMgr>> bound(const QString& localPath, Protocol protocol,
                                               SupportedClasses supportedClasses);

  bool awaitInput(Deadline deadline);
  bool takeInput(std::chrono::milliseconds limit = {});
  void awaitReply(QStringView selector);
  void handleMessage(QByteArray archive, bool isReply, const IPCAddress& fromAddress);
  void performCall(const ArchiveValue::Array& call, const IPCAddress& fromAddress);
  [[nodiscard]] int sendWhenWritable(const Datagram& datagram, const IPCAddress& toAddress);

  std::unique_ptr<IPCSocket> socket_;
  Protocol protocol_;
  SupportedClasses supportedClasses_;
  VendedObject* vendedProxy_ = nullptr;
  IPCAddress remoteAddress_;
  IPCTimeLimits limits_;
  int servingDepth_ = 0;
  DatagramGatherer gatherer_;
  std::optional<KeyedUnarchiver> retObj_;
};

}  // namespace pendra
