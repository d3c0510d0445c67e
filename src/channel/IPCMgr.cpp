#include "channel/IPCMgr.h"

#include <cerrno>

#include "IPCSocket.h"
#include "PosixError.h"
#include "channel/KeyedArchiver.h"
#include "platform/Log.h"
#include "platform/Text.h"

namespace pendra {
namespace {

/// What may be held at once: a message being gathered, and what it and the reply before it are read into.
constexpr qsizetype kMemoryLimit = qsizetype{64} << 20;
/// How deep calls may be served while an answer waits for room.
constexpr int kServingDepth = 8;

[[noreturn]] void raise(const QString& name, QStringView pattern, QStringView value) {
  throw ChannelFailure(name, formatted(pattern, {value}));
}

[[noreturn]] void raiseUnArchiverFailure(const QString& error) {
  logLine(formatted(u"unarchive failure: %@", {error}));
  raise(kVTIPCUnArchiverFailure, u"error: %@", error);
}

[[noreturn]] void raiseSendFailure(const Error& error) {
  raise(kVTIPCSend, u"error occurred trying to send datagram, error: %@", described(error));
}

bool isLackOfBufferSpace(int error) { return error == ENOBUFS || error == EAGAIN || error == EWOULDBLOCK; }

ArchiveValue markedNil(const ArchiveValue& value) { return value.isNil() ? IPCNilArg::nilArg() : value; }
ArchiveValue unmarkedNil(const ArchiveValue& value) { return value.isNilArg() ? ArchiveValue() : value; }

QByteArray archivedMessage(QStringView selector, const QList<ArchiveValue>& values) {
  ArchiveValue::Array message{selector.toString()};
  message.reserve(values.size() + 1);
  for (const ArchiveValue& value : values) message.push_back(markedNil(value));
  const auto archive = archivedData(std::move(message));
  if (archive) return archive.value();
  logLine(formatted(u"archive failure: %@", {archive.error().text}));
  raise(kVTIPCArchiverFailure, u"error: %@", archive.error().text);
}

/// One more for as long as it lives.
class Deeper {
 public:
  explicit Deeper(int& depth) : depth_(++depth) {}
  ~Deeper() { --depth_; }
  Q_DISABLE_COPY_MOVE(Deeper)

