#pragma once
// What can be asked of Pendra without its windows, from a terminal or over the session bus. Both ways come to
// the same orders and fail for the same reasons, which have one name on the bus, in JSON and as a status.

#include <QDate>
#include <QStringList>
#include <optional>

#include "platform/Result.h"

namespace pendra {

enum class Verb { Status, Log, Report, Start, Stop, Add, Export, BackUp, Send };

enum class Level { Customer, Job, Service, Day };

/// One command of the command line.
struct Order {
  Verb verb = Verb::Status;
  bool asJson = false;
  QString document{};   ///< absolute; empty: the last one
  QString text{};       ///< what to start, stop or add; the absolute path of what is written
  bool create = false;  ///< names that do not exist may be made
  std::optional<QDate> from{};
  std::optional<QDate> to{};
  std::optional<QString> customer{};
  bool onlyUnsent = false;
  std::vector<Level> by{Level::Customer, Level::Job, Level::Service};
};

/// Why an order was not carried out.
enum class Refusal { NoMatch, SeveralMatches, NoDocument, Refused, WrongUsage, NoVantor };

[[nodiscard]] Error refusal(Refusal why, const QString& text);
[[nodiscard]] Refusal refusalOf(const Error& error);
/// "NoMatch".
[[nodiscard]] QString nameOf(Refusal why);
/// With what status the program ends.
[[nodiscard]] int statusOf(Refusal why);

/// Why nothing is known of what became of an order.
[[nodiscard]] Error unanswered();

/// Reads a command and its options; none where the arguments are none, because a file is to be opened. The
/// program's name comes first. Everything behind "--" is no command.
[[nodiscard]] Result<std::optional<Order>> readOrder(const QStringList& arguments);

}  // namespace pendra
