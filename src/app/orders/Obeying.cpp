#include "Obeying.h"

#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <cstdio>

#include "CommandLine.h"
#include "Deeds.h"
#include "DocumentModel.h"
#include "Facts.h"
#include "PlainText.h"
#include "RunningPendra.h"
#include "SendAll.h"
#include "document/DocumentFiles.h"
#include "model/Hours.h"
#include "model/Queries.h"
#include "platform/Files.h"
#include "platform/Preferences.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "platform/UserDefaults.h"
#include "store/PersistentStore.h"

namespace pendra {

namespace {

bool onlyAsks(Verb verb) { return verb == Verb::Status || verb == Verb::Log || verb == Verb::Report; }

template <class Value>
Result<QVariant> asVariant(const Result<Value>& result) {
  if (!result) return result.error();
  return QVariant(result.value());
}

template <class Value>
Result<QVariant> named(const QString& name, const Result<Value>& result) {
  if (!result) return result.error();
  return QVariant(QVariantMap{{name, result.value()}});
}

class Obeying {
 public:
  explicit Obeying(const Order& order) : order_(order) {}

  Result<QVariant> answer() {
    if (onlyAsks(order_.verb)) return read();
    running_.emplace(QDBusConnection::sessionBus());
    if (!running_->isThere()) return withoutProgram();
    if (!order_.document.isEmpty()) {
      if (auto same = hasDocument(order_.document); !same) return same.error();
    }
    return asVariant(running_->obey(order_));
  }

 private:
  /// Read where there is a document to read.
  static const ObjectModel& model() {
    static const ObjectModel model = loadObjectModel();
    return model;
  }

  /// The document that is meant where the program does not say which.
  Result<QString> document() const {
    if (!order_.document.isEmpty()) return order_.document;
    const Places places = Places::ofUser();
    const QString last =
        UserDefaults(places.defaultsFile()).text(preferences::kLastDocument).value_or(QString());
    if (!last.isEmpty()) return last;
    if (QFileInfo::exists(defaultPath(places))) return defaultPath(places);
    return refusal(Refusal::NoDocument, tr("no document was opened yet; --document FILE names one"));
  }

  /// Whether the running program has that document open.
  Result<void> hasDocument(const QString& path) const {
    const auto open = running_->document();
    if (!open) return open.error();
    if (isSameFile(open.value(), path)) return {};
    return refusal(Refusal::Refused, formatted(tr("“%@” is not the document that Pendra has open"), {path}));
  }

  static Error unusable(const QString& path, const Error& why) {
    return refusal(Refusal::NoDocument, formatted(tr("“%@” cannot be used: %@"), {path, why.text}));
  }

  /// Reads the document without changing it.
  Result<QString> look(ObjectContext& context) const {
    auto path = document();
    if (!path) return path;
    if (const auto looked = PersistentStore::look(path.value(), context, model()); !looked)
      return unusable(path.value(), looked.error());
    return path;
  }

  Result<QVariant> read() const {
    ObjectContext context(model(), clock_, calendar_);
    const auto path = look(context);
    if (!path) return path.error();
    Order order = order_;
    order.document = path.value();
    return answerFrom(context, order, weekBegins(UserDefaults(Places::ofUser().defaultsFile()), QLocale()));
  }

  Result<QVariant> withoutProgram() const {
    ObjectContext context(model(), clock_, calendar_);
    const auto path = look(context);  // before anything is started or written
    if (!path) return path.error();
    const auto starts = startsATimer(context);
    if (!starts) return starts.error();
    if (starts.value()) return withProgram(path.value());
    if (path.value().endsWith(u".pdrbackup")) {
      return refusal(Refusal::NoDocument, tr("a backup is not worked on; open it in Pendra"));
    }
    auto held = OpenDocument::read(path.value(), model(), clock_, calendar_);
    if (!held) return unusable(path.value(), held.error());
    if (order_.verb == Verb::Send) {
      return asVariant(orders::sendAllOf(std::move(held).value(), model(), clock_, calendar_));
    }
    return carryOut(*held.value(), model(), order_);
  }

  /// What can only be done by a program that goes on.
  Result<bool> startsATimer(const ObjectContext& context) const {
    if (order_.verb == Verb::Add) return orders::addStarts(context, order_.text, order_.create);
    if (order_.verb != Verb::Start) return false;
    if (const auto one = orders::startable(context, order_.text); !one) return one.error();
    return true;
  }

  Result<QVariant> withProgram(const QString& path) const {
    if (!hasDisplay()) {
      return refusal(Refusal::Refused, tr("Pendra does not run, and there is no display to start it on"));
    }
    if (const auto launched = running_->launch(path); !launched) return launched.error();
    if (auto same = hasDocument(path); !same) return same.error();
    return asVariant(running_->obey(order_));
  }

  const Order& order_;
  SystemClock clock_;
  Calendar calendar_ = Calendar::ofSystem();
  std::optional<RunningPendra> running_;  ///< where a running one was looked for
};

bool print(const QByteArray& bytes, std::FILE* to) {
  return std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), to) ==
             static_cast<std::size_t>(bytes.size()) &&
         std::fflush(to) == 0;
}

}  // namespace

Result<QVariant> answerFrom(const ObjectContext& context, const Order& order, Qt::DayOfWeek weekBegins) {
  if (order.verb == Verb::Log) return asVariant(facts::log(context, order));
  if (order.verb == Verb::Report) return QVariant(facts::report(context, order));
  QVariantMap status = facts::status(context, order.document, weekBegins);
  const DocumentSettings* settings = queries::firstDocument(context);
  if (!order.asJson && settings && settings->standalone() == true) status.remove(QStringLiteral("unsent"));
  return QVariant(status);
}

Result<QVariant> carryOut(OpenDocument& document, const ObjectModel& model, const Order& order) {
  switch (order.verb) {
    case Verb::Start:
      return named(QStringLiteral("started"), orders::start(document, order.text));
    case Verb::Stop:
      return named(QStringLiteral("stopped"), orders::stop(document, order.text));
    case Verb::Add:
      return asVariant(orders::add(document, order.text, order.create));
    case Verb::Export:
      return asVariant(orders::exportLog(document, order.text));
    default:
      return asVariant(orders::backUp(document, model, order.text));
  }
}

QByteArray printed(const Order& order, const QVariant& answer) {
  if (!order.asJson) return plainText(order.verb, answer).toUtf8();
  return QJsonDocument::fromVariant(answer).toJson(QJsonDocument::Compact) + '\n';
}

QByteArray printedAsJson(const Error& error) {
  const QJsonObject object{{QStringLiteral("error"), nameOf(refusalOf(error))},
                           {QStringLiteral("message"), error.text}};
  return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

Said said(const Error& error, bool asJson) {
  const int status = statusOf(refusalOf(error));
  if (asJson) return {.status = status, .printed = printedAsJson(error)};
  return {.status = status, .refused = "pendra: " + error.text.simplified().toUtf8() + '\n'};
}

Said said(const Order& order, const Result<QVariant>& answer) {
  if (!answer) return said(answer.error(), order.asJson);
  return {.status = status::kDone, .printed = printed(order, answer.value())};
}

int show(const Said& said) {
  return print(said.printed, stdout) && print(said.refused, stderr) ? said.status : status::kFailed;
}

int obey(const Order& order) { return show(said(order, Obeying(order).answer())); }

}  // namespace pendra
