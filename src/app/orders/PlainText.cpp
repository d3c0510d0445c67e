#include "PlainText.h"

#include <QDateTime>
#include <cmath>

#include "model/DurationText.h"
#include "platform/Text.h"
#include "platform/Translation.h"

namespace pendra {

namespace {

QString inOneLine(QString text) {
  for (QChar& one : text) {
    if (!one.isPrint() && !one.isSurrogate()) one = u' ';
  }
  return text.simplified();
}

QString length(const QVariantMap& of, const char* key = "seconds") {
  return durationText(std::trunc(of[QString::fromLatin1(key)].toDouble()));
}

QString title(const QVariantMap& of) {
  QStringList names;
  for (const char* key : {"customer", "job", "service"}) {
    names << inOneLine(of[QString::fromLatin1(key)].toString());
  }
  names.removeAll(QString());
  return names.join(u" - ");
}

QString titleAndNotes(const QVariantMap& of) {
  QStringList texts{title(of), inOneLine(of[QStringLiteral("notes")].toString())};
  texts.removeAll(QString());
  return texts.join(u"  ");
}

/// The date and time of day as they were there.
QString moment(const QVariant& instant) {
  if (!instant.isValid()) return QStringLiteral("                ");
  return instant.toString().left(QStringView(u"2026-11-24T10:00").size()).replace(u'T', u' ');
}

QString statusText(const QVariantMap& status) {
  QString text;
  for (const QVariant& one : status[QStringLiteral("running")].toList()) {
    const QVariantMap running = one.toMap();
    text += formatted(tr("%@  since %@  %@\n"),
                      {length(running), moment(running[QStringLiteral("since")]), titleAndNotes(running)});
  }
  if (text.isEmpty()) text = tr("Nothing runs.\n");
  text += formatted(tr("Today %@, this week %@.\n"),
                    {length(status, "todaySeconds"), length(status, "weekSeconds")});
  if (!status.contains(QStringLiteral("unsent"))) return text;  // nothing is sent from the document
  const int unsent = status[QStringLiteral("unsent")].toInt();
  return text + counted(unsent, "Not sent: %@ in 1 entry.\n", "Not sent: %@ in %Ln entries.\n",
                        {length(status, "unsentSeconds")});
}

QString logText(const QVariantList& entries) {
  QString text;
  for (const QVariant& one : entries) {
    const QVariantMap entry = one.toMap();
    const QString state = entry[QStringLiteral("running")].toBool() ? tr("  (running)")
                          : entry[QStringLiteral("sent")].isValid() ? tr("  (sent)")
                                                                    : QString();
    text += formatted(u"%@  %@  %@%@\n",
                      {moment(entry[QStringLiteral("start")]), length(entry), titleAndNotes(entry), state});
  }
  return text;
}

QString groupsText(const QVariantList& groups, int depth) {
  QString text;
  for (const QVariant& one : groups) {
    const QVariantMap group = one.toMap();
    const QString name = inOneLine(group[QStringLiteral("name")].toString());
    text += formatted(u"%@  %@%@\n",
                      {length(group), QString(2 * depth, u' '), name.isEmpty() ? tr("(none)") : name});
    text += groupsText(group[QStringLiteral("groups")].toList(), depth + 1);
  }
  return text;
}

QString stoppedText(const QVariantList& activities) {
  QString text;
  for (const QVariant& one : activities) {
    text += formatted(tr("Stopped: %@  %@\n"), {length(one.toMap()), titleAndNotes(one.toMap())});
  }
  return text;
}

/// What should be known of it, a line each.
QString remarksText(const QVariantMap& of) {
  QString text;
  for (const QString& one : of[QStringLiteral("stopped")].toStringList()) {
    text += formatted(tr("  Stopped: %@\n"), {inOneLine(one)});
  }
  for (const QString& one : of[QStringLiteral("remarks")].toStringList()) {
    text += formatted(u"  %@\n", {inOneLine(one)});
  }
  return text;
}

QString startedText(const QVariantMap& answer) {
  const QVariantMap started = answer[QStringLiteral("started")].toMap();
  return formatted(tr("Started: %@\n"), {titleAndNotes(started)}) + remarksText(started);
}

QString addedText(const QVariantMap& answer) {
  if (!answer.contains(QStringLiteral("added"))) return startedText(answer);
  const QVariantMap entry = answer[QStringLiteral("added")].toMap();
  return formatted(tr("Added: %@  %@  %@\n"),
                   {moment(entry[QStringLiteral("start")]), length(entry), titleAndNotes(entry)}) +
         remarksText(entry);
}

QString writtenText(const QVariantMap& written) {
  const int entries = written[QStringLiteral("entries")].toInt();
  return counted(entries, "Written: %@, 1 entry\n", "Written: %@, %Ln entries\n",
                 {inOneLine(written[QStringLiteral("written")].toString())});
}

QString sentText(const QVariantMap& outcome) {
  const int sent = outcome[QStringLiteral("sent")].toInt();
  return counted(sent, "Sent: 1 entry\n", "Sent: %Ln entries\n");
}

}  // namespace

QString plainText(Verb verb, const QVariant& answer) {
  const QVariantMap map = answer.toMap();
  switch (verb) {
    case Verb::Status:
      return statusText(map);
    case Verb::Log:
      return logText(answer.toList());
    case Verb::Report:
      return groupsText(map[QStringLiteral("groups")].toList(), 0) +
             formatted(tr("%@  in all\n"), {length(map)});
    case Verb::Start:
      return startedText(map);
    case Verb::Add:
      return addedText(map);
    case Verb::Stop:
      return stoppedText(map[QStringLiteral("stopped")].toList());
    case Verb::Send:
      return sentText(map);
    case Verb::Export:
    case Verb::BackUp:
      break;
  }
  return writtenText(map);
}

}  // namespace pendra
