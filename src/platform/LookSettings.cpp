#include "LookSettings.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QVariantMap>
#include <cmath>

#include "Portal.h"

namespace pendra {

namespace {

const QString kSettings = QStringLiteral("org.freedesktop.portal.Settings");
const QString kAppearance = QStringLiteral("org.freedesktop.appearance");
const QString kInterface = QStringLiteral("org.gnome.desktop.interface");
/// Where desktops say that contrast is high whose portal knows of none in the appearance.
const QString kAccess = QStringLiteral("org.gnome.desktop.a11y.interface");
/// As long as nobody notices that a window came later.
constexpr int kPatience = 150;
/// Between letters that nobody can read and one word a window; desktops offer no more either.
constexpr double kSmallestText = 0.5;
constexpr double kLargestText = 3;

QDBusMessage question() {
  auto call = QDBusMessage::createMethodCall(kPortal, kPortalObject, kSettings, QStringLiteral("ReadAll"));
  call << QStringList{kAppearance, kInterface, kAccess};
  return call;
}

/// Asking it a question would start one that does not run.
bool portalRuns(const QDBusConnection& session) {
  const QString bus = QStringLiteral("org.freedesktop.DBus");
  auto call = QDBusMessage::createMethodCall(bus, QStringLiteral("/org/freedesktop/DBus"), bus,
                                             QStringLiteral("NameHasOwner"));
  call << kPortal;
  return session.call(call, QDBus::Block, kPatience).arguments().value(0).toBool();
}

/// Red, green and blue from 0 to 1; anything else says that there is none.
std::optional<quint32> colourOf(const QVariant& value) {
  if (!value.canConvert<QDBusArgument>()) return std::nullopt;
  const auto argument = value.value<QDBusArgument>();
  if (argument.currentSignature() != u"(ddd)") return std::nullopt;
  double parts[3] = {};
  argument.beginStructure();
  for (double& part : parts) argument >> part;
  argument.endStructure();
  const bool isOne =
      std::all_of(std::begin(parts), std::end(parts), [](double part) { return part >= 0 && part <= 1; });
  if (!isOne) return std::nullopt;
  quint32 colour = 0;
  for (const double part : parts) colour = colour << 8 | static_cast<quint32>(std::lround(part * 255));
  return colour;
}

/// A setting that is not one of the look's leaves it as it is.
void apply(Wishes& look, const QString& group, const QString& key, const QVariant& value) {
  if (group == kAppearance && key == u"color-scheme") {
    const uint scheme = value.toUInt();
    look.isDark = scheme == 1 || scheme == 2 ? std::optional(scheme == 1) : std::nullopt;
  } else if (group == kAppearance && key == u"accent-color") {
    look.accent = colourOf(value);
  } else if (group == kAppearance && key == u"contrast") {
    look.highContrast = value.toUInt() == 1;
  } else if (group == kAccess && key == u"high-contrast") {
    look.highContrast = value.toBool();
  } else if (group == kInterface && key == u"enable-animations") {
    look.lessMotion = !value.toBool();
  } else if (group == kInterface && key == u"text-scaling-factor" && value.toDouble() > 0) {
    look.textScale = std::clamp(value.toDouble(), kSmallestText, kLargestText);
  }
}

}  // namespace

void DesktopLook::set(const Wishes& look) {
  if (look == look_) return;
  look_ = look;
  changes_.changed();
}

LookSettings::LookSettings(const QDBusConnection& session, PortalLook& owner)
    : session_(session), owner_(owner) {
  qDBusRegisterMetaType<QDBusVariant>();  // nothing is connected to a slot with a type that nobody has named
  session_.connect(kPortal, kPortalObject, kSettings, QStringLiteral("SettingChanged"), this,
                   SLOT(changed(QString, QString, QDBusVariant)));
}

QDBusMessage LookSettings::ask(const QDBusConnection& session) {
  return session.isConnected() && portalRuns(session) ? session.call(question(), QDBus::Block, kPatience)
                                                      : QDBusMessage();
}

void LookSettings::read(const QDBusMessage& reply) {
  if (reply.type() == QDBusMessage::ReplyMessage) return answered(reply);
  if (session_.isConnected()) session_.callWithCallback(question(), this, SLOT(answered(QDBusMessage)));
}

void LookSettings::answered(const QDBusMessage& reply) {
  Wishes look = owner_.look();
  if (reply.arguments().isEmpty() || reply.signature() != u"a{sa{sv}}") return;
  const auto groups = qdbus_cast<QMap<QString, QVariantMap>>(reply.arguments().constFirst());
  for (auto group = groups.begin(); group != groups.end(); ++group) {
    for (auto one = group->begin(); one != group->end(); ++one) {
      apply(look, group.key(), one.key(), one.value());
    }
  }
  owner_.set(look);
}

void LookSettings::changed(const QString& group, const QString& key, const QDBusVariant& value) {
  Wishes look = owner_.look();
  apply(look, group, key, value.variant());
  owner_.set(look);
}

PortalLook::Asking PortalLook::askForUser() {
  return std::async(std::launch::async, [] {
    return std::make_shared<const QDBusMessage>(LookSettings::ask(QDBusConnection::sessionBus()));
  });
}

std::unique_ptr<PortalLook> PortalLook::ofUser(Asking asking) {
  const auto reply = asking.get();  // first: until then the session's bus is not known
  return std::unique_ptr<PortalLook>(new PortalLook(QDBusConnection::sessionBus(), *reply));
}

PortalLook::PortalLook(const QDBusConnection& session) : PortalLook(session, LookSettings::ask(session)) {}

PortalLook::PortalLook(const QDBusConnection& session, const QDBusMessage& reply)
    : settings_(std::make_unique<LookSettings>(session, *this)) {
  settings_->read(reply);
}
PortalLook::~PortalLook() = default;

}  // namespace pendra
