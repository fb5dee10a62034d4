// SPDX-License-Identifier: Apache-2.0
// Lists of numbers as the interfaces give them out.
#pragma once

#include <GenApi/GenApiLinkage.h>
#include <GenApi/GenApiNamespace.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace GenApi
{

/// Numbers of a count that never changes. Copies share them: what is written through one is seen through all.
/// Indexes are not checked.
template <typename T>
class TAutoVector
{
public:
    TAutoVector()
        : m_values(std::make_shared<std::vector<T>>())
    {}
    explicit TAutoVector(size_t size)
        : m_values(std::make_shared<std::vector<T>>(size))
    {}
    explicit TAutoVector(std::vector<T> values)
        : m_values(std::make_shared<std::vector<T>>(std::move(values)))
    {}
    TAutoVector(const TAutoVector&) = default;
    TAutoVector& operator=(const TAutoVector&) = default;
    virtual ~TAutoVector() {}

    T& operator[](size_t index) { return (*m_values)[index]; }
    const T& operator[](size_t index) const { return (*m_values)[index]; }
    size_t size() const { return m_values->size(); }
    bool empty() const { return m_values->empty(); }

    T* begin() { return m_values->data(); }
    T* end() { return m_values->data() + m_values->size(); }
    const T* begin() const { return m_values->data(); }
    const T* end() const { return m_values->data() + m_values->size(); }

private:
    std::shared_ptr<std::vector<T>> m_values;
};

/// List of the valid values of an integer.
typedef TAutoVector<int64_t> int64_autovector_t;

/// List of the valid values of a floating-point number.
typedef TAutoVector<double> double_autovector_t;

} // namespace GenApi

typedef uint32_t ATOMIC_VARIABLE;
