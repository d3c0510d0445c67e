#include "analytics/TrackerFacts.h"

#include <QFile>
#include <QGuiApplication>
#include <QPalette>
#include <QRegularExpression>
#include <QScreen>
#include <QSysInfo>

#include "platform/Version.h"

namespace pendra {

namespace {

QString readText(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QString machineModel() {
  const QString model = readText(QStringLiteral("/sys/class/dmi/id/product_name")).trimmed();
  return model.isEmpty() ? QStringLiteral("Unknown Macintosh Model") : model;
}

QString visibleArea() {
  const QScreen* const screen = QGuiApplication::primaryScreen();
  const QSizeF size = screen ? screen->availableGeometry().size() : QSizeF(0, 0);
  return QString::asprintf("%.f x %.f", size.width(), size.height());
}

}  // namespace

TrackerFacts TrackerFacts::ofMachine() {
  return {.shortVersion = pendra::shortVersion(),
          .os = QSysInfo::prettyProductName(),
          .model = machineModel(),
          .screenResolution = visibleArea(),
          .isDark = [] { return QGuiApplication::palette().window().color().lightness() < 128; }};
}

QMap<QString, QString> readStrings(const QString& path) {
  static const QRegularExpression pair(QStringLiteral(R"re("([^"]*)"\s*=\s*"([^"]*)"\s*;)re"));
  static const QRegularExpression comment(QStringLiteral(R"(/\*.*?\*/)"),
                                          QRegularExpression::DotMatchesEverythingOption);
  QMap<QString, QString> strings;
  auto pairs = pair.globalMatch(readText(path).remove(comment));
  while (pairs.hasNext()) {
    const auto match = pairs.next();
    strings.insert(match.captured(1), match.captured(2));
  }
  return strings;
}

}  // namespace pendra
