#pragma once

#include <utility>

namespace Quorlin {

/// An open file of the system, closed with the object.
class Descriptor
{
public:
    /// @param number -1 is no file.
    explicit Descriptor(int number) : m_number(number) {}
    ~Descriptor();
    Descriptor(Descriptor &&other) noexcept : m_number(std::exchange(other.m_number, -1)) {}
    Descriptor &operator=(Descriptor &&other) noexcept
    {
        std::swap(m_number, other.m_number);
        return *this;
    }

    [[nodiscard]] int number() const { return m_number; }
    [[nodiscard]] bool isOpen() const { return m_number >= 0; }

private:
    int m_number;
};

} // namespace Quorlin
