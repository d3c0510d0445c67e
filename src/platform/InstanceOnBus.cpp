#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusVirtualObject>
#include <QUrl>
#include <QVariantMap>

#include "InstanceMeeting.h"
#include "platform/BusInterface.h"
#include "platform/Identifiers.h"

namespace pendra {

namespace {

/// The desktop's own interface for starting an application that may be running already.
const QString kInterface = QStringLiteral("org.freedesktop.Application");

/// Pendra's object on the bus.
class Application final : public QDBusVirtualObject {
 public:
  explicit Application(std::function<void(const QString&)> received) : received_(std::move(received)) {}

  [[nodiscard]] QString introspect(const QString&) const override {
    return u"<interface name=\"org.freedesktop.Application\">"
           "<method name=\"Activate\"><arg type=\"a{sv}\" direction=\"in\"/></method>"
           "<method name=\"Open\"><arg type=\"as\" direction=\"in\"/><arg type=\"a{sv}\" "
           "direction=\"in\"/></method>"
           "</interface>" +
           (offered_ ? offered_->introspection() : QString());
  }

  void offer(BusInterface& interface) { offered_ = &interface; }

  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
    if (message.interface() != kInterface) return offered_ && offered_->answer(message, connection);
    const bool opens = message.member() == u"Open" && message.signature() == u"asa{sv}";
    const bool activates = message.member() == u"Activate" && message.signature() == u"a{sv}";
    if (!opens && !activates) return false;
    connection.send(message.createReply());
    if (activates) received_(QString());
    if (opens) open(message.arguments().constFirst().toStringList());
    return true;
  }

 private:
  void open(const QStringList& addresses) {
    for (const QString& address : addresses) {
      if (const QUrl url(address); url.isLocalFile()) received_(url.toLocalFile());
    }
  }

  std::function<void(const QString&)> received_;
  BusInterface* offered_ = nullptr;
};

class BusMeeting final : public SingleInstance::Meeting {
 public:
  explicit BusMeeting(const QDBusConnection& bus) : bus_(bus) {}
  ~BusMeeting() override {
    if (!application_) return;
    bus_.unregisterService(identifiers::kPendra);
    bus_.unregisterObject(identifiers::kBusObject);
  }

  Becoming become() override {
    // The object first: once the name is owned, a later start may call it at once.
    auto application = std::make_unique<Application>([this](const QString& path) { receive(path); });
    bus_.registerVirtualObject(identifiers::kBusObject, application.get());
    if (!bus_.registerService(identifiers::kPendra)) {
      bus_.unregisterObject(identifiers::kBusObject);
      return Becoming::Taken;
    }
    application_ = std::move(application);
    return Becoming::Done;
  }

  void offer(BusInterface& interface) override {
    interface.send = [bus = bus_](const QDBusMessage& message) { bus.send(message); };
    if (application_) application_->offer(interface);
  }

  Handing handOver(const QString& path, std::chrono::milliseconds patience) override {
    auto call =
        QDBusMessage::createMethodCall(identifiers::kPendra, identifiers::kBusObject, kInterface,
                                       path.isEmpty() ? QStringLiteral("Activate") : QStringLiteral("Open"));
    if (!path.isEmpty()) call << QStringList(QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded));
    call << QVariantMap();
    call.setAutoStartService(false);
    const QDBusMessage reply = bus_.call(call, QDBus::Block, static_cast<int>(patience.count()));
    if (reply.type() != QDBusMessage::ErrorMessage) return Handing::Done;
    return bus_.interface()->isServiceRegistered(identifiers::kPendra) ? Handing::Unanswered
                                                                       : Handing::NobodyThere;
  }

  [[nodiscard]] QString reason() const override { return bus_.lastError().message(); }

 private:
  QDBusConnection bus_;
  std::unique_ptr<Application> application_;
};

}  // namespace

std::unique_ptr<SingleInstance::Meeting> meetOnBus(const QDBusConnection& bus) {
  return std::make_unique<BusMeeting>(bus);
}

}  // namespace pendra
