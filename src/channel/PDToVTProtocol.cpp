#include "channel/PDToVTProtocol.h"

namespace pendra {
namespace {

constexpr std::array kMethods{
    ProtocolMethod{.selector = u"companyFileName"},
    ProtocolMethod{.selector = u"getEmployeeNamesArray"},
    ProtocolMethod{.selector = u"getServicesArray"},
    ProtocolMethod{.selector = u"getCustomersArray"},
    ProtocolMethod{.selector = u"getJobsArray"},
    ProtocolMethod{.selector = u"canTalkToPendra"},
    ProtocolMethod{.selector = u"submitTime:", .argumentCount = 1},
};

[[noreturn]] void raiseWrongAnswer() {
  throw ChannelFailure(kVTIPCUnArchiverFailure,
                       QStringLiteral("error: the answer is of another kind than promised"));
}

}  // namespace

constinit const Protocol PDToVTProtocol{kMethods};

const ArchiveClass kNameAndRecNumberClass{
    .name = QStringLiteral("NameAndRecNumber"),
    .keys = {QStringLiteral("name"), QStringLiteral("vtObjectID"), QStringLiteral("parentObjectID")}};

SupportedClasses supportedClassesOfPDToVT() {
  return {.strings = true, .numbers = true, .records = {&kNameAndRecNumberClass}};
}

namespace answers {

std::optional<ArchiveValue::Array> array(const ArchiveValue& answer) {
  if (answer.isNil()) return {};
  const auto* elements = answer.as<ArchiveValue::Array>();
  if (!elements) raiseWrongAnswer();
  return *elements;
}

std::optional<QString> text(const ArchiveValue& answer) {
  if (answer.isNil() || answer.isNilArg()) return {};
  const auto* text = answer.as<QString>();
  if (!text) raiseWrongAnswer();
  return *text;
}

bool takeRecords(const KeyedUnarchiver& reply, RecordTaker& taker) {
  if (reply.isNil(1) || reply.isNilArg(1)) return false;
  if (!reply.takeRecords(1, kNameAndRecNumberClass, taker)) raiseWrongAnswer();
  return true;
}

}  // namespace answers
}  // namespace pendra
