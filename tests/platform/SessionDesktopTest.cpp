#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVirtualObject>

#include "PrivateBus.h"
#include "platform/DesktopLook.h"
#include "platform/DesktopNotes.h"
#include "platform/DesktopPanel.h"
#include "platform/GlobalKey.h"
#include "support/Events.h"

namespace pendra {
namespace {

const QString kNotes = QStringLiteral("org.freedesktop.Notifications");
const QString kNotesObject = QStringLiteral("/org/freedesktop/Notifications");

/// A notification service that notes what it is asked, a line for each call.
class NoteServer final : public QDBusVirtualObject {
 public:
  explicit NoteServer(const QDBusConnection& bus) : bus_(bus) {
    bus_.registerVirtualObject(kNotesObject, this);
    bus_.registerService(kNotes);
  }
  [[nodiscard]] QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& call, const QDBusConnection& bus) override {
    const QVariantList given = call.arguments();
    if (call.member() == u"CloseNotification") {
      calls << u"close " + given[0].toString();
      return true;
    }
    calls << given[1].toString() + u' ' + given[4].toString() + u' ' + given[5].toStringList().join(u'|');
    return bus.send(call.createReply(QVariant(given[1].toUInt() == 0 ? ++last_ : given[1].toUInt())));
  }
  void tell(const QString& signal, const QVariantList& values) {
    auto message = QDBusMessage::createSignal(kNotesObject, kNotes, signal);
    message.setArguments(values);
    bus_.send(message);
  }

  QStringList calls;

 private:
  QDBusConnection bus_;
  quint32 last_ = 6;
};

TEST(SessionDesktop, NotesAreReplacedAnsweredAndClosed) {
  PrivateBus bus;
  const QDBusConnection own = bus.connect();
  SessionNotes notes(own);
  notes.show({.key = QStringLiteral("lost"), .title = {}, .text = QStringLiteral("nobody"), .actions = {}});
  EXPECT_FALSE(own.interface()->isServiceRegistered(kNotes)) << "by now nobody has got it";
  NoteServer server(bus.connect());
  QStringList pressed;
  notes.pressed = [&](const QString& key, int action) { pressed << key + QString::number(action); };
  DesktopNote away{.key = QStringLiteral("away"),
                   .title = QStringLiteral("Pendra"),
                   .text = QStringLiteral("1 < 2"),
                   .actions = {QStringLiteral("Keep"), QStringLiteral("Take Off")}};
  const auto called = [&](int times) { return eventually([&] { return server.calls.size() >= times; }); };
  notes.show(away);
  ASSERT_TRUE(called(1));
  EXPECT_EQ(server.calls.last(), QStringLiteral("0 1 &lt; 2 default||0|Keep|1|Take Off"));
  const auto pressedOn = [&](quint32 number, const QString& action) {
    server.tell(QStringLiteral("ActionInvoked"), {number, action});
  };
  pressedOn(7, QStringLiteral("1"));
  pressedOn(9, QStringLiteral("0"));  // of another program's
  pressedOn(7, QStringLiteral("default"));
  EXPECT_TRUE(eventually([&] { return pressed.size() == 2; }));
  EXPECT_EQ(pressed, QStringList({QStringLiteral("away1"), QStringLiteral("away-1")}));
  notes.show(away);
  ASSERT_TRUE(called(2));
  EXPECT_TRUE(server.calls.last().startsWith(u"7 ")) << "it takes the place of the earlier";
  notes.withdraw(away.key);
  ASSERT_TRUE(called(3));
  EXPECT_EQ(server.calls.last(), QStringLiteral("close 7"));
  notes.show(away);
  notes.withdraw(away.key);  // before anybody knows its number
  EXPECT_TRUE(eventually([&] { return server.calls.last() == QStringLiteral("close 8"); }));
}

/// A portal that says how things look.
class Portal final : public QDBusVirtualObject {
 public:
  using Groups = QMap<QString, QVariantMap>;

