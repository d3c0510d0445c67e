#include "Obeying.h"

#include "CommandLine.h"
#include "Deeds.h"
#include "DocumentModel.h"
#include "Reading.h"
#include "RunningPendra.h"
#include "SendAll.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "platform/Translation.h"

namespace pendra {

namespace {

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
    if (onlyAsks(order_.verb)) return read(order_);
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

  /// Whether the running program has that document open.
  Result<void> hasDocument(const QString& path) const {
    const auto open = running_->document();
    if (!open) return open.error();
    if (isSameFile(open.value(), path)) return {};
    return refusal(Refusal::Refused, formatted(tr("“%@” is not the document that Pendra has open"), {path}));
  }

  Result<QVariant> withoutProgram() const {
    ObjectContext context(model(), clock_, calendar_);
    const auto path = look(order_, context, model());  // before anything is started or written
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

}  // namespace

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

Result<QVariant> obey(const Order& order) { return Obeying(order).answer(); }

}  // namespace pendra
