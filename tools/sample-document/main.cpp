#include <stdio.h>
#include <string.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <cerrno>

#include "model/Model.h"
#include "platform/Log.h"
#include "platform/Text.h"
#include "sample/SampleDocument.h"

namespace pendra {
namespace {

constexpr int kWrongUse = 2;

const QCommandLineOption kCustomers(QStringLiteral("customers"), QStringLiteral("How many customers."),
                                    QStringLiteral("N"));
const QCommandLineOption kJobs(QStringLiteral("jobs"), QStringLiteral("How many jobs."), QStringLiteral("N"));
const QCommandLineOption kServices(QStringLiteral("services"), QStringLiteral("How many service items."),
                                   QStringLiteral("N"));
const QCommandLineOption kActivities(QStringLiteral("activities"),
                                     QStringLiteral("How many open activities."), QStringLiteral("N"));
const QCommandLineOption kEntries(QStringLiteral("entries"), QStringLiteral("How many time entries."),
                                  QStringLiteral("N"));
const QCommandLineOption kToday(QStringLiteral("today"), QStringLiteral("The day of the last entries."),
                                QStringLiteral("YYYY-MM-DD"));
const QCommandLineOption kSeed(QStringLiteral("seed"),
                               QStringLiteral("Another number gives another document."), QStringLiteral("N"));
const QCommandLineOption kStandalone(QStringLiteral("standalone"),
                                     QStringLiteral("Not linked to a company file."));

/// Reads the options into `sample`; what is wrong with them is the answer.
class Arguments {
 public:
  explicit Arguments(const QCommandLineParser& parser) : parser_(parser) {}

  QString readInto(SampleOptions& sample) {
    sample.customers = count(kCustomers).value_or(sample.customers);
    sample.jobs = count(kJobs);
    sample.services = count(kServices).value_or(sample.services);
    sample.activities = count(kActivities);
    sample.entries = count(kEntries);
    if (parser_.isSet(kSeed)) sample.seed = seed();
    if (parser_.isSet(kToday)) sample.today = day();
    sample.standalone = parser_.isSet(kStandalone);
    return complaint_;
  }

 private:
  std::optional<int> count(const QCommandLineOption& option) {
    if (!parser_.isSet(option)) return std::nullopt;
    bool ok = false;
    const int value = parser_.value(option).toInt(&ok);
    if (!ok || value < 0) complain(option);
    return value;
  }
  quint64 seed() {
    bool ok = false;
    const quint64 value = parser_.value(kSeed).toULongLong(&ok);
    if (!ok) complain(kSeed);
    return value;
  }
  QDate day() {
    const QDate value = QDate::fromString(parser_.value(kToday), QStringLiteral("yyyy-MM-dd"));
    if (!value.isValid()) complain(kToday);
    return value;
  }
  void complain(const QCommandLineOption& option) {
    complaint_ = formatted(u"--%@ cannot be “%@”", {option.names().first(), parser_.value(option)});
  }

  const QCommandLineParser& parser_;
  QString complaint_;
};

Result<void> write(const QString& path, const SampleOptions& options) {
  QFile schema(QStringLiteral(":/Corvel.momd"));
  if (!schema.open(QIODevice::ReadOnly)) return Error{QStringLiteral("resources"), 0, schema.errorString()};
  const SampleClock clock(options.today);
  const Calendar calendar{QTimeZone::utc()};
  const ObjectModel model = objectModel(schema.readAll());
  ObjectContext context(model, clock, calendar);
  if (auto opened = context.open(path); !opened) return opened;
  fillSample(context, options);
  return context.save();
}

/// Writes beside the target and moves the finished file over it, so that no half document ever stands there.
Result<void> replace(const QString& path, const SampleOptions& options) {
  const QString beside = path + u".new";
  QFile::remove(beside);
  if (auto written = write(beside, options); !written) {
    QFile::remove(beside);
    return written;
  }
  if (::rename(QFile::encodeName(beside).constData(), QFile::encodeName(path).constData()) == 0) return {};
  const Error error{QStringLiteral("POSIX"), errno, QString::fromLocal8Bit(strerror(errno))};
  QFile::remove(beside);
  return error;
}

int complain(const QString& text) {
  logLine(u"sample-document: " + text);
  return kWrongUse;
}

int run(const QCoreApplication& application) {
  QCommandLineParser parser;
  parser.setApplicationDescription(
      QStringLiteral("Writes a sample document, the same for the same arguments."));
  parser.addHelpOption();
  parser.addOptions({kCustomers, kJobs, kServices, kActivities, kEntries, kToday, kSeed, kStandalone});
  parser.addPositionalArgument(QStringLiteral("OUT.pdr"),
                               QStringLiteral("The document; an existing one is replaced."));
  parser.process(application);
  if (parser.positionalArguments().size() != 1) return complain(QStringLiteral("name one file to write"));
  SampleOptions options;
  if (const QString wrong = Arguments(parser).readInto(options); !wrong.isEmpty()) return complain(wrong);
  const QString path = parser.positionalArguments().constFirst();
  const auto written = replace(path, options);
  if (written) return 0;
  logLine(formatted(u"sample-document: %@: %@", {path, written.error().text}));
  return 1;
}

}  // namespace
}  // namespace pendra

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  return pendra::run(application);
}
