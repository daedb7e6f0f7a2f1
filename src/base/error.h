#pragma once

// The faults of the program. The text (UTF-8) says what failed, on what, why, what was kept, and
// what to do next; it is shown to the user as it stands. Nothing catches these but the places that
// the behaviour names and the boundary where events enter (app/error_report.h).

#include <stdexcept>
#include <string>

namespace memwright {

class Error : public std::runtime_error {
  public:
    explicit Error(const std::string& text) : std::runtime_error(text), what_is_wrong_(text) {}

    // `remedy`, a line of its own: what was kept and what to do, which another program than the
    // window may have to say differently.
    Error(const std::string& what_is_wrong, const std::string& remedy)
        : std::runtime_error(what_is_wrong + "\n" + remedy), what_is_wrong_(what_is_wrong) {}

    // The text without the remedy, if that was told apart.
    const std::string& what_is_wrong() const { return what_is_wrong_; }

  private:
    std::string what_is_wrong_;
};

// An index outside of what it indexes: a bug of the caller.
class IndexError : public Error {
  public:
    using Error::Error;
};

// A text or number that does not convert to what is wanted.
class ConversionError : public Error {
  public:
    using Error::Error;
};

// A file, or the folder that it lies in, does not do what is asked of it.
class FileError : public Error {
  public:
    using Error::Error;
};

// What a file or the radio's image holds is not what it has to be.
class InputError : public Error {
  public:
    using Error::Error;
};

// A document cannot be printed.
class PrinterError : public Error {
  public:
    using Error::Error;
};

// A serial port cannot be opened, cannot be set, or hung up.
class PortError : public Error {
  public:
    using Error::Error;
};

// The radio at the other end of a serial port does not answer as it should.
class RadioError : public PortError {
  public:
    using PortError::PortError;
};

}  // namespace memwright
