#pragma once

namespace pendra {

/// The errno value of a system call's result: 0 when the result is not negative.
[[nodiscard]] int MoreUNIXErrno(int result);

}  // namespace pendra
