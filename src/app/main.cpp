// The program with the windows, which "pendra" becomes where a terminal's answer is not enough.

#include <QApplication>
#include <QProcess>

#include "Program.h"
#include "Terminal.h"
#include "analytics/Consent.h"
#include "orders/TimingInterface.h"
#include "platform/DesktopLook.h"
#include "platform/Identifiers.h"
#include "platform/Log.h"
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

Ended runClaimed(const CommandLine& line, pendra::SingleInstance& instance) {
  auto environment = pendra::Environment::ofUser();
  const pendra::ZoneFollower zone(environment.calendar);
  pendra::Consent(environment.defaults).programStarted();
  if (!line.isDark) pendra::Theme::force(environment.defaults);
  pendra::Program program(environment);
  pendra::TimingInterface timing(
      program.session(), [&program] { return program.busyWith(); }, [&program] { return program.sendAll(); });
  instance.offer(timing);
  instance.setOpener([&program](const pendra::StartRequest& request) { program.openFromOutside(request); });
  program.launch(line.file);
  if (line.isInPanel) program.goIntoPanel();
  program.act(line.action);
  const int status = QApplication::exec();
  return {status, program.wanted()};
}

Ended claimAndRun(const CommandLine& line, const QString& activation) {
  using Claim = pendra::SingleInstance::Claim;
  pendra::SingleInstance instance;
  const Claim claim = instance.claim({line.file, line.action, activation});
  if (claim == Claim::HandedOver) return {status::kDone};
  if (claim == Claim::Unanswered) {
    return {refuse(pendra::tr("the Pendra that runs already does not answer"), status::kFailed)};
  }
  return runClaimed(line, instance);
}

int runProgram(const CommandLine& line, const QString& activation) {
  if (const auto made = makeFile(line); !made) {
    return refuse(line.file + u": " + made.error().text, status::kNoDocument);
  }
  const Ended ended = claimAndRun(line, activation);
  if (!ended.wanted) return ended.status;
  // That start was told that it is taken care of, and it is, now that document and name are free.
  QStringList arguments;
  if (!ended.wanted->action.isEmpty()) arguments << u"--" + ended.wanted->action;
  if (!ended.wanted->path.isEmpty()) arguments << ended.wanted->path;
  QProcess::startDetached(QCoreApplication::applicationFilePath(), arguments);
  return ended.status;
}

}  // namespace

int main(int argc, char** argv) {
  const auto start = pendra::answerTerminal(argc, argv);
  if (const int* status = std::get_if<int>(&start)) return *status;
  const auto& line = std::get<CommandLine>(start);
  const bool draws = line.task == CommandLine::Task::DrawTour;
  if (draws) qputenv("QT_QPA_PLATFORM", "offscreen");
  pendra::installLog();
  const QString activation = pendra::takeActivation();  // before the toolkit does
  Application application(argc, argv);
  // Without a display name: it would stand behind the title of every window.
  QApplication::setApplicationName(QStringLiteral("pendra"));
  QApplication::setApplicationVersion(pendra::shortVersion());
  QGuiApplication::setDesktopFileName(pendra::identifiers::kPendra);
  QApplication::setQuitOnLastWindowClosed(false);
  pendra::Theme::install(application);
  pendra::installComboBoxAccessibility();
  if (draws) return pendra::drawTour(line.tourFolder) ? status::kDone : status::kFailed;
  pendra::installTranslations(application, pendra::translationFolder());
  if (line.isDark) pendra::Theme::force(*line.isDark ? pendra::Appearance::Dark : pendra::Appearance::Light);
  const auto look = pendra::PortalLook::ofUser();
  const auto follow = [&look] { pendra::Theme::follow(look->look()); };
  const auto following = look->changes().observe(follow);
  follow();
  return runProgram(line, activation);
}
