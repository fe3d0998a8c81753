// Ownership of a file descriptor.
#pragma once

#include <unistd.h>
#include <utility>

namespace vek {

/// Closes the descriptor when it goes out of scope; -1 stands for none.
class Descriptor {
  public:
    explicit Descriptor(int number = -1) : number(number) {}
    Descriptor(Descriptor&& other) noexcept : number(std::exchange(other.number, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number, other.number);
        return *this;
    }
    ~Descriptor() {
        if (number >= 0)
            ::close(number);
    }
    int Get() const { return number; }
    bool Open() const { return number >= 0; }
    /// Closing can report the failure of an earlier write.
    bool Close() { return ::close(std::exchange(number, -1)) == 0; }

  private:
    int number;
};

} // namespace vek
