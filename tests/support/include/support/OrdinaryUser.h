#pragma once

#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>

namespace pendra {

/// While it lives the permissions of files and folders count for this thread, as for an ordinary user;
/// without it they do not where the tests run as root.
class [[nodiscard]] OrdinaryUser {
 public:
  OrdinaryUser() {
    ::syscall(SYS_capget, &header_, before_.data());
    auto without = before_;
    without[0].effective &= ~(1U << CAP_DAC_OVERRIDE | 1U << CAP_DAC_READ_SEARCH);
    ::syscall(SYS_capset, &header_, without.data());
  }
  ~OrdinaryUser() { ::syscall(SYS_capset, &header_, before_.data()); }
  OrdinaryUser(const OrdinaryUser&) = delete;
  OrdinaryUser& operator=(const OrdinaryUser&) = delete;

 private:
  __user_cap_header_struct header_{_LINUX_CAPABILITY_VERSION_3, 0};
  std::array<__user_cap_data_struct, 2> before_{};
};

}  // namespace pendra
