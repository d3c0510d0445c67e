#pragma once
// A file that people trust is never seen half written: whatever is put under a name is first made whole
// beside it, brought to the disk and checked, and only then gets the name.

#include <QString>
#include <functional>

#include "platform/Result.h"

namespace pendra {

/// The system's own words for the error of the call that has just failed.
Error systemError(int code);

/// `base` and `extension`, with the first number from 1 upward between them whose file does not exist
/// when the plain name is taken: "%@.pdr", "%@1.pdr", ... ("%@%d.pdr").
QString firstFreePath(const QString& base, const QString& extension);

/// The pattern of a passing name beside `path`, for what will get its name once it is whole.
QString draftFor(const QString& path);

/// Moves a file to a name that must be free; unlike a plain rename it never replaces what stands there.
Result<void> moveToFreeName(const QString& from, const QString& to);

/// Gives a file another name; what had that name is no more.
Result<void> moveInPlaceOf(const QString& from, const QString& to);

/// Whether two paths lead to one file, by whatever names.
bool isSameFile(const QString& one, const QString& other);

/// What becomes of a file that already has the name.
enum class Existing { Keep, Replace };

/// Copies a file byte for byte, to a name of its own until it is as long as its source, on the disk, and
/// `isWhole` has agreed; then it gets the name. A copy that fails leaves everything as it was.
Result<void> copyFile(const QString& from, const QString& to, Existing existing,
                      const std::function<Result<void>(const QString& copy)>& isWhole = {});

}  // namespace pendra
