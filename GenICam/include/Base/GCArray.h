// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// An array that is deleted with its owner.

#include <Base/GCNamespace.h>

#include <cstddef>
#include <memory>

namespace GenICam
{
/// Owns an array of a size that never changes; no elements are a null pointer. Indexes are not checked.
template <class T>
class gcarray
{
public:
    explicit gcarray(size_t size)
        : m_array(size != 0 ? new T[size] : nullptr)
    {}
    gcarray(const gcarray&) = delete;
    gcarray& operator=(const gcarray&) = delete;

    T* get() const { return m_array.get(); }
    T* operator*() { return m_array.get(); }
    T& operator[](size_t index) { return m_array[index]; }
    const T& operator[](size_t index) const { return m_array[index]; }

private:
    std::unique_ptr<T[]> m_array;
};
} // namespace GenICam
