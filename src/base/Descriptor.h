// Ownership of a file descriptor.
#pragma once

#include <unistd.h>
#include <utility>

namespace vek {

/// Closes the descriptor when it goes out of scope; -1 stands for none.
class Descriptor {
  public:
    explicit Descriptor(int number = -1) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    ~Descriptor() {
        if (number_ >= 0)
            ::close(number_);
    }
    int Get() const { return number_; }
    bool Open() const { return number_ >= 0; }
    /// Hands the descriptor over to the caller, who closes it.
    int Release() { return std::exchange(number_, -1); }

  private:
    int number_;
};

} // namespace vek
