// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// List of texts, as GenApi functions fill and take it.

#include <Base/GCString.h>

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <vector>

namespace GenICam
{
/// A std::vector of gcstring with the standard's additional index forms of insert and erase.
///
/// Indexes at or beyond the size raise OutOfRangeException, except in operator[], which checks nothing.
class GCBASE_API gcstring_vector
{
public:
    typedef gcstring value_type;
    typedef size_t size_type;
    typedef std::ptrdiff_t difference_type;
    typedef gcstring& reference;
    typedef const gcstring& const_reference;

    /// Iterators are positions in the array; they are the standard library's kind with random access.
    class const_iterator
    {
    public:
        typedef std::random_access_iterator_tag iterator_category;
        typedef gcstring value_type;
        typedef std::ptrdiff_t difference_type;
        typedef const gcstring* pointer;
        typedef const gcstring& reference;

        const_iterator(gcstring* text = nullptr)
            : _ps(text)
        {}
        const gcstring& operator*() const { return *_ps; }
        const gcstring* operator->() const { return _ps; }
        const gcstring& operator[](difference_type index) const { return _ps[index]; }
        const_iterator& operator++() { return ++_ps, *this; }
        const_iterator operator++(int) { return const_iterator(_ps++); }
        const_iterator& operator--() { return --_ps, *this; }
        const_iterator operator--(int) { return const_iterator(_ps--); }
        const_iterator& operator+=(difference_type step) { return _ps += step, *this; }
        const_iterator& operator-=(difference_type step) { return _ps -= step, *this; }
        const_iterator operator+(difference_type step) const { return const_iterator(_ps + step); }
        const_iterator operator-(difference_type step) const { return const_iterator(_ps - step); }
        friend const_iterator operator+(difference_type step, const const_iterator& it) { return it + step; }
        difference_type operator-(const const_iterator& other) const { return _ps - other._ps; }
        bool operator==(const const_iterator& other) const { return _ps == other._ps; }
        bool operator!=(const const_iterator& other) const { return _ps != other._ps; }
        bool operator<(const const_iterator& other) const { return _ps < other._ps; }
        bool operator>(const const_iterator& other) const { return _ps > other._ps; }
        bool operator<=(const const_iterator& other) const { return _ps <= other._ps; }
        bool operator>=(const const_iterator& other) const { return _ps >= other._ps; }

    protected:
        friend class gcstring_vector;
        gcstring* _ps;
    };
    class iterator : public const_iterator
    {
    public:
        typedef gcstring* pointer;
        typedef gcstring& reference;

        iterator(gcstring* text = nullptr)
            : const_iterator(text)
        {}
        gcstring& operator*() const { return *_ps; }
        gcstring* operator->() const { return _ps; }
        gcstring& operator[](difference_type index) const { return _ps[index]; }
        iterator& operator++() { return ++_ps, *this; }
        iterator operator++(int) { return iterator(_ps++); }
        iterator& operator--() { return --_ps, *this; }
        iterator operator--(int) { return iterator(_ps--); }
        iterator& operator+=(difference_type step) { return _ps += step, *this; }
        iterator& operator-=(difference_type step) { return _ps -= step, *this; }
        iterator operator+(difference_type step) const { return iterator(_ps + step); }
        iterator operator-(difference_type step) const { return iterator(_ps - step); }
        friend iterator operator+(difference_type step, const iterator& it) { return it + step; }
        difference_type operator-(const const_iterator& other) const
        {
            return const_iterator::operator-(other);
        }
    };

    gcstring_vector() = default;
    explicit gcstring_vector(size_t size, const gcstring& value = gcstring())
        : m_texts(size, value)
    {}
    gcstring_vector(std::initializer_list<gcstring> texts)
        : m_texts(texts)
    {}
    gcstring_vector(const gcstring_vector&) = default;
    gcstring_vector(gcstring_vector&&) = default;
    gcstring_vector& operator=(const gcstring_vector&) = default;
    gcstring_vector& operator=(gcstring_vector&&) = default;
    virtual ~gcstring_vector() {}

    virtual void assign(size_t count, const gcstring& value) { m_texts.assign(count, value); }
    virtual gcstring_vector& assign(const gcstring_vector& other) { return m_texts = other.m_texts, *this; }

    virtual iterator begin() { return iterator(m_texts.data()); }
    virtual iterator end() { return iterator(m_texts.data() + m_texts.size()); }
    virtual const_iterator begin() const { return const_iterator(const_cast<gcstring*>(m_texts.data())); }
    virtual const_iterator end() const { return begin() + static_cast<difference_type>(m_texts.size()); }

    virtual size_t size() const { return m_texts.size(); }
    virtual size_t max_size() const { return m_texts.max_size(); }
    virtual size_t capacity() const { return m_texts.capacity(); }
    virtual bool empty() const { return m_texts.empty(); }
    virtual void resize(size_t size, const gcstring& value = gcstring()) { m_texts.resize(size, value); }
    virtual void reserve(size_t capacity) { m_texts.reserve(capacity); }
    virtual void clear() { m_texts.clear(); }
    /// Whether a text is among them.
    virtual bool contains(const gcstring& text) const
    {
        return std::find(m_texts.begin(), m_texts.end(), text) != m_texts.end();
    }

    virtual gcstring& operator[](size_t index) { return m_texts[index]; }
    virtual const gcstring& operator[](size_t index) const { return m_texts[index]; }
    virtual gcstring& at(size_t index) { return CheckIndex(index), m_texts[index]; }
    virtual const gcstring& at(size_t index) const { return CheckIndex(index), m_texts[index]; }
    virtual gcstring& front() { return at(0); }
    virtual const gcstring& front() const { return at(0); }
    virtual gcstring& back() { return at(m_texts.size() - 1); }
    virtual const gcstring& back() const { return at(m_texts.size() - 1); }

    virtual void push_back(const gcstring& value) { m_texts.push_back(value); }
    /// Removes the last text, of which there must be one.
    virtual void pop_back() { return CheckIndex(m_texts.size() - 1), m_texts.pop_back(); }
    /// Puts `value` before position `index`, 0 to size.
    virtual void insert(size_t index, const gcstring& value)
    {
        if (index > m_texts.size())
            RaiseIndex(index);
        m_texts.insert(m_texts.begin() + static_cast<difference_type>(index), value);
    }
    virtual iterator insert(iterator position, const gcstring& value)
    {
        const difference_type index = position - begin();
        m_texts.insert(m_texts.begin() + index, value);
        return begin() + index;
    }
    /// Removes one text.
    virtual void erase(size_t index)
    {
        CheckIndex(index);
        m_texts.erase(m_texts.begin() + static_cast<difference_type>(index));
    }
    /// Returns the position behind what was removed.
    virtual iterator erase(iterator position) { return erase(position, position + 1); }
    virtual iterator erase(iterator first, iterator last)
    {
        const difference_type index = first - begin();
        m_texts.erase(m_texts.begin() + index, m_texts.begin() + (last - begin()));
        return begin() + index;
    }

    friend bool operator==(const gcstring_vector& l, const gcstring_vector& r)
    {
        return l.m_texts == r.m_texts;
    }
    friend bool operator!=(const gcstring_vector& l, const gcstring_vector& r)
    {
        return l.m_texts != r.m_texts;
    }

private:
    [[noreturn]] void RaiseIndex(size_t index) const;
    void CheckIndex(size_t index) const
    {
        if (index >= m_texts.size())
            RaiseIndex(index);
    }

    std::vector<gcstring> m_texts;
};
} // namespace GenICam
