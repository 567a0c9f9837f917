#pragma once

#include <optional>
#include <string>
#include <utility>
#include <variant>

namespace corvanel {

/// What went wrong: the runtime's error number (53 file not found, ...), a text for a person, and
/// whether the same may well succeed a moment later.
struct Error {
  int number = 0;
  std::string description;
  bool mayPass = false;
};

/// A value, or the error that prevented it. For expected failures (a missing file, a bad entry);
/// what must reach the error report travels as RuntimeError instead.
template <class T>
class [[nodiscard]] Result {
 public:
  Result(T value) : content_(std::move(value)) {}
  Result(Error error) : content_(std::move(error)) {}

  explicit operator bool() const { return std::holds_alternative<T>(content_); }

  /// The value; only to be asked for when there is one.
  const T& Value() const { return std::get<T>(content_); }
  T& Value() { return std::get<T>(content_); }

  /// The error; only to be asked for when there is no value.
  const Error& Failure() const { return std::get<Error>(content_); }

 private:
  std::variant<T, Error> content_;
};

/// Done, or the error that prevented it.
class [[nodiscard]] Status {
 public:
  Status() = default;
  Status(Error error) : error_(std::move(error)) {}

  explicit operator bool() const { return !error_; }
  /// The error; only to be asked for when there is one.
  const Error& Failure() const { return *error_; }

 private:
  std::optional<Error> error_;
};

}  // namespace corvanel
