// Has the Pendra that runs do what a command says and prints its answer: a pipe, which decides nothing. It is
// linked with the one library that it asks with, because scripts and keys start and stop timers and wait for
// that.

#include <systemd/sd-bus.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "Becoming.h"

namespace {

/// As long as a document may take to be read.
constexpr std::uint64_t kPatience = 30'000'000;  // microseconds

enum class Outcome {
  Answered,
  NotAsked,  ///< nobody has heard of it, so it can be done in another way
  Unknown,   ///< it may have been done, and must not be done again
};

using Bus = std::unique_ptr<sd_bus, decltype(&sd_bus_unref)>;
using Message = std::unique_ptr<sd_bus_message, decltype(&sd_bus_message_unref)>;

/// The session bus, once it has let us in.
Bus sessionBus() {
  sd_bus* opened = nullptr;
  if (sd_bus_open_user(&opened) < 0) return {nullptr, &sd_bus_unref};
  Bus bus(opened, &sd_bus_unref);
  const char* name = nullptr;
  if (sd_bus_get_unique_name(opened, &name) < 0) bus.reset();
  return bus;
}

/// The call; none where the words are not all UTF-8, which alone can travel.
Message callWith(sd_bus* bus, char** words) {
  sd_bus_message* made = nullptr;
  if (sd_bus_message_new_method_call(bus, &made, "com.corvel.pendra", "/com/corvel/pendra",
                                     "com.corvel.pendra.Terminal1", "Obey") < 0) {
    return {nullptr, &sd_bus_message_unref};
  }
  Message call(made, &sd_bus_message_unref);
  if (sd_bus_message_set_auto_start(made, 0) < 0 || sd_bus_message_append_strv(made, words) < 0) call.reset();
  return call;
}

/// Whether the call came to nobody, or to a Pendra of another version.
bool isUnheard(const sd_bus_error& error) {
  constexpr std::array kUnheard{SD_BUS_ERROR_NAME_HAS_NO_OWNER, SD_BUS_ERROR_SERVICE_UNKNOWN,
                                SD_BUS_ERROR_UNKNOWN_OBJECT, SD_BUS_ERROR_UNKNOWN_INTERFACE,
                                SD_BUS_ERROR_UNKNOWN_METHOD};
  return std::any_of(kUnheard.begin(), kUnheard.end(),
                     [&](const char* name) { return sd_bus_error_has_name(&error, name); });
}

Outcome ask(char** words, int& status) {
  const Bus bus = sessionBus();
  if (!bus) return Outcome::NotAsked;
  const Message call = callWith(bus.get(), words);
  if (!call) return Outcome::NotAsked;
  sd_bus_error error = SD_BUS_ERROR_NULL;
  sd_bus_message* reply = nullptr;
  if (sd_bus_call(bus.get(), call.get(), kPatience, &error, &reply) < 0) {
    return isUnheard(error) ? Outcome::NotAsked : Outcome::Unknown;
  }
  std::int32_t ended = 0;
  const char* printed = nullptr;
  const char* refused = nullptr;
  if (sd_bus_message_read(reply, "iss", &ended, &printed, &refused) < 0) return Outcome::Unknown;
  const bool said =
      std::fputs(printed, stdout) >= 0 && std::fputs(refused, stderr) >= 0 && std::fflush(stdout) == 0;
  if (!said) std::perror("pendra: stdout");
  status = said ? ended : EXIT_FAILURE;
  return Outcome::Answered;
}

}  // namespace

int main(int, char** argv) {
  int status = EXIT_FAILURE;
  const Outcome outcome = ask(argv + 1, status);
  if (outcome == Outcome::Answered) std::_Exit(status);  // everything was written, and goes with the process
  if (outcome == Outcome::Unknown) {
    argv[0] = pendra::kUnanswered.data();
    pendra::become("pendra-terminal", argv);
  } else {
    pendra::become("pendra-windows", argv);
  }
  std::perror("pendra");
  return EXIT_FAILURE;
}
