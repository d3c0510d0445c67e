#pragma once

#include <optional>
#include <vector>

#include "link/RemoteServer.h"

namespace pendra {

/// What Vantor answered; a list that it has not to give is none, which is not an empty one.
struct FetchedLists {
  using List = std::optional<std::vector<VantorItem>>;
  List services;
  List customers;
  List jobs;
};

}  // namespace pendra
