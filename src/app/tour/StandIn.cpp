#include "StandIn.h"

#include <QDir>
#include <QRegularExpression>

#include "platform/Identifiers.h"
#include "platform/Log.h"

namespace pendra {

namespace {

ListRow row(const char* name, const char* id, const char* parent = nullptr) {
  return {.name = QString::fromLatin1(name),
          .id = QString::fromLatin1(id),
          .parent = parent ? std::optional(QString::fromLatin1(parent)) : std::nullopt};
}

}  // namespace

StandIn::StandIn(const QString& caches) {
  const QString folder = caches + u'/' + identifiers::kPendra;
  QDir().mkpath(folder);
  auto end = ServingEnd::bound(folder + u"/vtserver.socket",
                               [this](const Operation& operation, const ArchiveValue::Array& arguments) {
                                 return perform(operation, arguments);
                               });
  if (!end) qFatal("the stand-in cannot serve: %s", qPrintable(end.error().text));
  end_ = std::move(end).value();
  arrived_ = std::make_unique<QSocketNotifier>(end_->descriptor(), QSocketNotifier::Read);
  QObject::connect(arrived_.get(), &QSocketNotifier::activated, arrived_.get(), [this] {
    try {
      end_->serveInput();
    } catch (const ChannelFailure& failure) {
      logLine(failure.reason());
    }
  });
}

StandIn::~StandIn() = default;

double StandIn::hours() const {
  static const QRegularExpression duration(QStringLiteral("<duration>(.*)</duration>"));
  double sum = 0;
  for (const QString& record : received_) sum += duration.match(record).captured(1).toDouble();
  return sum;
}

ArchiveValue StandIn::perform(const Operation& operation, const ArchiveValue::Array& arguments) {
  using Array = ArchiveValue::Array;
  const QStringView name = operation.name;
  if (name == operations::kSubmitTime.name) {
    if (const auto* record = arguments.first().as<QString>()) received_ << *record;
    return true;
  }
  if (name == operations::kEmployeeNames.name) return Array{QStringLiteral("Ann"), QStringLiteral("Ben")};
  if (name == operations::kServices.name) return Array{row("Development", "s1"), row("Meeting", "s2")};
  if (name == operations::kCustomers.name)
    return Array{row("Hollins Architects", "c1"), row("Marsh & Lowe", "c2")};
  if (name == operations::kJobs.name) return Array{row("Website", "j1", "c1")};
  if (name == operations::kCompanyFileName.name) return QStringLiteral("/Books/Studio.cmp");
  return true;  // it talks to everyone
}

}  // namespace pendra
