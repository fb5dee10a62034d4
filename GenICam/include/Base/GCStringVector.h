// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// List of texts, as GenApi functions fill and take it.

#include <Base/GCString.h>

#include <vector>

namespace GenICam
{
/// A std::vector of gcstring with the standard's additional index forms of insert and erase.
///
/// Indexes at or beyond the size raise OutOfRangeException, except in operator[], which checks nothing.
class gcstring_vector
{
public:
    using value_type = gcstring;
    using size_type = size_t;
    using difference_type = std::ptrdiff_t;
    using reference = gcstring&;
    using const_reference = const gcstring&;
    using iterator = std::vector<gcstring>::iterator;
    using const_iterator = std::vector<gcstring>::const_iterator;

    gcstring_vector() noexcept = default;
    explicit gcstring_vector(size_t size)
        : m_texts(size)
    {}
    gcstring_vector(size_t size, const gcstring& value)
        : m_texts(size, value)
    {}
    gcstring_vector(std::initializer_list<gcstring> texts)
        : m_texts(texts)
    {}

    gcstring_vector& assign(size_t count, const gcstring& value);

    iterator begin() noexcept { return m_texts.begin(); }
    iterator end() noexcept { return m_texts.end(); }
    const_iterator begin() const noexcept { return m_texts.begin(); }
    const_iterator end() const noexcept { return m_texts.end(); }

    size_t size() const noexcept { return m_texts.size(); }
    size_t max_size() const noexcept { return m_texts.max_size(); }
    size_t capacity() const noexcept { return m_texts.capacity(); }
    bool empty() const noexcept { return m_texts.empty(); }
    void resize(size_t size, const gcstring& value = gcstring()) { m_texts.resize(size, value); }
    void reserve(size_t capacity) { m_texts.reserve(capacity); }
    void clear() noexcept { m_texts.clear(); }

    gcstring& operator[](size_t index) noexcept { return m_texts[index]; }
    const gcstring& operator[](size_t index) const noexcept { return m_texts[index]; }
    gcstring& at(size_t index) { return CheckIndex(index), m_texts[index]; }
    const gcstring& at(size_t index) const { return CheckIndex(index), m_texts[index]; }
    gcstring& front() { return at(0); }
    const gcstring& front() const { return at(0); }
    gcstring& back() { return at(size() - 1); }
    const gcstring& back() const { return at(size() - 1); }

    void push_back(const gcstring& value) { m_texts.push_back(value); }
    void push_back(gcstring&& value) { m_texts.push_back(std::move(value)); }
    /// Removes the last text, of which there must be one.
    void pop_back() { return CheckIndex(size() - 1), m_texts.pop_back(); }
    /// Puts `value` before position `index`, 0 to size; returns its position.
    iterator insert(size_t index, const gcstring& value);
    iterator insert(const_iterator position, const gcstring& value)
    {
        return m_texts.insert(position, value);
    }
    /// Removes one text; returns the position behind it.
    iterator erase(size_t index) { return CheckIndex(index), m_texts.erase(begin() + ToOffset(index)); }
    iterator erase(const_iterator position) { return m_texts.erase(position); }
    iterator erase(const_iterator first, const_iterator last) { return m_texts.erase(first, last); }

    friend bool operator==(const gcstring_vector& l, const gcstring_vector& r)
    {
        return l.m_texts == r.m_texts;
    }
    friend bool operator!=(const gcstring_vector& l, const gcstring_vector& r)
    {
        return l.m_texts != r.m_texts;
    }

private:
    [[noreturn]] GCBASE_API void RaiseIndex(size_t index) const;
    static difference_type ToOffset(size_t index) noexcept { return static_cast<difference_type>(index); }
    void CheckIndex(size_t index) const
    {
        if (index >= m_texts.size())
            RaiseIndex(index);
    }

    std::vector<gcstring> m_texts;
};

inline gcstring_vector& gcstring_vector::assign(size_t count, const gcstring& value)
{
    m_texts.assign(count, value);
    return *this;
}

inline gcstring_vector::iterator gcstring_vector::insert(size_t index, const gcstring& value)
{
    if (index > m_texts.size())
        RaiseIndex(index);
    return m_texts.insert(begin() + ToOffset(index), value);
}
} // namespace GenICam
