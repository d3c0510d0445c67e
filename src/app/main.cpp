// The program with the windows, which "pendra" becomes where a terminal's answer is not enough.

#include <fontconfig/fontconfig.h>

#include <QApplication>
#include <QProcess>

#include "Program.h"
#include "Terminal.h"
#include "analytics/Consent.h"
#include "orders/Obeying.h"
#include "orders/TerminalInterface.h"
#include "orders/TimingInterface.h"
#include "platform/DesktopLook.h"
#include "platform/Identifiers.h"
#include "platform/Log.h"
#include "platform/Preferences.h"
#include "platform/Resources.h"
#include "platform/SingleInstance.h"
#include "platform/Translation.h"
#include "platform/Version.h"
#include "platform/ZoneFollower.h"
#include "tour/Tour.h"
#include "ui/Accessibility.h"
#include "ui/Activation.h"
#include "ui/Theme.h"

namespace {

using pendra::CommandLine;
using pendra::refuse;
namespace status = pendra::status;

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

/// How a run ended, and what a start asked for that came while it was ending.
struct Ended {
  int status;
  std::optional<pendra::StartRequest> wanted{};
};

/// What needs no toolkit: while that starts, the document is read that will most likely be opened, and what
/// there is of fonts.
struct Beginning {
  explicit Beginning(const CommandLine& line) {
    const QString file = line.file.isEmpty() ? lastDocument() : line.file;
    // A backup is restored first, and one of an older name gets its new one.
    if (!line.isNewFile && file.endsWith(u".pdr")) ahead.emplace(file, model, *clock, *calendar);
  }

  static QString lastDocument() {
    const pendra::UserDefaults defaults(pendra::Places::ofUser().defaultsFile());
    return defaults.text(pendra::preferences::kLastDocument).value_or(QString());
  }

  pendra::ObjectModel model = pendra::loadObjectModel();
  std::unique_ptr<pendra::Clock> clock = std::make_unique<pendra::SystemClock>();
  std::unique_ptr<pendra::Calendar> calendar =
      std::make_unique<pendra::Calendar>(pendra::Calendar::ofSystem());
  std::future<FcBool> fonts = std::async(std::launch::async, &FcInit);
  std::optional<pendra::ReadAhead> ahead;
};

Ended runClaimed(const CommandLine& line, Beginning& beginning, pendra::SingleInstance& instance) {
  auto environment = pendra::Environment::ofUser(std::move(beginning.clock), std::move(beginning.calendar));
  const pendra::ZoneFollower zone(*environment.calendar);
  pendra::Consent(environment.defaults).programStarted();
  if (!line.isDark) pendra::Theme::force(environment.defaults);
  pendra::Program program(environment);
  pendra::TimingInterface timing(
      program.session(), [&program] { return program.busyWith(); }, [&program] { return program.sendAll(); });
  pendra::TerminalInterface terminal(program.session(), [&program] { return program.busyWith(); });
  instance.offer(timing);
  instance.offer(terminal);
  instance.setOpener([&program](const pendra::StartRequest& request) { program.openFromOutside(request); });
  program.launch(line.file, beginning.ahead ? &*beginning.ahead : nullptr);
  if (line.isInPanel) program.goIntoPanel();
  program.act(line.action);
  const int status = QApplication::exec();
  return {status, program.wanted()};
}

Ended claimAndRun(const CommandLine& line, Beginning& beginning, const QString& activation) {
  using Claim = pendra::SingleInstance::Claim;
  pendra::SingleInstance instance;
  // Whoever runs may be about to write to the file that is read here.
  const Claim claim =
      instance.claim({line.file, line.action, activation}, [&beginning] { beginning.ahead.reset(); });
  if (claim == Claim::HandedOver) return {status::kDone};
  if (claim == Claim::Unanswered) {
    return {refuse(pendra::tr("the Pendra that runs already does not answer"), status::kFailed)};
  }
  return runClaimed(line, beginning, instance);
}

int runProgram(const CommandLine& line, Beginning& beginning, const QString& activation) {
  if (const auto made = makeFile(line); !made) {
    return refuse(line.file + u": " + made.error().text, status::kNoDocument);
  }
  const Ended ended = claimAndRun(line, beginning, activation);
  if (!ended.wanted) return ended.status;
  // That start was told that it is taken care of, and it is, now that document and name are free.
  QStringList arguments;
  if (!ended.wanted->action.isEmpty()) arguments << u"--" + ended.wanted->action;
  if (!ended.wanted->path.isEmpty()) arguments << ended.wanted->path;
  QProcess::startDetached(QCoreApplication::applicationFilePath(), arguments);
  return ended.status;
}

/// What everything that is drawn needs, the windows and their pictures alike.
void dress(Application& application) {
  // Without a display name: it would stand behind the title of every window.
  QApplication::setApplicationName(QStringLiteral("pendra"));
  QApplication::setApplicationVersion(pendra::shortVersion());
  QGuiApplication::setDesktopFileName(pendra::identifiers::kPendra);
  QApplication::setQuitOnLastWindowClosed(false);
  pendra::Theme::install(application);
  pendra::installComboBoxAccessibility();
}

int drawTour(int argc, char** argv, const CommandLine& line) {
  pendra::installLog();
  qputenv("QT_QPA_PLATFORM", "offscreen");
  Application application(argc, argv);
  dress(application);
  return pendra::drawTour(line.tourFolder) ? status::kDone : status::kFailed;
}

int run(int argc, char** argv, const CommandLine& line) {
  pendra::installLog();
  const QString activation = pendra::takeActivation();  // before the toolkit does
  Beginning beginning(line);
  Application application(argc, argv);
  auto asking = pendra::PortalLook::askForUser();
  beginning.fonts.wait();  // else the toolkit would read it once more
  dress(application);
  pendra::installTranslations(application, pendra::translationFolder());
  if (line.isDark) pendra::Theme::force(*line.isDark ? pendra::Appearance::Dark : pendra::Appearance::Light);
  const auto look = pendra::PortalLook::ofUser(std::move(asking));
  const auto follow = [&look] { pendra::Theme::follow(look->look()); };
  const auto following = look->changes().observe(follow);
  follow();
  return runProgram(line, beginning, activation);
}

}  // namespace

int main(int argc, char** argv) {
  // A window is waited for: nothing is made first that only a terminal's answer needs.
  const auto read = pendra::readCommandLine({argv, static_cast<std::size_t>(argc)});
  if (read && read.value().task == CommandLine::Task::Run && pendra::hasDisplay()) {
    return run(argc, argv, read.value());
  }
  const auto start = pendra::answerTerminal(argc, argv, &pendra::obey);
  // At once: a thread of the bus may still read while the statics that it needs go.
  if (const int* status = std::get_if<int>(&start)) std::quick_exit(*status);
  const auto& line = std::get<CommandLine>(start);
  return line.task == CommandLine::Task::DrawTour ? drawTour(argc, argv, line) : run(argc, argv, line);
}
