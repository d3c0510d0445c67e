#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <map>

#include "platform/DesktopNotes.h"

namespace pendra {

/// The notes that stand with the notification service, by the numbers that it gave them.
class NoteService final : public QObject {
  Q_OBJECT

 public:
  NoteService(const QDBusConnection& session, SessionNotes& owner);

  void show(const DesktopNote& note);
  void withdraw(const QString& key);

 private:
  struct Standing {
    quint32 number = 0;  ///< 0 until the service has said it
    int version = 0;     ///< how often it was shown
  };

  Q_SLOT void invoked(quint32 number, const QString& action);
  Q_SLOT void closed(quint32 number, quint32 reason);

  void told(const QString& key, int version, quint32 number);
  void close(quint32 number);
  [[nodiscard]] QString keyOf(quint32 number) const;

  QDBusConnection session_;
  SessionNotes& owner_;
  std::map<QString, Standing> standing_;
  int shown_ = 0;
};

}  // namespace pendra
