#include "platform/DesktopWorkspace.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusPendingCall>
#include <QDBusPendingReply>
#include <QFile>
#include <QFileInfo>
#include <QUrl>

#include "NameOwnerWatch.h"

namespace pendra {

namespace {

QString folderAddress(const QString& path) {
  return QUrl::fromLocalFile(QFileInfo(path).absolutePath()).toString(QUrl::FullyEncoded);
}

/// The value of "Name" in the group "Desktop Entry"; empty when the file has none or is missing.
QString nameInDesktopEntry(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) return {};
  bool inEntry = false;
  while (!file.atEnd()) {
    const QString line = QString::fromUtf8(file.readLine()).trimmed();
    if (line.startsWith(u'[')) inEntry = line == u"[Desktop Entry]";
    const qsizetype sign = line.indexOf(u'=');
    if (inEntry && sign > 0 && line.first(sign).trimmed() == u"Name") return line.mid(sign + 1).trimmed();
  }
  return {};
}

}  // namespace

DesktopWorkspace::DesktopWorkspace(const QDBusConnection& bus, QStringList applicationFolders, Opener opener)
    : bus_(std::make_unique<QDBusConnection>(bus)),
      applicationFolders_(std::move(applicationFolders)),
      opener_(std::move(opener)) {}

DesktopWorkspace::~DesktopWorkspace() = default;

bool DesktopWorkspace::isRunning(const QString& identifier) const {
  return bus_->isConnected() && bus_->interface()->isServiceRegistered(identifier).value();
}

void DesktopWorkspace::reveal(const QString& path) {
  if (!bus_->isConnected()) {
    openUrl(folderAddress(path));
    return;
  }
  const QString service = QStringLiteral("org.freedesktop.FileManager1");
  auto call = QDBusMessage::createMethodCall(service, QStringLiteral("/org/freedesktop/FileManager1"),
                                             service, QStringLiteral("ShowItems"));
  call << QStringList(QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded)) << QString();
  revealing_ = std::make_unique<QDBusPendingCallWatcher>(bus_->asyncCall(call));
  QObject::connect(revealing_.get(), &QDBusPendingCallWatcher::finished, revealing_.get(),
                   [this, path](QDBusPendingCallWatcher* watcher) {
                     if (watcher->isError()) openUrl(folderAddress(path));
                   });
}

Workspace::Subscription DesktopWorkspace::observeLaunches(std::function<void(const QString&)> launched) {
  return std::make_shared<NameOwnerWatch>(
      *bus_, [this, launched](const QString& identifier) { launched(nameForPeople(identifier)); });
}

QString DesktopWorkspace::nameForPeople(const QString& identifier) const {
  for (const QString& folder : applicationFolders_) {
    QString name = nameInDesktopEntry(folder + u'/' + identifier + u".desktop");
    if (!name.isEmpty()) return name;
  }
  return identifier.mid(identifier.lastIndexOf(u'.') + 1);
}

}  // namespace pendra
