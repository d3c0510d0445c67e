#include <QApplication>
#include <cstdio>
#include <variant>

#include "CommandLine.h"
#include "Program.h"
#include "analytics/Consent.h"
#include "orders/Obeying.h"
#include "orders/TimingInterface.h"
#include "platform/DesktopLook.h"
#include "platform/Identifiers.h"
#include "platform/Log.h"
#include "platform/Resources.h"
#include "platform/SingleInstance.h"
#include "platform/Translation.h"
#include "platform/ZoneFollower.h"
#include "tour/Tour.h"
#include "ui/Accessibility.h"

namespace {

using pendra::CommandLine;
namespace status = pendra::status;

int refuse(const QString& why, int status) {
  std::fprintf(stderr, "pendra: %s\n", qUtf8Printable(why));
  return status;
}

/// Answers what can be answered without a display; none to go on.
std::optional<int> answerWithoutDisplay(const CommandLine& line) {
  switch (line.task) {
    case CommandLine::Task::SayVersion:
      return std::puts("pendra " PENDRA_VERSION) < 0 ? status::kFailed : status::kDone;
    case CommandLine::Task::SayHelp:
      return std::fputs(qUtf8Printable(pendra::usage()), stdout) < 0 ? status::kFailed : status::kDone;
    case CommandLine::Task::DrawTour:
      qputenv("QT_QPA_PLATFORM", "offscreen");
      return std::nullopt;
    case CommandLine::Task::Obey:
      return std::nullopt;
    case CommandLine::Task::Run:
      break;
  }
  if (pendra::hasDisplay()) return std::nullopt;
  return refuse(pendra::tr("there is no display to open a window on; ./pendra --tour DIR draws the "
                           "windows into DIR"),
                status::kWrongUsage);
}

/// The last net: whatever escapes a command is logged and the program goes on.
class Application final : public QApplication {
 public:
  using QApplication::QApplication;

  bool notify(QObject* receiver, QEvent* event) override {
    try {
      return QApplication::notify(receiver, event);
    } catch (const std::exception& failure) {
      pendra::logLine(QString::fromUtf8(failure.what()));
      return false;
    }
  }
};

/// Makes the document that a start names as new, before it is known who opens it.
pendra::Result<void> makeFile(const CommandLine& line) {
  if (!line.isNewFile) return {};
  const pendra::SystemClock clock;
  const auto made =
      pendra::OpenDocument::read(line.file, pendra::loadObjectModel(), clock, pendra::Calendar::ofSystem());
  return made ? pendra::Result<void>() : made.error();
}

int runProgram(const CommandLine& line) {
  if (const auto made = makeFile(line); !made) {
    return refuse(line.file + u": " + made.error().text, status::kNoDocument);
  }
  using Claim = pendra::SingleInstance::Claim;
  pendra::SingleInstance instance;
  const Claim claim = instance.claim(line.file);
  if (claim == Claim::HandedOver) return status::kDone;
  if (claim == Claim::Unanswered) {
    return refuse(pendra::tr("the Pendra that runs already does not answer"), status::kFailed);
  }
  auto environment = pendra::Environment::ofUser();
  const pendra::ZoneFollower zone(environment.calendar);
  pendra::Consent(environment.defaults).programStarted();
  if (!line.appearance) pendra::Theme::force(environment.defaults);
  pendra::Program program(environment);
  pendra::TimingInterface timing(
      program.session(), [&program] { return program.busyWith(); }, [&program] { return program.sendAll(); });
  instance.offer(timing);
  instance.setOpener([&program](const QString& path) { program.openFromOutside(path); });
  program.launch(line.file);
  if (line.isInPanel) program.goIntoPanel();
  return QApplication::exec();
}

/// What was asked wrongly is answered in the form that was asked for.
int refuseLine(const pendra::Error& error, std::span<const char* const> arguments) {
  if (error.domain != u"order") return refuse(error.text, error.code);
  return pendra::refuse(error, std::any_of(arguments.begin(), arguments.end(), [](const char* argument) {
                          return qstrcmp(argument, "--json") == 0;
                        }));
}

/// What was asked; or, of what needs no window, the status of its answer, which is in the reader's language
/// too.
std::variant<CommandLine, int> begin(int argc, char** argv) {
  QCoreApplication application(argc, argv);  // one without windows, until it is known that there will be some
  pendra::installTranslations(application, pendra::translationFolder());
  const std::span<const char* const> arguments{argv, static_cast<std::size_t>(argc)};
  const auto read = pendra::readCommandLine(arguments);
  if (!read) return refuseLine(read.error(), arguments);
  const CommandLine& line = read.value();
  if (const auto status = answerWithoutDisplay(line)) return *status;
  pendra::installLog();
  if (line.task == CommandLine::Task::Obey) return pendra::obey(line.order);
  return line;
}

}  // namespace

int main(int argc, char** argv) {
  const auto begun = begin(argc, argv);
  if (const int* status = std::get_if<int>(&begun)) return *status;
  const auto& line = std::get<CommandLine>(begun);
  Application application(argc, argv);
  // Without a display name: it would stand behind the title of every window.
  QApplication::setApplicationName(QStringLiteral("pendra"));
  QApplication::setApplicationVersion(QStringLiteral(PENDRA_VERSION));
  QGuiApplication::setDesktopFileName(pendra::identifiers::kPendra);
  QApplication::setQuitOnLastWindowClosed(false);
  pendra::Theme::install(application);
  pendra::installComboBoxAccessibility();
  if (line.task == CommandLine::Task::DrawTour) {
    return pendra::drawTour(line.tourFolder) ? status::kDone : status::kFailed;
  }
  pendra::installTranslations(application, pendra::translationFolder());
  if (line.appearance) pendra::Theme::force(*line.appearance);
  const auto look = pendra::PortalLook::ofUser();
  const auto follow = [&look] { pendra::Theme::follow(look->look()); };
  const auto following = look->changes().observe(follow);
  follow();
  return runProgram(line);
}
