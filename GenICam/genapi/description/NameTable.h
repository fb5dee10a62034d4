// SPDX-License-Identifier: Apache-2.0
// Finds a row of a constant table by its name, with one comparison as a rule.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace KxGenApi
{

/// Index over rows that have a member `name`. Size is a power of two, at least twice the number of rows.
template <size_t Size>
class NameTable
{
public:
    template <typename Row, size_t Count>
    explicit constexpr NameTable(const Row (&rows)[Count])
    {
        static_assert(2 * Count <= Size && Count < kFree && (Size & (Size - 1)) == 0);
        for (auto& cell : m_cells)
            cell = kFree;
        for (size_t i = 0; i < Count; ++i) {
            size_t cell = Hash(rows[i].name);
            while (m_cells[cell] != kFree)
                cell = (cell + 1) & (Size - 1);
            m_cells[cell] = static_cast<uint8_t>(i);
        }
    }

    template <typename Row>
    constexpr const Row* Find(const Row* rows, std::string_view name) const
    {
        if (name.empty())
            return nullptr;
        for (size_t cell = Hash(name); m_cells[cell] != kFree; cell = (cell + 1) & (Size - 1))
            if (rows[m_cells[cell]].name == name)
                return &rows[m_cells[cell]];
        return nullptr;
    }

private:
    static constexpr uint8_t kFree = 0xFF;

    // Names that share length, ends and middle are rare in the schema.
    static constexpr size_t Hash(std::string_view name)
    {
        const auto at = [&](size_t i) { return static_cast<size_t>(static_cast<unsigned char>(name[i])); };
        const size_t size = name.size();
        return (size * 7 + at(0) * 31 + at(size / 2) * 17 + at(size - 1) * 5) & (Size - 1);
    }

    std::array<uint8_t, Size> m_cells{};
};

} // namespace KxGenApi
