#include "Reading.h"

#include <QFileInfo>
#include <QLocale>

#include "DocumentModel.h"
#include "Facts.h"
#include "document/DocumentFiles.h"
#include "model/Hours.h"
#include "model/Queries.h"
#include "platform/Places.h"
#include "platform/Preferences.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "platform/UserDefaults.h"
#include "store/PersistentStore.h"

namespace pendra {

namespace {

/// The document that is meant where the program does not say which.
Result<QString> documentOf(const Order& order) {
  if (!order.document.isEmpty()) return order.document;
  const Places places = Places::ofUser();
  const QString last =
      UserDefaults(places.defaultsFile()).text(preferences::kLastDocument).value_or(QString());
  if (!last.isEmpty()) return last;
  if (QFileInfo::exists(defaultPath(places))) return defaultPath(places);
  return refusal(Refusal::NoDocument, tr("no document was opened yet; --document FILE names one"));
}

}  // namespace

bool onlyAsks(Verb verb) { return verb == Verb::Status || verb == Verb::Log || verb == Verb::Report; }

Result<QVariant> answerFrom(const ObjectContext& context, const Order& order, Qt::DayOfWeek weekBegins) {
  if (order.verb == Verb::Log) {
    const auto entries = facts::log(context, order);
    return entries ? Result<QVariant>(entries.value()) : entries.error();
  }
  if (order.verb == Verb::Report) return QVariant(facts::report(context, order));
  QVariantMap status = facts::status(context, order.document, weekBegins);
  const DocumentSettings* settings = queries::firstDocument(context);
  if (!order.asJson && settings && settings->standalone() == true) status.remove(QStringLiteral("unsent"));
  return QVariant(status);
}

Result<QVariant> read(const Order& order) {
  const SystemClock clock;
  const Calendar calendar = Calendar::ofSystem();
  const ObjectModel model = loadObjectModel();
  ObjectContext context(model, clock, calendar);
  const auto path = look(order, context, model);
  if (!path) return path.error();
  Order named = order;
  named.document = path.value();
  return answerFrom(context, named, weekBegins(UserDefaults(Places::ofUser().defaultsFile()), QLocale()));
}

Result<QString> look(const Order& order, ObjectContext& context, const ObjectModel& model) {
  auto path = documentOf(order);
  if (!path) return path;
  const auto looked = PersistentStore::look(path.value(), context, model);
  return looked ? path : unusable(path.value(), looked.error());
}

Error unusable(const QString& path, const Error& why) {
  return refusal(Refusal::NoDocument, formatted(tr("“%@” cannot be used: %@"), {path, why.text}));
}

}  // namespace pendra
