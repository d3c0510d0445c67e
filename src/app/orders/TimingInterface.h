#pragma once

#include <QVariant>
#include <vector>

#include "Order.h"
#include "document/Session.h"
#include "platform/BusInterface.h"

namespace pendra {

/// "com.corvel.pendra.Timing1": lets the other programs of the user start, stop, send and ask. A change is an
/// edit of the open document, and is refused while the program waits for an answer of its user's or of
/// Vantor's.
class TimingInterface final : public BusInterface {
 public:
  using SendAll = std::function<Result<QVariantMap>()>;
  /// `busyWith` says why nothing may be changed now; empty when it may. `sendAll` sends the open document's
  /// time. All must outlive it.
  TimingInterface(Session& session, std::function<QString()> busyWith, SendAll sendAll);

  [[nodiscard]] QString introspection() const override;
  [[nodiscard]] bool answer(const QDBusMessage& call, const QDBusConnection& bus) override;

 private:
  [[nodiscard]] Result<QVariant> carryOut(const QString& member, const QVariantList& arguments);
  [[nodiscard]] Result<QVariant> change(OpenDocument& document, const QString& member,
                                        const QVariantList& arguments);
  [[nodiscard]] std::optional<QDBusMessage> answerOfProperties(const QDBusMessage& call) const;
  [[nodiscard]] QString document() const;
  void tellWhatRuns();

  Session& session_;
  std::function<QString()> busyWith_;
  SendAll sendAll_;
  std::vector<qint64> running_;  ///< the entries that were running when it was last told
  std::vector<Notifier::Subscription> observations_;
};

/// The interface's name.
extern const QString kTimingInterface;

/// A form of `facts` for the bus, which has no absent values, and back.
[[nodiscard]] QVariantMap withoutAbsent(QVariantMap map);
[[nodiscard]] QVariantMap withAbsent(QVariantMap map);

}  // namespace pendra
