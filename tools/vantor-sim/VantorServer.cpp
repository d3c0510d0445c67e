#include "VantorServer.h"

#include <unistd.h>

#include <QThread>

#include "channel/KeyedArchiver.h"
#include "channel/PDToVTProtocol.h"

namespace pendra {
namespace {

using FaultKind = Fault::Kind;

ArchiveValue markedNil(const ArchiveValue& value) { return value.isNil() ? IPCNilArg::nilArg() : value; }

QByteArray replyArchive(const QString& selector, const ArchiveValue& answer) {
  return archivedData(ArchiveValue::Array{selector, markedNil(answer)}).value();
}

/// Ends as a crash does: nothing is cleaned up, nothing is said.
[[noreturn]] void die() { _exit(1); }

}  // namespace

void VantorServer::setChannel(IPCMgr& channel, const QString& clientPath) {
  channel_ = &channel;
  client_ = IPCAddress::forPath(clientPath.toLocal8Bit());
}

const ProtocolMethod* VantorServer::methodSignatureForSelector(QStringView selector) const {
  return PDToVTProtocol.methodSignatureForSelector(selector);
}

ArchiveValue VantorServer::perform(const ProtocolMethod& method, const QList<ArchiveValue>& arguments) {
  const bool faulty = isFaulty(method.selector);
  const bool isRecord = method.argumentCount > 0;
  if (faulty && isRecord && fault_.kind == FaultKind::DieBeforeRecord) die();
  ArchiveValue result = answer(method.selector, arguments);
  if (faulty && isRecord && fault_.kind == FaultKind::DieAfterRecord) die();
  if (faulty) misbehave(method.selector, result);
  return result;
}

ArchiveValue VantorServer::answer(QStringView selector, const QList<ArchiveValue>& arguments) {
  if (selector == u"companyFileName") return company_.companyFileName;
  if (selector == u"getEmployeeNamesArray") return company_.employees;
  if (selector == u"getServicesArray") return company_.services;
  if (selector == u"getCustomersArray") return company_.customers;
  if (selector == u"getJobsArray") return company_.jobs;
  if (selector == u"canTalkToPendra") return company_.accepts ? ArchiveValue(true) : ArchiveValue();
  const auto* record = arguments.first().as<QString>();
  if (!record) return {};
  records_.append(*record);
  return true;
}

bool VantorServer::isFaulty(QStringView selector) {
  if (fault_.kind == FaultKind::None || (!fault_.selector.isEmpty() && fault_.selector != selector))
    return false;
  return calls_++ >= fault_.after;
}

void VantorServer::misbehave(QStringView selector, const ArchiveValue& answer) {
  switch (fault_.kind) {
    case FaultKind::Late:
      QThread::msleep(static_cast<unsigned long>(fault_.delay.count()));
      return;
    case FaultKind::NoAnswer:
      throw Unanswered{};
    case FaultKind::WrongName:
      (void)channel_->fragmentAndSendArchive(replyArchive(QStringLiteral("somethingElse"), answer), client_,
                                             true);
      throw Unanswered{};
    case FaultKind::Garbage:
      (void)channel_->fragmentAndSendArchive("this is no archive", client_, true);
      throw Unanswered{};
    case FaultKind::DieInList:
      sendHalf(replyArchive(selector.toString(), answer));
      die();
    default:
      return;
  }
}

/// Sends the first half of the slices; of a short answer, nothing.
void VantorServer::sendHalf(QByteArrayView archive) const {
  const auto datagrams = datagramsOf(archive, true);
  for (std::size_t i = 0; i < datagrams.size() / 2; ++i) {
    const auto header = datagrams[i].header.bytes();
    const QByteArray bytes = QByteArray(header.data(), header.size()) + datagrams[i].payload.toByteArray();
    iovec part{.iov_base = const_cast<char*>(bytes.constData()),
               .iov_len = static_cast<std::size_t>(bytes.size())};
    msghdr message{};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    IPCAddress to = client_;
    to.addressSend(message);
    sendmsg(channel_->socketRef(), &message, MSG_NOSIGNAL);
  }
}

}  // namespace pendra
