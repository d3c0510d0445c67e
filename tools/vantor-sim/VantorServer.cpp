#include "VantorServer.h"

#include <unistd.h>

#include <QThread>
#include <csignal>

namespace pendra {
namespace {

using FaultKind = Fault::Kind;

/// Ends as a crash does: nothing is cleaned up, nothing is said.
[[noreturn]] void die() { _exit(1); }

}  // namespace

void VantorServer::setChannel(ServingEnd& channel, const QString& clientPath) {
  channel_ = &channel;
  client_ = SocketAddress::forPath(clientPath.toLocal8Bit());
}

ArchiveValue VantorServer::perform(const Operation& operation, const ArchiveValue::Array& arguments) {
  const bool faulty = isFaulty(operation.name);
  if (faulty && fault_.kind == FaultKind::Dying) die();
  if (faulty && fault_.kind == FaultKind::Stopped) ::raise(SIGSTOP);
  ArchiveValue result = answer(operation.name, arguments);
  if (faulty) misbehave(operation.name, result);
  return result;
}

ArchiveValue VantorServer::answer(QStringView operation, const ArchiveValue::Array& arguments) {
  if (operation == operations::kCompanyFileName.name) return company_.companyFileName;
  if (operation == operations::kEmployeeNames.name) return company_.employees;
  if (operation == operations::kServices.name) return company_.services;
  if (operation == operations::kCustomers.name) return company_.customers;
  if (operation == operations::kJobs.name) return company_.jobs;
  if (operation == operations::kCanTalkToPendra.name)
    return company_.accepts ? ArchiveValue(true) : ArchiveValue();
  const auto* record = arguments.first().as<QString>();
  if (!record) return {};
  records_.append(*record);
  return true;
}

bool VantorServer::isFaulty(QStringView operation) {
  return (fault_.operation.isEmpty() || fault_.operation == operation) && fault_.isAt(++calls_);
}

void VantorServer::misbehave(QStringView operation, const ArchiveValue& answer) {
  const QByteArray reply = archivedReply(operation, answer);
  switch (fault_.kind) {
    case FaultKind::Silent:
      throw Unanswered{};
    case FaultKind::Slow:
      QThread::msleep(static_cast<unsigned long>(fault_.delay.count()));
      return;
    case FaultKind::Dripping:
      drip(reply, reply.size());
      throw Unanswered{};
    case FaultKind::DyingAfter:
      die();
    case FaultKind::DyingAmid:
      drip(reply, reply.size() / 2);
      die();
    case FaultKind::WrongName:
      channel_->sendReply(archivedReply(u"somethingElse", answer), client_);
      throw Unanswered{};
    case FaultKind::Twice:
      channel_->sendReply(reply, client_);
      return;
    case FaultKind::Garbage:
      channel_->sendReply("this is no archive", client_);
      throw Unanswered{};
    default:
      return;
  }
}

/// Sends the datagrams that lie within the first so many bytes, each after the fault's delay; of a short
/// answer that is none unless it is the whole.
void VantorServer::drip(QByteArrayView archive, qsizetype most) const {
  qsizetype sent = 0;
  for (const Datagram& datagram : datagramsOf(archive, true)) {
    if ((sent += datagram.payload.size()) > most) return;
    QThread::msleep(static_cast<unsigned long>(fault_.delay.count()));
    if (channel_->send(datagram, client_) != 0) return;
  }
}

}  // namespace pendra
