#include "Fault.h"

#include <QRegularExpression>
#include <QStringList>
#include <algorithm>
#include <array>

namespace pendra {
namespace {

struct Named {
  QStringView name;
  Fault::Kind kind;
  int delay;  ///< milliseconds, unless others are given
};

constexpr std::array kNamed{
    Named{u"stopped", Fault::Kind::Stopped, 0},      Named{u"silent", Fault::Kind::Silent, 0},
    Named{u"slow", Fault::Kind::Slow, 3000},         Named{u"dripping", Fault::Kind::Dripping, 500},
    Named{u"dying", Fault::Kind::Dying, 0},          Named{u"dying-after", Fault::Kind::DyingAfter, 0},
    Named{u"dying-amid", Fault::Kind::DyingAmid, 0}, Named{u"wrong-name", Fault::Kind::WrongName, 0},
    Named{u"twice", Fault::Kind::Twice, 0},          Named{u"garbage", Fault::Kind::Garbage, 0}};

}  // namespace

std::optional<Fault> Fault::named(const QString& text) {
  static const QRegularExpression form(QStringLiteral("^([a-z-]+)(?:=(\\d{1,7}))?(?::(\\d{1,7})(\\+)?)?$"));
  const auto match = form.match(text);
  const auto* const found = std::find_if(kNamed.begin(), kNamed.end(),
                                         [&](const Named& one) { return one.name == match.captured(1); });
  if (!match.hasMatch() || found == kNamed.end()) return {};
  Fault fault;
  fault.kind = found->kind;
  fault.delay = std::chrono::milliseconds(match.hasCaptured(2) ? match.captured(2).toInt() : found->delay);
  if (match.hasCaptured(3)) fault.call = match.captured(3).toInt();
  fault.everyLaterOne = match.hasCaptured(4);
  return fault;
}

QString Fault::help() {
  return QStringLiteral(
      "Misbehave at the N-th call (the first by default; with \"+\" at every later one, too). KIND is\n"
      "stopped: stands still as a stopped process, with the call in its hands;\n"
      "silent: performs it and does not answer;\n"
      "slow=MS: answers after so many milliseconds (3000);\n"
      "dripping=MS: answers datagram by datagram, each after so many milliseconds (500);\n"
      "dying: ends before it performs the call;\n"
      "dying-after: ends when it has performed the call, before it answers;\n"
      "dying-amid: ends in the middle of the answer's datagrams;\n"
      "wrong-name: answers under another operation's name;\n"
      "twice: answers twice;\n"
      "garbage: answers with bytes that are no archive.");
}

}  // namespace pendra
