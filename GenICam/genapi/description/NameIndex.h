// SPDX-License-Identifier: Apache-2.0
// Finds nodes by their names.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace KxGenApi
{

uint32_t HashName(std::string_view name) noexcept;

/// Numbers by names, which the owner keeps: `nameOf(number)` tells the name of one. A cell holds the hash
/// beside the number: what only shares a cell is passed over without a look at its name, which as a rule
/// isn't in the processor's cache.
class NameIndex
{
public:
    static constexpr uint32_t kNone = ~uint32_t{0};

    struct Added
    {
        uint32_t equal = kNone; ///< the number that has this name already; then nothing was added
        size_t collisions = 0;  ///< cells that were taken
    };

    explicit NameIndex(size_t expected = 0)
        : m_cells(SizeFor(expected))
    {}

    template <typename NameOf>
    uint32_t Find(std::string_view name, const NameOf& nameOf) const noexcept
    {
        const uint32_t hash = HashName(name);
        size_t cell = hash & Mask();
        while (m_cells[cell].number != kNone &&
               !(m_cells[cell].hash == hash && nameOf(m_cells[cell].number) == name))
            cell = (cell + 1) & Mask();
        return m_cells[cell].number;
    }

    template <typename NameOf>
    Added Add(std::string_view name, uint32_t number, const NameOf& nameOf)
    {
        if (2 * (m_count + 1) > m_cells.size())
            Grow();
        Added added;
        const uint32_t hash = HashName(name);
        size_t cell = hash & Mask();
        for (; m_cells[cell].number != kNone; cell = (cell + 1) & Mask()) {
            ++added.collisions;
            if (m_cells[cell].hash == hash && nameOf(m_cells[cell].number) == name) {
                added.equal = m_cells[cell].number;
                return added;
            }
        }
        m_cells[cell] = {hash, number};
        ++m_count;
        return added;
    }

    /// Gives each name another number.
    template <typename NumberOf>
    void Renumber(const NumberOf& numberOf)
    {
        for (Cell& cell : m_cells)
            if (cell.number != kNone)
                cell.number = numberOf(cell.number);
    }

private:
    struct Cell
    {
        uint32_t hash = 0;
        uint32_t number = kNone;
    };

    static size_t SizeFor(size_t count)
    {
        size_t size = 4;
        while (size < 2 * count)
            size *= 2;
        return size;
    }

    size_t Mask() const { return m_cells.size() - 1; }

    void Grow()
    {
        std::vector<Cell> old(2 * m_cells.size());
        old.swap(m_cells);
        for (const Cell& moved : old) {
            if (moved.number == kNone)
                continue;
            size_t cell = moved.hash & Mask();
            while (m_cells[cell].number != kNone)
                cell = (cell + 1) & Mask();
            m_cells[cell] = moved;
        }
    }

    std::vector<Cell> m_cells; // open addressing, a power of two in size, at most half of it taken
    size_t m_count = 0;
};

} // namespace KxGenApi
