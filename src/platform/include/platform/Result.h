#pragma once
// A failure is a value. Absence is not a failure: that is std::optional. A broken promise between two
// pieces of our own code is neither: that is an assertion.

#include <QString>
#include <utility>
#include <variant>

namespace pendra {

/// Why something could not be done, for the log and the notice line.
struct Error {
  QString domain;  ///< who says so: "POSIX", "SQLite", "archive", "document"
  int code = 0;    ///< the domain's own number
  QString text;    ///< one sentence for a person, without the name of the file
};

/// Either a value or the reason why there is none.
template <class T>
class [[nodiscard]] Result {
 public:
  Result(T value) : state_(std::in_place_index<0>, std::move(value)) {}
  Result(Error error) : state_(std::in_place_index<1>, std::move(error)) {}

  explicit operator bool() const { return state_.index() == 0; }
  const T& value() const& { return std::get<0>(state_); }
  T& value() & { return std::get<0>(state_); }
  T&& value() && { return std::get<0>(std::move(state_)); }
  const Error& error() const { return std::get<1>(state_); }

 private:
  std::variant<T, Error> state_;
};

/// The result of an operation that has nothing to hand over.
template <>
class [[nodiscard]] Result<void> {
 public:
  Result() = default;
  Result(Error error) : error_(std::move(error)), failed_(true) {}

  explicit operator bool() const { return !failed_; }
  const Error& error() const { return error_; }

 private:
  Error error_;
  bool failed_ = false;
};

}  // namespace pendra
