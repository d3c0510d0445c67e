#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusVirtualObject>
#include <QHash>
#include <QUrl>
#include <QVariantMap>

#include "InstanceMeeting.h"
#include "platform/BusInterface.h"
#include "platform/Identifiers.h"

namespace pendra {

namespace {

/// The desktop's own interface for starting an application that may be running already.
const QString kInterface = QStringLiteral("org.freedesktop.Application");
/// The two names under which a start's leave to take the front travels.
const QString kToken = QStringLiteral("activation-token");
const QString kStartupId = QStringLiteral("desktop-startup-id");

/// Pendra's object on the bus.
class Application final : public QDBusVirtualObject {
 public:
  explicit Application(std::function<void(const StartRequest&)> received) : received_(std::move(received)) {}

  [[nodiscard]] QString introspect(const QString&) const override {
    QString text = QStringLiteral(
        "<interface name=\"org.freedesktop.Application\">"
        "<method name=\"Activate\"><arg type=\"a{sv}\" direction=\"in\"/></method>"
        "<method name=\"Open\"><arg type=\"as\" direction=\"in\"/><arg type=\"a{sv}\" "
        "direction=\"in\"/></method>"
        "<method name=\"ActivateAction\"><arg type=\"s\" direction=\"in\"/><arg type=\"av\" "
        "direction=\"in\"/><arg type=\"a{sv}\" direction=\"in\"/></method>"
        "</interface>");
    for (const BusInterface* one : offered_) text += one->introspection();
    return text;
  }

  void offer(BusInterface& interface) { offered_.push_back(&interface); }

  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
    if (message.interface() != kInterface) {
      return std::any_of(offered_.begin(), offered_.end(),
                         [&](BusInterface* one) { return one->answer(message, connection); });
    }
    static const QHash<QString, QString> signatures{
        {QStringLiteral("Activate"), QStringLiteral("a{sv}")},
        {QStringLiteral("Open"), QStringLiteral("asa{sv}")},
        {QStringLiteral("ActivateAction"), QStringLiteral("sava{sv}")}};
    const auto signature = signatures.constFind(message.member());
    if (signature == signatures.constEnd() || message.signature() != *signature) return false;
    connection.send(message.createReply());
    const QVariant first = message.arguments().constFirst();
    const auto desktop = qdbus_cast<QVariantMap>(message.arguments().constLast());
    StartRequest request{.activation = desktop.value(kToken, desktop.value(kStartupId)).toString()};
    if (message.member() == u"Open") {
      open(first.toStringList(), request);
    } else {
      if (message.member() == u"ActivateAction") request.action = first.toString();
      received_(request);
    }
    return true;
  }

 private:
  void open(const QStringList& addresses, StartRequest request) {
    for (const QString& address : addresses) {
      const QUrl url(address);
      if (!url.isLocalFile()) continue;
      request.path = url.toLocalFile();
      received_(request);
    }
  }

  std::function<void(const StartRequest&)> received_;
  std::vector<BusInterface*> offered_;
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
    auto application =
        std::make_unique<Application>([this](const StartRequest& request) { receive(request); });
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

  Handing handOver(const StartRequest& request, std::chrono::milliseconds patience) override {
    const QString member = !request.action.isEmpty() ? QStringLiteral("ActivateAction")
                           : !request.path.isEmpty() ? QStringLiteral("Open")
                                                     : QStringLiteral("Activate");
    auto call =
        QDBusMessage::createMethodCall(identifiers::kPendra, identifiers::kBusObject, kInterface, member);
    if (!request.action.isEmpty()) {
      call << request.action << QVariantList();
    } else if (!request.path.isEmpty()) {
      call << QStringList(QUrl::fromLocalFile(request.path).toString(QUrl::FullyEncoded));
    }
    QVariantMap desktop;
    if (!request.activation.isEmpty())
      desktop = {{kToken, request.activation}, {kStartupId, request.activation}};
    call << desktop;
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
