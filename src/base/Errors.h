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
    using std::runtime_error::runtime_error;
};

} // namespace vek