  explicit Portal(const QDBusConnection& bus) : bus_(bus) {
    qDBusRegisterMetaType<Groups>();
    bus_.registerVirtualObject(kPath, this);
    bus_.registerService(QStringLiteral("org.freedesktop.portal.Desktop"));
  }
  [[nodiscard]] QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& call, const QDBusConnection& bus) override {
    const QVariantList given = call.arguments();
    if (call.member() == u"Get") return bus.send(call.createReply(QVariant::fromValue(QDBusVariant(1U))));
    if (call.member() == u"CreateSession") {
      const QString path = kPath + u"/request/" + call.service().mid(1).replace(u'.', u'_') + u"/pendra_keys";
      bus.send(call.createReply(QVariant::fromValue(QDBusObjectPath(path))));
      auto answer = QDBusMessage::createSignal(path, QStringLiteral("org.freedesktop.portal.Request"),
                                               QStringLiteral("Response"));
      return bus.send(answer << 0U << QVariantMap{{QStringLiteral("session_handle"), kKeys}});
    }
    if (call.member() == u"BindShortcuts") {
      signature = call.signature() + u' ' + given[0].value<QDBusObjectPath>().path();
      return bus.send(call.createReply(QVariant::fromValue(QDBusObjectPath(kPath))));
    }
    if (call.member() != u"ReadAll") return false;
    const Groups groups{
        {kAppearance, {{QStringLiteral("color-scheme"), 1U}, {QStringLiteral("contrast"), 1U}}}};
    return bus.send(call.createReply(QVariant::fromValue(groups)));
  }
  void change(const QString& key, const QVariant& value, const QString& group = kAppearance) {
    auto news = QDBusMessage::createSignal(kPath, QStringLiteral("org.freedesktop.portal.Settings"),
                                           QStringLiteral("SettingChanged"));
    bus_.send(news << group << key << QVariant::fromValue(QDBusVariant(value)));
  }
  void press(const QString& session, const QString& key) {
    auto news = QDBusMessage::createSignal(kPath, QStringLiteral("org.freedesktop.portal.GlobalShortcuts"),
                                           QStringLiteral("Activated"));
    bus_.send(news << QVariant::fromValue(QDBusObjectPath(session)) << key << qulonglong(1) << QVariantMap());
  }
  static QVariant colour(double red, double green, double blue) {
    QDBusArgument argument;
    argument.beginStructure();
    argument << red << green << blue;
    argument.endStructure();
    return QVariant::fromValue(argument);
  }

  static inline const QString kKeys = QStringLiteral("/keys");
  QString signature;

 private:
  static inline const QString kPath = QStringLiteral("/org/freedesktop/portal/desktop");
  static inline const QString kAppearance = QStringLiteral("org.freedesktop.appearance");
  QDBusConnection bus_;
};

TEST(SessionDesktop, TheLookIsFollowed) {
  PrivateBus bus;
  const PortalLook alone(bus.connect());
  EXPECT_EQ(alone.look(), Wishes{});
  Portal portal(bus.connect());
  PortalLook look(bus.connect());
  const Wishes dark{.isDark = true, .highContrast = true};
  EXPECT_TRUE(eventually([&] { return look.look() == dark; }));
  int told = 0;
  const auto watching = look.changes().observe([&] { ++told; });
  portal.change(QStringLiteral("color-scheme"), 0U);
  portal.change(QStringLiteral("contrast"), 0U);
  portal.change(QStringLiteral("accent-color"), Portal::colour(1, 0.5, 0));
  EXPECT_TRUE(eventually([&] { return told == 3; }));
  EXPECT_EQ(look.look(), Wishes{.accent = 0xff8000});
  portal.change(QStringLiteral("accent-color"), Portal::colour(-1, -1, -1));
  EXPECT_TRUE(eventually([&] { return look.look() == Wishes{}; }));
  portal.change(QStringLiteral("text-scaling-factor"), 9.0, QStringLiteral("org.gnome.desktop.interface"));
  portal.change(QStringLiteral("high-contrast"), true, QStringLiteral("org.gnome.desktop.a11y.interface"));
  const Wishes large{.highContrast = true, .textScale = 3};
  EXPECT_TRUE(eventually([&] { return look.look() == large; }));
}

TEST(SessionDesktop, TheKeyIsAskedForAndHeard) {
  PrivateBus bus;
  const QDBusConnection own = bus.connect();
  const PortalKey alone(own);
  EXPECT_FALSE(own.interface()->isServiceRegistered(QStringLiteral("none"))) << "by now it was answered";
  Portal portal(bus.connect());
  PortalKey key(bus.connect());
  ASSERT_TRUE(eventually([&] { return key.isOffered(); }));
  EXPECT_FALSE(alone.isOffered());
  int presses = 0;
  const auto hearing = key.presses().observe([&] { ++presses; });
  portal.press(Portal::kKeys, QStringLiteral("start-or-stop"));  // none is chosen yet
  key.choose(QStringLiteral("Start"));
  ASSERT_TRUE(eventually([&] { return !portal.signature.isEmpty(); }));
  EXPECT_EQ(portal.signature, QStringLiteral("oa(sa{sv})sa{sv} /keys"));
  portal.press(QStringLiteral("/others"), QStringLiteral("start-or-stop"));
  portal.press(Portal::kKeys, QStringLiteral("start-or-stop"));
  EXPECT_TRUE(eventually([&] { return presses > 0; }));
  EXPECT_EQ(presses, 1);
}

TEST(SessionDesktop, ThePanelIsFollowed) {
  PrivateBus bus;
  const SessionPanel before(bus.connect());
  EXPECT_FALSE(before.isThere());
  auto panel = bus.connect();
  panel.registerService(QStringLiteral("org.kde.StatusNotifierWatcher"));
  EXPECT_TRUE(eventually([&] { return before.isThere(); }));
  const SessionPanel after(bus.connect());
  EXPECT_TRUE(after.isThere());
  panel.unregisterService(QStringLiteral("org.kde.StatusNotifierWatcher"));
  EXPECT_TRUE(eventually([&] { return !before.isThere() && !after.isThere(); }));
}

}  // namespace
}  // namespace pendra
