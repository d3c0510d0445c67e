#include "ui_core/RunCommand.h"

#include "document/Session.h"
#include "link/VantorFailure.h"
#include "platform/Log.h"
#include "platform/Text.h"
#include "platform/Translation.h"

namespace pendra {

void runCommand(Session& session, const QString& name, const std::function<void()>& command) {
  const QString key = u"command " + name;
  if (session.ports().modals.asksVantor()) {
    return session.notices().post(
        {.key = key,
         .text = formatted(
             tr("“%@” was not done, because Vantor is being asked. Wait for the answer, or cancel."), {name}),
         .actions = {}});
  }
  try {
    command();
    session.notices().withdraw(key);
  } catch (const VantorFailure& failure) {
    logLine(formatted(u"%@: %@", {failure.name(), failure.reason()}));
    session.notices().post(
        {.key = key,
         .text = formatted(tr("“%@” was not finished: %@."), {name, failure.plainReason()}),
         .actions = {},
         .ofDocument = true});
  }
}

void runFromOutside(Session& session, const QString& busyWith, const QString& name,
                    const std::function<void()>& command) {
  if (busyWith.isEmpty()) return runCommand(session, name, command);
  session.notices().post({.key = u"command " + name,
                          .text = formatted(tr("“%@” was not done, because %@."), {name, busyWith}),
                          .actions = {}});
}

}  // namespace pendra
