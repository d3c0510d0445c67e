// What the link costs beside the least that it could. The channel's log goes nowhere, in all that is
// compared. `bench-link lists` and `bench-link sending` measure one of the two.

#include <malloc.h>

#include <cstdio>
#include <string_view>

#include "Measures.h"

int main(int count, char** arguments) {
  // What is freed is kept, so that no measure pays for pages that another has given back.
  ::mallopt(M_TRIM_THRESHOLD, 1 << 30);
  ::mallopt(M_MMAP_THRESHOLD, 1 << 30);
  if (!std::freopen("/dev/null", "w", stderr)) return 1;
  const std::string_view only = count > 1 ? arguments[1] : "";
  if (only != "lists") pendra::bench::measureSending();
  if (only != "sending") pendra::bench::measureLists();
}