 private:
  int& depth_;
};

}  // namespace

IPCMgr::IPCMgr(std::unique_ptr<IPCSocket> socket, Protocol protocol, SupportedClasses supportedClasses)
    : socket_(std::move(socket)), protocol_(protocol), supportedClasses_(std::move(supportedClasses)) {}

IPCMgr::~IPCMgr() = default;

Result<std::unique_ptr<IPCMgr>> IPCMgr::bound(const QString& localPath, Protocol protocol,
                                              SupportedClasses supportedClasses) {
  auto socket = IPCSocket::bound(localPath.toLocal8Bit());
  if (!socket) return socket.error();
  return std::unique_ptr<IPCMgr>(
      new IPCMgr(std::move(socket).value(), protocol, std::move(supportedClasses)));
}

Result<std::unique_ptr<IPCMgr>> IPCMgr::initForPath(const QString& path, Protocol protocol,
                                                    const QString& localPath,
                                                    SupportedClasses supportedClasses) {
  auto manager = bound(localPath, protocol, std::move(supportedClasses));
  if (manager) manager.value()->remoteAddress_ = IPCAddress::forPath(path.toLocal8Bit());
  return manager;
}

Result<std::unique_ptr<IPCMgr>> IPCMgr::initVendedProxy(VendedObject& vendedProxy, const QString& localPath,
                                                        Protocol protocol,
                                                        SupportedClasses supportedClasses) {
  auto manager = bound(localPath, protocol, std::move(supportedClasses));
  if (manager) manager.value()->vendedProxy_ = &vendedProxy;
  return manager;
}

int IPCMgr::socketRef() const { return socket_ ? socket_->descriptor() : -1; }

void IPCMgr::invalidate() {
  logLine(QStringLiteral("**IPCMgr invalidate"));
  socket_.reset();
}

const ProtocolMethod* IPCMgr::methodSignatureForSelector(QStringView selector) const {
  return protocol_.methodSignatureForSelector(selector);
}

// Sending

int IPCMgr::sendWhenWritable(const Datagram& datagram, const IPCAddress& toAddress) {
  while (socket_) {
    const int error = socket_->send(datagram, toAddress, limits_.send);
    if (!isLackOfBufferSpace(error)) return error;
    // Kept: there is no limit on these retries. The peer may be waiting for room here in its turn.
    if (servingDepth_ < kServingDepth) serveInput();
  }
  return EBADF;
}

Result<void> IPCMgr::fragmentAndSendArchive(QByteArrayView archive, const IPCAddress& toAddress,
                                            bool isReply) {
  for (const Datagram& datagram : datagramsOf(archive, isReply))
    if (const int error = sendWhenWritable(datagram, toAddress)) return posixError(error);
  return {};
}

// Calling

const KeyedUnarchiver* IPCMgr::replyToInvocation(QStringView selector, const QList<ArchiveValue>& arguments) {
  const ProtocolMethod* method = methodSignatureForSelector(selector);
  Q_ASSERT(method && method->argumentCount == arguments.size());
  logLine(formatted(u"ipc -> %@", {selector}));
  const QByteArray call = archivedMessage(selector, arguments);
  retObj_.reset();
  if (const auto sent = fragmentAndSendArchive(call, remoteAddress_, false); !sent)
    raiseSendFailure(sent.error());
  if (method->oneWay) {
    logLine(formatted(u"ipc oneway %@", {selector}));
    return nullptr;
  }
  awaitReply(selector);
  // Kept: a reply that is held at the deadline is taken whatever its name.
  if (!retObj_ || retObj_->isNil(1))
    raise(kVTIPCTimeout, u"timeout waiting for return result for %@", selector);
  logLine(formatted(u"ipc <- %@", {selector}));
  return &*retObj_;
}

ArchiveValue IPCMgr::forwardInvocation(QStringView selector, const QList<ArchiveValue>& arguments) {
  const KeyedUnarchiver* reply = replyToInvocation(selector, arguments);
  const ProtocolMethod* method = methodSignatureForSelector(selector);
  if (!reply || method->returns == ProtocolMethod::Returns::Void) return {};
  return unmarkedNil(reply->element(1));
}

void IPCMgr::awaitReply(QStringView selector) {
  const auto answered = [&] { return retObj_ && retObj_->isText(0, selector); };
  const Deadline deadline = std::chrono::steady_clock::now() + limits_.reply;
  // Mostly one datagram is the answer, and for one it takes one system call to wait and to receive.
  takeInput(limits_.reply);
  while (!answered() && awaitInput(deadline)) takeInput();
}

// Receiving

/// False when the deadline has come. In the middle of a message the next datagram is mostly there already, so
/// it is looked for at once.
bool IPCMgr::awaitInput(Deadline deadline) {
  if (!fragmentBuffer().isNull() && std::chrono::steady_clock::now() < deadline && takeInput()) return true;
  return socket_ && socket_->wait(deadline);
}

/// Takes one datagram if one is there, or comes within the limit.
bool IPCMgr::takeInput(std::chrono::milliseconds limit) {
  if (!socket_) return false;
  const auto received = socket_->receive(limit);
  if (!received) raiseUnArchiverFailure(received.error().text);
  const auto& datagram = received.value();
  if (!datagram) return false;
  receivedData(datagram->payload, datagram->header.sequence, datagram->header.isReply, datagram->from,
               datagram->header.lastDatagram);
  return true;
}

void IPCMgr::discardInput() {
  while (socket_) {
    const auto received = socket_->receive({});
    if (!received || !received.value()) break;
  }
  gatherer_ = {};
}

void IPCMgr::serveInput() {
  const Deeper deeper(servingDepth_);
  while (takeInput() && !fragmentBuffer().isNull()) {
  }
}

void IPCMgr::receivedData(QByteArrayView data, quint32 sequence, bool isReply, const IPCAddress& fromAddress,
                          bool lastDatagram) {
  auto message = gatherer_.add(data, sequence, lastDatagram);
  if (!message) raiseUnArchiverFailure(message.error().text);
  if (message.value()) handleMessage(*std::move(message.value()), isReply, fromAddress);
}

void IPCMgr::handleMessage(QByteArray archive, bool isReply, const IPCAddress& fromAddress) {
  const qsizetype room =
      kMemoryLimit - archive.size() - fragmentBuffer().capacity() - (retObj_ ? retObj_->memory() : 0);
  auto read = KeyedUnarchiver::initForReadingFromData(std::move(archive), supportedClasses_,
                                                      std::min(room, kUnarchiverMemory));
  if (!read) raiseUnArchiverFailure(read.error().text);
  KeyedUnarchiver& message = read.value();
  if (!message.isArray()) raiseUnArchiverFailure(QStringLiteral("the message is not an array"));
  if (!isReply) return performCall(*message.value().as<ArchiveValue::Array>(), fromAddress);
  retObj_ = std::move(message);
}

void IPCMgr::performCall(const ArchiveValue::Array& call, const IPCAddress& fromAddress) {
  const auto* selector = call.isEmpty() ? nullptr : call.front().as<QString>();
  if (!selector) raiseUnArchiverFailure(QStringLiteral("the call names no selector"));
  logLine(formatted(u"ipc <--  %@", {*selector}));
  const ProtocolMethod* method = vendedProxy_ ? vendedProxy_->methodSignatureForSelector(*selector) : nullptr;
  if (!method || method->argumentCount != call.size() - 1)
    throw ChannelFailure(kVTIPCNoMethod, QStringLiteral("no matching method for call"));
  QList<ArchiveValue> arguments;
  for (const ArchiveValue& argument : call.sliced(1)) arguments.push_back(unmarkedNil(argument));
  const ArchiveValue result = vendedProxy_->perform(*method, arguments);
  if (method->oneWay) {
    logLine(formatted(u"ipc oneway %@", {*selector}));
    return;
  }
  const bool isVoid = method->returns == ProtocolMethod::Returns::Void;
  const QByteArray reply = archivedMessage(*selector, {isVoid ? ArchiveValue() : result});
  logLine(formatted(u"ipc -> %@", {*selector}));
  const auto sent = fragmentAndSendArchive(reply, fromAddress, true);
  if (!sent) raiseSendFailure(sent.error());
}

}  // namespace pendra
