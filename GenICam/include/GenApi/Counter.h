// SPDX-License-Identifier: Apache-2.0
// A number that counts up and down.
#pragma once

namespace GenApi
{

/// Starts at 0. One thread at a time.
class Counter
{
public:
    Counter()
        : m_value(0)
    {}
    unsigned int GetValue() const { return m_value; }
    Counter& operator++() { return ++m_value, *this; }
    unsigned int operator++(int) { return m_value++; }
    Counter& operator--() { return --m_value, *this; }
    unsigned int operator--(int) { return m_value--; }
    operator unsigned int() const { return m_value; }
    bool IsZero() const { return m_value == 0; }

private:
    unsigned int m_value;
};

} // namespace GenApi
