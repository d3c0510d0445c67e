#include "Order.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <array>

#include "CommandLine.h"
#include "platform/Text.h"
#include "platform/Translation.h"

namespace pendra {

namespace {

struct RefusalRow {
  Refusal why;
  const char* name;
  int status;
};
constexpr std::array kRefusals{
    RefusalRow{Refusal::NoMatch, "NoMatch", status::kNothing},
    RefusalRow{Refusal::SeveralMatches, "SeveralMatches", status::kSeveral},
    RefusalRow{Refusal::NoDocument, "NoDocument", status::kNoDocument},
    RefusalRow{Refusal::Refused, "Refused", status::kNoDocument},
    RefusalRow{Refusal::WrongUsage, "WrongUsage", status::kWrongUsage},
    RefusalRow{Refusal::NoVantor, "NoVantor", status::kNoVantor},
};

const RefusalRow& rowOf(Refusal why) { return kRefusals.at(static_cast<std::size_t>(why)); }

enum class Operands { None, Name, PerhapsName, File };

/// A command, what follows it, and the options that it has beside those of every command.
struct VerbRow {
  Verb verb;
  const char* word;
  Operands operands;
  std::vector<const char*> options;
};

const std::vector<VerbRow>& verbs() {
  static const std::vector<VerbRow> rows{
      {Verb::Status, "status", Operands::None, {}},
      {Verb::Log, "log", Operands::None, {"from", "to", "customer", "unsent"}},
      {Verb::Report, "report", Operands::None, {"from", "to", "by"}},
      {Verb::Start, "start", Operands::Name, {}},
      {Verb::Stop, "stop", Operands::PerhapsName, {}},
      {Verb::Add, "add", Operands::Name, {"create"}},
      {Verb::Export, "export", Operands::File, {}},
      {Verb::BackUp, "backup", Operands::File, {}},
      {Verb::Send, "send", Operands::None, {}},
  };
  return rows;
}

const std::array kWithoutValue{"json", "unsent", "create"};

QCommandLineOption optionOf(const char* name) {
  const auto* flag = std::find_if(kWithoutValue.begin(), kWithoutValue.end(),
                                  [&](const char* one) { return qstrcmp(one, name) == 0; });
  return {QString::fromLatin1(name), {}, flag == kWithoutValue.end() ? QStringLiteral("VALUE") : QString()};
}

void addOptions(QCommandLineParser& parser, const VerbRow& row) {
  for (const char* name : {"json", "document"}) parser.addOption(optionOf(name));
  for (const char* name : row.options) parser.addOption(optionOf(name));
}

/// The command that stands before anything else but options; none in front of a file.
const VerbRow* verbIn(const QStringList& arguments) {
  QCommandLineParser parser;
  parser.addOptions({optionOf("json"), optionOf("document")});
  parser.parse(arguments.mid(0, arguments.indexOf(u"--", 1)));
  const QString word = parser.positionalArguments().value(0);
  for (const VerbRow& row : verbs()) {
    if (word == QLatin1StringView(row.word)) return &row;
  }
  return nullptr;
}

Error wrongUsage(QStringView pattern, const QString& what) {
  return refusal(Refusal::WrongUsage,
                 formatted(tr("%@ (pendra --help says what can be asked)"), {formatted(pattern, {what})}));
}

QString absolute(const QString& path) { return path.isEmpty() ? path : QFileInfo(path).absoluteFilePath(); }

Result<std::optional<QDate>> dateIn(const QCommandLineParser& parser, const QString& option) {
  if (!parser.optionNames().contains(option)) return std::optional<QDate>();
  const QString text = parser.value(option);
  const QDate date = QDate::fromString(text, Qt::ISODate);
  if (!date.isValid()) return wrongUsage(tr("a day is written as 2026-11-24, not “%@”"), text);
  return std::optional(date);
}

Result<std::vector<Level>> levelsIn(const QString& text) {
  static const QStringList words{QStringLiteral("customer"), QStringLiteral("job"), QStringLiteral("service"),
                                 QStringLiteral("day")};
  std::vector<Level> levels;
  for (const QString& word : text.split(u',')) {
    const auto at = words.indexOf(word);
    if (at < 0) return wrongUsage(tr("hours are summed by customer, job, service or day, not by “%@”"), word);
    levels.push_back(static_cast<Level>(at));
  }
  return levels;
}

Result<void> readOperands(Order& order, const VerbRow& row, const QStringList& operands) {
  const bool fits = row.operands == Operands::None   ? operands.isEmpty()
                    : row.operands == Operands::Name ? !operands.isEmpty()
                    : row.operands == Operands::File ? operands.size() == 1 && !operands[0].isEmpty()
                                                     : true;
  if (!fits) return wrongUsage(tr("that is not how “%@” is used"), QString::fromLatin1(row.word));
  order.text = row.operands == Operands::File ? absolute(operands[0]) : operands.join(u' ');
  return {};
}

Result<void> readRange(Order& order, const QCommandLineParser& parser) {
  const auto from = dateIn(parser, QStringLiteral("from"));
  if (!from) return from.error();
  const auto to = dateIn(parser, QStringLiteral("to"));
  if (!to) return to.error();
  order.from = from.value();
  order.to = to.value();
  return {};
}

Result<void> readOptions(Order& order, const QCommandLineParser& parser) {
  const QStringList given = parser.optionNames();
  const auto value = [&](const QString& name) {
    return given.contains(name) ? parser.value(name) : QString();
  };
  order.document = absolute(value(QStringLiteral("document")));
  if (given.contains(u"customer")) order.customer = value(QStringLiteral("customer"));
  order.onlyUnsent = given.contains(u"unsent");
  order.create = given.contains(u"create");
  if (auto range = readRange(order, parser); !range) return range;
  if (!given.contains(u"by")) return {};
  auto levels = levelsIn(value(QStringLiteral("by")));
  if (!levels) return levels.error();
  order.by = std::move(levels).value();
  return {};
}

}  // namespace

Error refusal(Refusal why, const QString& text) {
  return {QStringLiteral("order"), static_cast<int>(why), text};
}

Error unanswered() { return refusal(Refusal::Refused, tr("the Pendra that runs does not answer")); }

Refusal refusalOf(const Error& error) {
  return error.domain == u"order" ? static_cast<Refusal>(error.code) : Refusal::NoDocument;
}

QString nameOf(Refusal why) { return QString::fromLatin1(rowOf(why).name); }

int statusOf(Refusal why) { return rowOf(why).status; }

Result<std::optional<Order>> readOrder(const QStringList& arguments) {
  const VerbRow* row = verbIn(arguments);
  if (!row) return std::optional<Order>();
  QCommandLineParser parser;
  addOptions(parser, *row);
  const bool understood = parser.parse(arguments);
  if (const QStringList unknown = parser.unknownOptionNames(); !unknown.isEmpty()) {
    return wrongUsage(tr("unknown option --%@"), unknown.front());
  }
  if (!understood) return wrongUsage(u"%@", parser.errorText());
  Order order{.verb = row->verb, .asJson = parser.isSet(QStringLiteral("json"))};
  if (auto read = readOptions(order, parser); !read) return read.error();
  if (auto read = readOperands(order, *row, parser.positionalArguments().mid(1)); !read) return read.error();
  return std::optional(std::move(order));
}

}  // namespace pendra
