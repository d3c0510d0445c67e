#pragma once
// Where an object keeps its attributes. A document has hundreds of thousands of them in memory, most of them
// absent: absence takes no room of its own here, and equal texts can share theirs.

#include <QSharedData>
#include <QString>
#include <cmath>
#include <limits>
#include <optional>

#include "platform/Clock.h"

namespace pendra {

/// Holds a value or none.
template <class Held>
class Slot;

/// What is no number is absent, as it is in the file.
template <>
class Slot<double> {
 public:
  Slot() = default;
  explicit Slot(double value) : value_(value) {}

  [[nodiscard]] std::optional<double> get() const {
    return std::isnan(value_) ? std::nullopt : std::optional(value_);
  }
  void set(std::optional<double> value) { value_ = value.value_or(kAbsent); }

 private:
  static constexpr double kAbsent = std::numeric_limits<double>::quiet_NaN();
  double value_ = kAbsent;
};

template <>
class Slot<Instant> {
 public:
  Slot() = default;
  explicit Slot(Instant value) : seconds_(value.seconds) {}

  [[nodiscard]] std::optional<Instant> get() const {
    const auto seconds = seconds_.get();
    return seconds ? std::optional(Instant{*seconds}) : std::nullopt;
  }
  void set(std::optional<Instant> value) {
    seconds_.set(value ? std::optional(value->seconds) : std::nullopt);
  }

 private:
  Slot<double> seconds_;
};

template <>
class Slot<bool> {
 public:
  Slot() = default;
  explicit Slot(bool value) { set(value); }

  [[nodiscard]] std::optional<bool> get() const {
    return state_ == State::Absent ? std::nullopt : std::optional(state_ == State::True);
  }
  void set(std::optional<bool> value) {
    state_ = !value ? State::Absent : *value ? State::True : State::False;
  }

 private:
  enum class State : quint8 { Absent, False, True };
  State state_ = State::Absent;
};

/// A copy shares the text.
template <>
class Slot<QString> {
 public:
  [[nodiscard]] const std::optional<QString>& get() const {
    static const std::optional<QString> kAbsent;
    return text_ ? text_->held : kAbsent;
  }
  void set(std::optional<QString> value) { text_.reset(value ? new Text(std::move(value)) : nullptr); }

 private:
  struct Text : QSharedData {
    explicit Text(std::optional<QString> value) : held(std::move(value)) {}
    const std::optional<QString> held;
  };
  QExplicitlySharedDataPointer<Text> text_;
};

}  // namespace pendra
