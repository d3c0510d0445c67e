#pragma once
// What is called "pendra" becomes one program after another until one can do what was asked. The first of
// them are waited for by whoever types, so this needs nothing but the C library.

#include <limits.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>

namespace pendra {

/// Under this name the terminal's program is started where what was asked got no answer: it may have been
/// done, so all that is left is to say so.
inline std::array kUnanswered = std::to_array("pendra-unanswered");

/// Becomes the program that lies at `path` from the folder of this one. Returns, with `errno`, where that
/// cannot be started.
inline void become(const char* path, char** arguments) {
  std::array<char, PATH_MAX> program{};  // what is not written to ends the text
  const ssize_t length = ::readlink("/proc/self/exe", program.data(), program.size() - 1);
  if (length < 0) return;
  char* const name = std::strrchr(program.data(), '/') + 1;
  const auto room = static_cast<std::size_t>(program.data() + program.size() - name);
  if (std::strlen(path) >= room) {
    errno = ENAMETOOLONG;
    return;
  }
  std::strcpy(name, path);
  ::execv(program.data(), arguments);
}

}  // namespace pendra
