#include "ui_core/RunCommand.h"

#include "document/Session.h"
#include "link/PlainReason.h"
#include "platform/Log.h"
#include "platform/Text.h"

namespace pendra {

void runCommand(Session& session, const QString& name, const std::function<void()>& command) {
  const QString key = u"command " + name;
  try {
    command();
    session.notices().withdraw(key);
  } catch (const ChannelFailure& failure) {
    logLine(formatted(u"%@: %@", {failure.name(), failure.reason()}));
    session.notices().post({.key = key,
                            .text = formatted(u"“%@” was not finished: %@.", {name, plainReason(failure)}),
                            .actions = {}});
  }
}

}  // namespace pendra
