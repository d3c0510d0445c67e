#pragma once
// A file that people trust is never seen half written: whatever is put under a name is first made whole
// beside it, brought to the disk and checked, and only then gets the name.

#include <QByteArrayView>
#include <QString>
#include <functional>
#include <memory>

#include "platform/Result.h"

class QTemporaryFile;

namespace pendra {

/// The system's own words for the error of the call that has just failed.
Error systemError(int code);

/// `base` and `extension`, with the first number from 1 upward between them whose file does not exist
/// when the plain name is taken: "%@.pdr", "%@1.pdr", ... ("%@%d.pdr").
QString firstFreePath(const QString& base, const QString& extension);

/// Where the file of that path lies, or would lie: links are followed, also one that leads to nothing.
QString realPath(const QString& path);

/// Moves a file to a name that must be free; unlike a plain rename it never replaces what stands there.
Result<void> moveToFreeName(const QString& from, const QString& to);

/// Whether two paths lead to one file, by whatever names.
bool isSameFile(const QString& one, const QString& other);

/// What becomes of a file that already has the name.
enum class Existing { Keep, Replace };

/// What will get its name once it is whole. Until then it has a passing name beside its place, and it is gone
/// when this dies before.
class Draft {
 public:
  /// Where a link leads is the place. What has the name already gives its mode; a new file has the usual one.
  explicit Draft(const QString& place);
  ~Draft();
  Draft(const Draft&) = delete;
  Draft& operator=(const Draft&) = delete;

  /// Refuses a place where something stands that is no file, as a device.
  Result<void> open();
  [[nodiscard]] QString name() const;
  void setMode(unsigned mode) { mode_ = mode; }
  /// Writes all of it, or says why it came out short.
  Result<void> write(QByteArrayView bytes);
  /// Brings it to the disk, gives it the name and brings that to the disk, too.
  Result<void> finish(Existing existing);

 private:
  QString place_;
  unsigned mode_;
  std::unique_ptr<QTemporaryFile> file_;
};

/// Whether the path is one of a draft.
bool isDraft(const QString& path);
/// Removes the drafts that killed programs have left in a folder. One that was written to within the hour may
/// still be at work.
void removeAbandonedDrafts(const QString& folder);

/// Writes a file anew.
Result<void> writeWhole(const QString& path, QByteArrayView bytes);

/// Copies a file byte for byte, to a name of its own until it is as long as its source, on the disk, and
/// `isWhole` has agreed; then it gets the name. A copy that fails leaves everything as it was.
Result<void> copyFile(const QString& from, const QString& to, Existing existing,
                      const std::function<Result<void>(const QString& copy)>& isWhole = {});

}  // namespace pendra
