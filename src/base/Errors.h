// The two families of failure that the user sees: run-time errors of a computation, and file failures.
#pragma once

#include <stdexcept>
#include <string>

namespace vek {

/// A computation met a value it cannot take. what() is the text of the message box, whose title is "Error!".
class RunTimeError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// A number does not fit the byte or the 16-bit integer it has to go into.
class OverflowError : public RunTimeError {
  public:
    OverflowError() : RunTimeError("Overflow") {}
};

class DivisionByZeroError : public RunTimeError {
  public:
    DivisionByZeroError() : RunTimeError("Division by zero") {}
};

/// An index lies outside its table.
class SubscriptError : public RunTimeError {
  public:
    SubscriptError() : RunTimeError("Subscript out of range") {}
};

/// A file could not be read or written; what() says which and why, for a status bar or standard error.
class FileError : public std::runtime_error {
  public:
    explicit FileError(const std::string& reason) : std::runtime_error(reason), reason_(reason) {}
    FileError(const std::string& path, const std::string& reason)
        : std::runtime_error(path + ": " + reason), reason_(reason) {}

    /// Why, where the file has been named already.
    const std::string& Reason() const { return reason_; }

  private:
    std::string reason_;
};

} // namespace vek
