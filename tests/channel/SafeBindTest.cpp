#include <fcntl.h>
#include <gtest/gtest.h>

#include <cerrno>

#include "Fixtures.h"
#include "channel/MoreUNIXErrno.h"
#include "channel/SafeBindUnixDomainSocket.h"
#include "support/Rows.h"

namespace pendra {
namespace {

/// A bind in a folder that was prepared in some way. "%" stands for the test's own folder.
struct Bind {
  const char* name;
  std::function<void(const char* parent)> prepare;
  std::string path;
  int result;
  std::string complaint;
};
void PrintTo(const Bind& row, std::ostream* out) { *out << row.name; }

std::string filled(std::string text, const std::string& folder) {
  if (const auto at = text.find('%'); at != std::string::npos) text.replace(at, 1, folder);
  return text;
}

class SafeBind : public testing::TestWithParam<Bind> {};

TEST_P(SafeBind, AnswersAnErrnoAndComplains) {
  const Bind& row = GetParam();
  const QTemporaryDir folder(QStringLiteral("/tmp/bindXXXXXX"));
  const std::string root = folder.path().toStdString();
  if (row.prepare) row.prepare((root + "/s").c_str());
  const mode_t strange = umask(0123);
  const Descriptor socket(::socket(AF_UNIX, SOCK_DGRAM, 0));
  testing::internal::CaptureStderr();
  const int result =
      SafeBindUnixDomainSocket(socket.get(), QByteArray::fromStdString(filled(row.path, root)));
  const std::string complaint = testing::internal::GetCapturedStderr();
  const mode_t after = umask(strange);
  EXPECT_EQ(result, row.result);
  EXPECT_EQ(complaint, filled(row.complaint, root));
  EXPECT_EQ(after, mode_t{0123});
}

const std::string kComplaint = "SafeBindUnixDomainSocket: ";

INSTANTIATE_TEST_SUITE_P(
    Folders, SafeBind,
    testing::Values(
        Bind{"MakesTheFolder", {}, "%/s/x", 0, ""},
        Bind{"RemovesWhatIsThere",
             [](const char* parent) {
               mkdir(parent, 0755);
               close(creat((std::string(parent) + "/x").c_str(), 0600));
             },
             "%/s/x", 0, ""},
        Bind{"AsLongAsCanBe", {}, "%/s/" + std::string(103 - 18, 'x'), 0, ""},
        Bind{"TooLong", {}, "%/s/" + std::string(104 - 18, 'x'), EINVAL, ""},
        Bind{"NoParent", {}, "socket", EINVAL, kComplaint + "Can't get parent for path (socket).\n"},
        Bind{"NoGrandparent",
             {},
             "s/socket",
             EINVAL,
             kComplaint + "Can't get grandparent for path (s/socket).\n"},
        Bind{"NoFolderForTheFolder", {}, "%/none/s/x", ENOENT, ""},
        Bind{"Private", [](const char* parent) { mkdir(parent, 0700); }, "%/s/x", EINVAL,
             kComplaint + "Parent (%/s) has wrong permissions.\n"},
        Bind{"NoFolder", [](const char* parent) { close(creat(parent, 0755)); }, "%/s/x", EINVAL,
             kComplaint + "Parent (%/s) is not a directory.\n"}),
    RowName());

TEST(SafeBind, NeedsAFolderOfOurOwn) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can give a folder away";
  const SocketFolder folder;
  const QByteArray path = folder.bytes("x");
  const QByteArray parent = path.left(path.lastIndexOf('/'));
  ASSERT_EQ(chown(parent.constData(), 65534, 65534), 0);
  testing::internal::CaptureStderr();
  EXPECT_EQ(SafeBindUnixDomainSocket(-1, path), EINVAL);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            kComplaint + "Parent (" + parent.toStdString() + ") is not owned by us.\n");
}

TEST(MoreUNIXErrno, IsZeroUnlessTheCallFailed) {
  errno = EIO;
  EXPECT_EQ(MoreUNIXErrno(0), 0);
  EXPECT_EQ(MoreUNIXErrno(3), 0);
  EXPECT_EQ(MoreUNIXErrno(-1), EIO);
}

TEST(IPCMgr, CannotBeMadeWithoutItsFolder) {
  const auto made = IPCMgr::initForPath(QStringLiteral("/x/y"), kTestProtocol,
                                        QStringLiteral("/tmp/s/") + QString(100, u'x'), {});
  ASSERT_FALSE(made);
  EXPECT_EQ(made.error().domain, QStringLiteral("POSIX"));
  EXPECT_EQ(made.error().code, EINVAL);
}

}  // namespace
}  // namespace pendra
