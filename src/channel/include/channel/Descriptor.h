#pragma once

#include <unistd.h>

#include <utility>

namespace pendra {

/// Owns an open descriptor.
class Descriptor {
 public:
  explicit Descriptor(int open = -1) : open_(open) {}
  Descriptor(Descriptor&& other) noexcept : open_(std::exchange(other.open_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(open_, other.open_);
    return *this;
  }
  ~Descriptor() {
    if (open_ >= 0) close(open_);
  }

  [[nodiscard]] int get() const { return open_; }

 private:
  int open_;
};

}  // namespace pendra
