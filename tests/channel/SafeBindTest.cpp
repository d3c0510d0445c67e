#include <fcntl.h>

#include "Fixtures.h"
#include "support/Rows.h"

namespace pendra {
namespace {

/// A bind in a folder that was prepared in some way. "%" stands for the test's own folder.
struct Bind {
  const char* name;
  std::function<void(const char* parent)> prepare;
  std::string path;
  const char* failure;  ///< what a person is told; null when it succeeds
  std::string complaint;
};
void PrintTo(const Bind& row, std::ostream* out) { *out << row.name; }

std::string filled(std::string text, const std::string& folder) {
  if (const auto at = text.find('%'); at != std::string::npos) text.replace(at, 1, folder);
  return text;
}

class SafeBind : public testing::TestWithParam<Bind> {};

TEST_P(SafeBind, AnswersTheReasonAndComplains) {
  const Bind& row = GetParam();
  const QTemporaryDir folder(QStringLiteral("/tmp/bindXXXXXX"));
  const std::string root = folder.path().toStdString();
  if (row.prepare) row.prepare((root + "/s").c_str());
  const mode_t strange = umask(0123);
  testing::internal::CaptureStderr();
  const auto bound = CallingEnd::bound({}, QString::fromStdString(filled(row.path, root)));
  const std::string complaint = testing::internal::GetCapturedStderr();
  EXPECT_EQ(umask(strange), mode_t{0123});
  EXPECT_EQ(static_cast<bool>(bound), row.failure == nullptr);
  if (row.failure) {
    EXPECT_EQ(bound.error().text.toStdString(), filled(row.failure, root));
  }
  EXPECT_EQ(complaint, filled(row.complaint, root));
}

const std::string kComplaint = "SafeBindUnixDomainSocket: ";

INSTANTIATE_TEST_SUITE_P(
    Folders, SafeBind,
    testing::Values(
        Bind{"MakesTheFolder", {}, "%/s/x", nullptr, ""},
        Bind{"RemovesWhatIsThere",
             [](const char* parent) {
               mkdir(parent, 0755);
               close(creat((std::string(parent) + "/x").c_str(), 0600));
             },
             "%/s/x", nullptr, ""},
        Bind{"AsLongAsCanBe", {}, "%/s/" + std::string(103 - 18, 'x'), nullptr, ""},
        Bind{"TooLong",
             {},
             "/tmp/s/" + std::string(97, 'x'),
             "the path "
             "“/tmp/s/xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx"
             "xxxxxxxxxxxxxx” is too long for a socket",
             ""},
        Bind{"NoParent",
             {},
             "socket",
             "the path “socket” names no folder",
             kComplaint + "Can't get parent for path (socket).\n"},
        Bind{"NoGrandparent",
             {},
             "s/socket",
             "the path “s/socket” names no folder",
             kComplaint + "Can't get grandparent for path (s/socket).\n"},
        Bind{"NoFolderForTheFolder", {}, "%/none/s/x", "No such file or directory", ""},
        Bind{"Private", [](const char* parent) { mkdir(parent, 0700); }, "%/s/x",
             "the permissions of the folder “%/s” are not 755",
             kComplaint + "Parent (%/s) has wrong permissions.\n"},
        Bind{"Foreign",
             [](const char* parent) {
               mkdir(parent, 0755);
               EXPECT_EQ(chown(parent, 65534, 65534), geteuid() == 0 ? 0 : -1);
             },
             "%/s/x", geteuid() == 0 ? "the folder “%/s” belongs to another user" : nullptr,
             geteuid() == 0 ? kComplaint + "Parent (%/s) is not owned by us.\n" : ""},
        Bind{"NoFolder", [](const char* parent) { close(creat(parent, 0755)); }, "%/s/x",
             "“%/s” is no folder", kComplaint + "Parent (%/s) is not a directory.\n"}),
    RowName());

}  // namespace
}  // namespace pendra
