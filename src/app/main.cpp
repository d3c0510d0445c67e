#include <QApplication>
#include <QFileInfo>
#include <cstdio>
#include <span>
#include <string_view>

#include "Program.h"
#include "analytics/Consent.h"
#include "platform/Identifiers.h"
#include "platform/Log.h"
#include "platform/SingleInstance.h"
#include "tour/Tour.h"
#include "ui/Accessibility.h"
#include "ui/Theme.h"

namespace {

constexpr std::string_view kUsage =
    "Usage: pendra [--appearance light|dark] [FILE]\n"
    "       pendra --tour DIR\n"
    "Keeps track of the time you work for your customers.\n\n"
    "  FILE                  a document (.pdr) or a backup (.pdrbackup) to open\n"
    "  --appearance A        light or dark, whatever the desktop says\n"
    "  --tour DIR            draw every window into a picture in that folder; needs no display\n"
    "  --version, --help     print and end\n";

struct Arguments {
  std::string_view appearance;
  QString file;
  QString tour;  ///< the folder for the pictures; empty: no tour
};

/// Answers what can be answered without a display; -1 to go on.
int answerWithoutDisplay(int argc, char** argv) {
  for (const std::string_view argument : std::span(argv, static_cast<std::size_t>(argc)).subspan(1)) {
    if (argument == "--version") return std::puts("pendra " PENDRA_VERSION) < 0;
    if (argument == "--help") return std::fputs(kUsage.data(), stdout) < 0;
    if (argument == "--tour") qputenv("QT_QPA_PLATFORM", "offscreen");
  }
  const bool hasDisplay = qEnvironmentVariableIsSet("DISPLAY") ||
                          qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
                          qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
  if (hasDisplay) return -1;
  std::fputs(
      "pendra: there is no display to open a window on; ./pendra --tour DIR draws the windows into DIR\n",
      stderr);
  return 2;
}

Arguments read(const QStringList& list) {
  Arguments arguments;
  for (qsizetype i = 1; i < list.size(); ++i) {
    if (list[i] == u"--appearance" && i + 1 < list.size()) {
      arguments.appearance = list[++i] == u"dark" ? "dark" : "light";
    } else if (list[i] == u"--tour" && i + 1 < list.size()) {
      arguments.tour = list[++i];
    } else {
      arguments.file = QFileInfo(list[i]).absoluteFilePath();
    }
  }
  return arguments;
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

int runProgram(const QString& file) {
  pendra::SingleInstance instance;
  if (!instance.claim(file)) return 0;
  auto environment = pendra::Environment::ofUser();
  pendra::Consent(environment.defaults).programStarted();
  pendra::Program delegate(environment);
  instance.setOpener([&delegate](const QString& path) { delegate.openFromOutside(path); });
  delegate.launch(file);
  return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
  if (const int status = answerWithoutDisplay(argc, argv); status >= 0) return status;
  pendra::installLog();
  Application application(argc, argv);
  // Without a display name: it would stand behind the title of every window.
  QApplication::setApplicationName(QStringLiteral("pendra"));
  QApplication::setApplicationVersion(QStringLiteral(PENDRA_VERSION));
  QGuiApplication::setDesktopFileName(pendra::identifiers::kPendra);
  QApplication::setQuitOnLastWindowClosed(false);
  const Arguments arguments = read(QApplication::arguments());
  pendra::Theme::install(application);
  pendra::installComboBoxAccessibility();
  if (!arguments.tour.isEmpty()) return pendra::drawTour(arguments.tour) ? 0 : 1;
  if (!arguments.appearance.empty()) {
    pendra::Theme::force(arguments.appearance == "dark" ? pendra::Appearance::Dark
                                                        : pendra::Appearance::Light);
  }
  return runProgram(arguments.file);
}
