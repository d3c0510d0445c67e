#include "Terminal.h"

#include <QCoreApplication>
#include <algorithm>
#include <cstdio>

#include "Becoming.h"
#include "orders/Said.h"
#include "platform/Log.h"
#include "platform/Resources.h"
#include "platform/Translation.h"
#include "platform/Version.h"

namespace pendra {

namespace {

int print(const QByteArray& text) {
  return std::fputs(text.constData(), stdout) < 0 || std::fflush(stdout) != 0 ? status::kFailed
                                                                              : status::kDone;
}

/// What cannot be done is answered in the form that was asked for.
int refuseLine(const Error& error, std::span<const char* const> arguments) {
  if (error.domain != u"order") return refuse(error.text, error.code);
  return show(said(error, std::any_of(arguments.begin(), arguments.end(), [](const char* argument) {
                     return qstrcmp(argument, "--json") == 0;
                   })));
}

}  // namespace

int refuse(const QString& why, int status) {
  std::fprintf(stderr, "pendra: %s\n", qUtf8Printable(why));
  return status;
}

std::variant<int, CommandLine> answerTerminal(int argc, char** argv, const Obey& obey) {
  QCoreApplication application(argc, argv);  // gone before one with windows comes
  installTranslations(application, translationFolder());
  const std::span<const char* const> arguments{argv, static_cast<std::size_t>(argc)};
  if (qstrcmp(argv[0], kUnanswered.data()) == 0) return refuseLine(unanswered(), arguments);
  const auto read = readCommandLine(arguments);
  if (!read) return refuseLine(read.error(), arguments);
  const CommandLine& line = read.value();
  switch (line.task) {
    case CommandLine::Task::SayVersion:
      return print("pendra " + shortVersion().toUtf8() + '\n');
    case CommandLine::Task::SayHelp:
      return print(usage().toUtf8());
    case CommandLine::Task::Obey: {
      installLog();
      const auto answer = obey(line.order);
      if (answer) return show(said(line.order, *answer));
      return line;
    }
    case CommandLine::Task::DrawTour:
      return line;
    case CommandLine::Task::Run:
      break;
  }
  if (hasDisplay()) return line;
  return refuse(tr("there is no display to open a window on; ./pendra --tour DIR draws the "
                   "windows into DIR"),
                status::kWrongUsage);
}

}  // namespace pendra
