#pragma once

#include <unistd.h>
#include <utility>

namespace brindle {

/// An open file of the operating system, closed when it goes; -1 stands for none.
class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int number) : number_(number) {}
    FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor() {
        if (number_ >= 0) ::close(number_);
    }

    [[nodiscard]] int get() const { return number_; }
    explicit operator bool() const { return number_ >= 0; }
    /// Gives the number to a new owner.
    [[nodiscard]] int release() { return std::exchange(number_, -1); }

private:
    int number_ = -1;
};

}  // namespace brindle
