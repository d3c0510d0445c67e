#include <signal.h>
#include <sys/signalfd.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDir>
#include <QSocketNotifier>
#include <cstdio>
#include <initializer_list>

#include "VantorServer.h"
#include "platform/Identifiers.h"
#include "platform/Log.h"
#include "platform/Places.h"
#include "platform/Text.h"

using namespace pendra;

namespace {

int giveUp(const QString& why) {
  std::fprintf(stderr, "vantor-sim: %s\n", qPrintable(why));
  return 1;
}

struct Options {
  QString company;
  QString records;
  QString cache;
  bool useBus = true;
  std::optional<Fault> fault;  ///< none when the command line names one that does not exist
};

Options read(const QCoreApplication& application) {
  QCommandLineParser parser;
  parser.setApplicationDescription(
      QStringLiteral("A stand-in for Vantor, made of the channel's serving side."));
  parser.addHelpOption();
  parser.addOptions({
      {QStringLiteral("company"), QStringLiteral("The company file."), QStringLiteral("FILE.json")},
      {QStringLiteral("records"), QStringLiteral("Where to append the records that are sent."),
       QStringLiteral("FILE")},
      {QStringLiteral("cache"), QStringLiteral("The caches folder; the user's own by default."),
       QStringLiteral("DIR")},
      {QStringLiteral("no-bus"), QStringLiteral("Own no name on the session bus.")},
      {QStringLiteral("fault"), Fault::help(), QStringLiteral("KIND[:N[+]]")},
      {QStringLiteral("fault-on"), QStringLiteral("Count the calls of this operation only."),
       QStringLiteral("OPERATION")},
  });
  parser.process(application);
  const QString fault = parser.value(QStringLiteral("fault"));
  Options options{.company = parser.value(QStringLiteral("company")),
                  .records = parser.value(QStringLiteral("records")),
                  .cache = parser.value(QStringLiteral("cache")),
                  .useBus = !parser.isSet(QStringLiteral("no-bus")),
                  .fault = fault.isEmpty() ? Fault{} : Fault::named(fault)};
  if (options.cache.isEmpty()) options.cache = Places::ofUser().caches;
  if (options.fault) options.fault->operation = parser.value(QStringLiteral("fault-on"));
  return options;
}

/// Failures of one call must not end the server.
void serve(ServingEnd& channel) {
  try {
    channel.serveInput();
  } catch (const ChannelFailure& failure) {
    logLine(formatted(u"%@: %@", {failure.name(), failure.reason()}));
  } catch (const Unanswered&) {
  }
}

/// The signals that the program answers to, as a descriptor. Called before there is a second thread.
int blockedSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  for (const int number : {SIGHUP, SIGTERM, SIGINT}) sigaddset(&signals, number);
  sigprocmask(SIG_BLOCK, &signals, nullptr);
  return signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
}

void answerSignals(int descriptor, const QString& company, VantorServer& server) {
  signalfd_siginfo signal{};
  while (read(descriptor, &signal, sizeof signal) == sizeof signal) {
    if (signal.ssi_signo != SIGHUP) return QCoreApplication::quit();
    auto again = CompanyFile::read(company);
    if (again) server.setCompany(std::move(again).value());
    if (!again) giveUp(again.error().text);
  }
}

}  // namespace

int main(int argc, char** argv) {
  const Descriptor signals(blockedSignals());
  installLog();
  const QCoreApplication application(argc, argv);
  const Options options = read(application);
  if (!options.fault) return giveUp(QStringLiteral("no such fault"));
  auto company = CompanyFile::read(options.company);
  if (!company) return giveUp(company.error().text);
  auto records = RecordsFile::open(options.records);
  if (!records) return giveUp(records.error().text);

  VantorServer server(std::move(company).value(), std::move(records).value(), *options.fault);
  QDir().mkpath(options.cache);  // on a first start nobody else has made it
  const QString folder = options.cache + u'/' + identifiers::kPendra;
  const auto channel = ServingEnd::bound(
      folder + u"/vtserver.socket", [&](const Operation& operation, const ArchiveValue::Array& arguments) {
        return server.perform(operation, arguments);
      });
  if (!channel) return giveUp(channel.error().text);
  ServingEnd& endpoint = *channel.value();
  server.setChannel(endpoint, folder + u"/pdclient.socket");

  QSocketNotifier told(signals.get(), QSocketNotifier::Read);
  QObject::connect(&told, &QSocketNotifier::activated,
                   [&] { answerSignals(signals.get(), options.company, server); });
  QSocketNotifier arrived(endpoint.descriptor(), QSocketNotifier::Read);
  QObject::connect(&arrived, &QSocketNotifier::activated, [&] { serve(endpoint); });
  if (options.useBus && !QDBusConnection::sessionBus().registerService(identifiers::kVantor))
    return giveUp(QStringLiteral("cannot own Vantor's name on the session bus (--no-bus does without)"));
  std::puts("ready");
  std::fflush(stdout);
  return QCoreApplication::exec();
}
