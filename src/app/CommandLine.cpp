#include "CommandLine.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <QStringDecoder>

#include "platform/Text.h"
#include "platform/Translation.h"

namespace pendra {

QString usage() {
  return tr(
      "Usage: pendra [--appearance light|dark] [--in-panel] [--quick-entry | --stop-all] [FILE]\n"
      "       pendra --new FILE\n"
      "       pendra --tour DIR\n"
      "       pendra COMMAND [--json] [--document FILE]\n"
      "Keeps track of the time you work for your customers.\n\n"
      "  FILE                  a document (.pdr) or a backup (.pdrbackup) to open\n"
      "  --new FILE            make that document and open it\n"
      "  --appearance A        light or dark, whatever the desktop says\n"
      "  --in-panel            begin without a window where the desktop has a panel\n"
      "  --quick-entry         have the cursor in the quick entry\n"
      "  --stop-all            stop all that runs, with the windows left where they are\n"
      "  --tour DIR            draw every window, and a day, into pictures in that folder; needs no display\n"
      "  --version, --help     print and end\n"
      "  --                    what follows is a FILE, whatever it begins with\n\n"
      "Commands, for the document that was open last or the one that --document names:\n\n"
      "  status                what runs, and the hours of today and this week\n"
      "  log                   the entries; --from DAY, --to DAY, --customer NAME, --unsent\n"
      "  report                sums of hours; --from DAY, --to DAY, --by customer,job,service,day\n"
      "  start NAME            start the one activity that matches: words of its names and notes\n"
      "  stop [NAME]           stop it, or all that run\n"
      "  add TEXT              what the quick entry does with it: \"Acme: Design - sketches 90m\"; --create\n"
      "  export FILE           write every entry to a new file\n"
      "  backup FILE           copy the document to a new file\n"
      "  send                  send to Vantor what is not sent; nothing where something would be asked\n"
      "  --json                answer for other programs\n");
}

namespace {

struct Options {
  QCommandLineOption help{QStringLiteral("help")};
  QCommandLineOption version{QStringLiteral("version")};
  QCommandLineOption appearance{QStringLiteral("appearance"), {}, QStringLiteral("A")};
  QCommandLineOption newFile{QStringLiteral("new"), {}, QStringLiteral("FILE")};
  QCommandLineOption tour{QStringLiteral("tour"), {}, QStringLiteral("DIR")};
  QCommandLineOption inPanel{QStringLiteral("in-panel")};
  QCommandLineOption quickEntry{actions::kQuickEntry};
  QCommandLineOption stopAll{actions::kStopAll};

  void addTo(QCommandLineParser& parser) const {
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    parser.addOptions({help, version, appearance, newFile, tour, inPanel, quickEntry, stopAll});
    // The toolkit's own, one of which a session manager gives when it starts the program again.
    for (const char* name : {"session", "platform", "style", "display", "geometry", "qwindowgeometry"}) {
      parser.addOption({QString::fromLatin1(name), {}, QStringLiteral("VALUE")});
    }
  }
};

Error wrongUsage(const QString& text) {
  return {QStringLiteral("command line"), status::kWrongUsage,
          formatted(tr("%@ (pendra --help says what can be asked)"), {text})};
}

Error noDocument(QStringView text, const QString& file) {
  return {QStringLiteral("command line"), status::kNoDocument, formatted(text, {file})};
}

Result<QStringList> textsOf(std::span<const char* const> arguments) {
  QStringList texts;
  for (const char* argument : arguments) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder.decode(QByteArrayView(argument));
    if (decoder.hasError()) {
      return noDocument(tr("the name “%@” is not UTF-8; nothing was opened"), text);
    }
    texts << text;
  }
  return texts;
}

QString whatIsWrong(const QCommandLineParser& parser) {
  if (const QStringList unknown = parser.unknownOptionNames(); !unknown.isEmpty()) {
    return formatted(tr("unknown option --%@"), {unknown.front()});
  }
  return parser.errorText();
}

Result<std::optional<bool>> darknessOf(const QString& name) {
  if (name.isEmpty()) return std::optional<bool>();
  if (name == u"light" || name == u"dark") return std::optional(name == u"dark");
  return wrongUsage(formatted(tr("the appearance is light or dark, not “%@”"), {name}));
}

Result<CommandLine> checkFile(CommandLine line, const QString& file) {
  if (file.isEmpty()) return line;
  line.file = QFileInfo(file).absoluteFilePath();
  const bool exists = QFileInfo::exists(line.file);
  if (line.isNewFile && exists) return noDocument(tr("“%@” exists already and was left alone"), line.file);
  if (!line.isNewFile && !exists) {
    return noDocument(tr("“%@” does not exist; pendra --new makes a document"), line.file);
  }
  if (QFileInfo(line.file).isDir()) return noDocument(tr("“%@” is a folder, and no document"), line.file);
  return line;
}

}  // namespace

bool hasDisplay() {
  return qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
         qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
}

Result<CommandLine> readCommandLine(std::span<const char* const> arguments) {
  const auto texts = textsOf(arguments);
  if (!texts) return texts.error();
  const QStringList words = texts.value().mid(0, texts.value().indexOf(u"--", 1));
  if (!words.contains(u"--help") && !words.contains(u"--version")) {
    const auto order = readOrder(texts.value());
    if (!order) return order.error();
    if (order.value()) return CommandLine{.task = CommandLine::Task::Obey, .order = *order.value()};
  }
  const Options options;
  QCommandLineParser parser;
  options.addTo(parser);
  const bool understood = parser.parse(texts.value());
  if (parser.isSet(options.help)) return CommandLine{.task = CommandLine::Task::SayHelp};
  if (parser.isSet(options.version)) return CommandLine{.task = CommandLine::Task::SayVersion};
  if (!understood) return wrongUsage(whatIsWrong(parser));
  const auto isDark = darknessOf(parser.value(options.appearance));
  if (!isDark) return isDark.error();
  CommandLine line{.isDark = isDark.value()};
  if (parser.isSet(options.tour)) {
    line.task = CommandLine::Task::DrawTour;
    line.tourFolder = parser.value(options.tour);
  }
  line.isNewFile = parser.isSet(options.newFile);
  line.isInPanel = parser.isSet(options.inPanel);
  if (parser.isSet(options.quickEntry)) line.action = actions::kQuickEntry;
  if (parser.isSet(options.stopAll)) line.action = actions::kStopAll;
  const QStringList files = parser.values(options.newFile) + parser.positionalArguments();
  if (files.size() > 1 && !QFileInfo::exists(files.front())) {
    return wrongUsage(formatted(tr("“%@” is neither a command nor a document"), {files.front()}));
  }
  if (files.size() > 1) return wrongUsage(tr("one document at a time"));
  return checkFile(line, files.value(0));
}

}  // namespace pendra
