#include "ui_core/UnaskedEnd.h"

#include <QLocale>

#include "document/RunningTimers.h"
#include "document/Session.h"
#include "model/ActivityTitle.h"
#include "platform/Preferences.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "ui_core/RunningTimers.h"

namespace pendra {

namespace {

QString sentence(const Session& session, const QStringList& stopped, bool losesTyping) {
  const Ports& ports = session.ports();
  const QString when =
      QLocale().toString(ports.calendar.local(ports.clock.now()), QStringLiteral("d MMM yyyy H:mm"));
  QString text = stopped.isEmpty() ? formatted(tr("Pendra had to end on %@."), {when})
                                   : formatted(tr("Pendra had to end on %@ and stopped %@."),
                                               {when, stopped.join(QStringLiteral(", "))});
  if (losesTyping) text += u' ' + tr("What was being typed was not stored.");
  return text;
}

}  // namespace

void stopUnasked(Session& session, bool losesTyping) {
  if (!session.document()) return;
  QStringList stopped;
  for (const RunningTimer& timer : runningTimers(*session.context())) {
    stopped << formatted(u"“%@”", {activityTitle(*timer.activity)});
  }
  stopAllActivities(session);
  if (stopped.isEmpty() && !losesTyping) return;
  session.ports().defaults.setText(preferences::kUnaskedEnd, sentence(session, stopped, losesTyping));
}

void tellOfUnaskedEnd(Session& session) {
  UserDefaults& defaults = session.ports().defaults;
  const QString text = defaults.text(preferences::kUnaskedEnd).value_or(QString());
  if (text.isEmpty()) return;
  defaults.setText(preferences::kUnaskedEnd, {});
  session.notices().post({.key = QStringLiteral("unasked end"), .text = text, .actions = {}});
}

}  // namespace pendra
