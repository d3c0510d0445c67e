#include <unistd.h>

#include <QGuiApplication>
#include <QJsonDocument>
#include <QSocketNotifier>
#include <QWebEngineProfile>
#include <cstdio>

#include "ScriptPage.h"

namespace {

/// Needs no display, no graphics driver and, when run by root, no sandbox, which the engine refuses then.
void prepareEnvironment() {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QTWEBENGINE_CHROMIUM_FLAGS", "--disable-gpu");
  if (geteuid() == 0) qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
}

void writeLine(const QJsonObject& event) {
  const QByteArray line = QJsonDocument(event).toJson(QJsonDocument::Compact) + '\n';
  std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stdout);
  std::fflush(stdout);
}

/// Reads what has come. False at the end of the input.
bool readInput(QByteArray& input) {
  std::array<char, 4096> bytes{};
  const auto count = ::read(STDIN_FILENO, bytes.data(), bytes.size());
  if (count > 0) input.append(bytes.data(), count);
  return count > 0;
}

void handleLines(QByteArray& input, pendra::ScriptPage& page) {
  for (qsizetype end = input.indexOf('\n'); end >= 0; end = input.indexOf('\n')) {
    page.handle(QJsonDocument::fromJson(input.first(end)).object());
    input.remove(0, end + 1);
  }
}

}  // namespace

int main(int argc, char** argv) {
  prepareEnvironment();
  const QGuiApplication application(argc, argv);
  QWebEngineProfile profile;  // without a name: leaves nothing on the disk
  pendra::ScriptPage page(&profile, writeLine);

  QByteArray input;
  QSocketNotifier notifier(STDIN_FILENO, QSocketNotifier::Read);
  QObject::connect(&notifier, &QSocketNotifier::activated, &page, [&] {
    if (!readInput(input)) QCoreApplication::quit();
    handleLines(input, page);
  });
  return QCoreApplication::exec();
}
