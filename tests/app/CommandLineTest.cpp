#include "CommandLine.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "support/Rows.h"
#include "support/TestPlaces.h"

namespace pendra {
namespace {

using Task = CommandLine::Task;

struct Given {
  const char* name;
  std::vector<const char*> arguments;
  int status;             ///< 0: it is understood
  const char* says = "";  ///< what the refusal has in it, or the file's name
  Task task = Task::Run;
  bool isNewFile = false;
};

class CommandLines : public testing::TestWithParam<Given> {};

TEST_P(CommandLines, AreTakenOrRefusedInOneLine) {
  const Given& given = GetParam();
  const TestPlaces places;
  QDir::setCurrent(places.documents);
  for (const char* file : {"day.pdr", "--hlep"}) EXPECT_TRUE(QFile(file).open(QIODevice::WriteOnly));
  std::vector<const char*> arguments{"pendra"};
  arguments.insert(arguments.end(), given.arguments.begin(), given.arguments.end());
  const auto read = readCommandLine(arguments);
  QDir::setCurrent(QDir::rootPath());
  if (!read) {
    EXPECT_EQ(read.error().code, given.status) << read.error().text.toStdString();
    EXPECT_TRUE(read.error().text.contains(given.says)) << read.error().text.toStdString();
    EXPECT_FALSE(read.error().text.contains(u'\n'));
    return;
  }
  EXPECT_EQ(given.status, 0) << "it was not refused";
  const QString file = *given.says ? places.documents + u'/' + given.says : QString();
  EXPECT_EQ(read.value().file, file);
  EXPECT_EQ(read.value().task, given.task);
  EXPECT_EQ(read.value().isNewFile, given.isNewFile);
}

INSTANTIATE_TEST_SUITE_P(
    Given, CommandLines,
    testing::Values(Given{"Nothing", {}, 0}, Given{"File", {"day.pdr"}, 0, "day.pdr"},
                    Given{"MistypedOption", {"--hlep"}, 2, "--hlep"},
                    Given{"FileLikeAnOption", {"--", "--hlep"}, 0, "--hlep"},
                    Given{"Help", {"--help", "--hlep"}, 0, "", Task::SayHelp},
                    Given{"HelpOfACommand", {"start", "--help"}, 0, "", Task::SayHelp},
                    Given{"Version", {"day.pdr", "--version"}, 0, "", Task::SayVersion},
                    Given{"Tour", {"--tour", "album"}, 0, "", Task::DrawTour},
                    Given{"TourWithoutFolder", {"--tour"}, 2},
                    Given{"UnknownLook", {"--appearance", "blue"}, 2, "blue"},
                    Given{"SessionManager", {"-session", "1f_2", "day.pdr"}, 0, "day.pdr"},
                    Given{"MissingFile", {"typo.txt"}, 4, "typo.txt"},
                    Given{"NewFile", {"--new", "next.pdr"}, 0, "next.pdr", Task::Run, true},
                    Given{"NewFileThatExists", {"--new", "day.pdr"}, 4, "exists already"},
                    Given{"TwoFiles", {"day.pdr", "day.pdr"}, 2, "one document"},
                    Given{"NoCommand", {"strat", "acme"}, 2, "strat"}, Given{"Folder", {"."}, 4, "folder"},
                    Given{"NotText", {"caf\xe9.pdr"}, 4, "UTF-8"}),
    RowName());

}  // namespace
}  // namespace pendra
