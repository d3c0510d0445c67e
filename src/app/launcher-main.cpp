// What is called "pendra". It does nothing itself but choose who answers, and is linked with nothing but the
// C library: whoever types waits for that choice, and so does whoever clicks.

#include <algorithm>
#include <array>
#include <cstdio>
#include <span>
#include <string_view>

#include "Becoming.h"

namespace {

constexpr const char* kWindows = "../libexec/pendra/pendra-windows";
constexpr const char* kAsk = "../libexec/pendra/pendra-ask";
constexpr const char* kTerminal = "../libexec/pendra/pendra-terminal";

/// A start without a word, or with the path that a desktop hands over, is none that a terminal waits for.
bool isFromTheDesktop(std::span<char* const> words) {
  return words.empty() || (words.size() == 1 && words.front()[0] == '/');
}

/// A change that the Pendra that runs can be asked for as it stands, in any folder: without an option but the
/// form of the answer.
bool isForTheRunning(std::span<char* const> words) {
  constexpr std::array<std::string_view, 3> kChanges{"start", "stop", "add"};
  return !words.empty() && std::find(kChanges.begin(), kChanges.end(), words.front()) != kChanges.end() &&
         std::all_of(words.begin() + 1, words.end(),
                     [](const std::string_view word) { return !word.starts_with('-') || word == "--json"; });
}

}  // namespace

int main(int argc, char** argv) {
  const std::span<char* const> words(argv + 1, static_cast<std::size_t>(argc - 1));
  if (isFromTheDesktop(words)) pendra::become(kWindows, argv);
  if (isForTheRunning(words)) pendra::become(kAsk, argv);
  pendra::become(kTerminal, argv);  // for everything else
  std::perror("pendra");
  return 1;
}
