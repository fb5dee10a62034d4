// SPDX-License-Identifier: Apache-2.0
// Graph data in ".csv" files: comments that describe the items, the names of the columns, then a line for
// each index. docs/files.md shows one.

#include "COutputFile.h"
#include "CsvText.h"
#include "Decoding.h"
#include "GraphLines.h"

#include <KxApi_TL/IKxPixelComponent.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <string_view>

namespace KxApi
{
namespace Detail
{
namespace
{

constexpr std::string_view kKindRow = "# kind";
constexpr std::string_view kComponentRow = "# component";
constexpr std::string_view kFullScaleRow = "# full scale";
constexpr std::string_view kDivisorRow = "# divisor";
constexpr std::string_view kNameRow = "index";

/// By EKxGraphDataKind_t.
constexpr std::string_view kKindNames[] = {"histogram", "line profile", "interpolated profile",
                                           "averaged profile"};

// ---- writing

void AppendHex(std::string& text, uint32_t value)
{
    constexpr char kDigits[] = "0123456789ABCDEF";
    text += "0x";
    for (int shift = 28; shift >= 0; shift -= 4)
        text += kDigits[value >> shift & 0xF];
}

template <class Append>
void AppendRow(std::string& text, std::string_view title, const CGraphLines& lines, const Append& append)
{
    text += title;
    for (const CGraphLine& line : lines) {
        text += ',';
        append(line);
    }
    text += '\n';
}

std::string NameOf(const CGraphLine& line)
{
    const IKxPixelComponentInfo* const info = GetIKxPixelComponentInfo(line.description.eComponent);
    return info ? info->GetName().c_str() : "data";
}

void AppendHeader(std::string& text, const CGraphLines& lines)
{
    AppendRow(text, kKindRow, lines, [&](const CGraphLine& line) {
        text += kKindNames[static_cast<size_t>(line.description.eKind)];
    });
    AppendRow(text, kComponentRow, lines,
              [&](const CGraphLine& line) { AppendHex(text, line.description.eComponent); });
    AppendRow(text, kFullScaleRow, lines,
              [&](const CGraphLine& line) { AppendNumber(text, line.description.nFullScale); });
    AppendRow(text, kDivisorRow, lines,
              [&](const CGraphLine& line) { AppendNumber(text, line.description.nDivisor); });
    AppendRow(text, kNameRow, lines, [&](const CGraphLine& line) { text += NameOf(line); });
}

void AppendValue(std::string& text, const CGraphLine& line, size_t index)
{
    if (index >= line.values.size())
        return;
    if (line.description.nDivisor == 1)
        AppendNumber(text, line.values[index]);
    else
        AppendNumber(text, static_cast<double>(line.values[index]) / line.description.nDivisor);
}

// ---- reading

/// The lines of a text, and the cells of the present one.
class CCsvReader
{
public:
    explicit CCsvReader(const CFileContent& content)
        : m_content(content)
        , m_rest(reinterpret_cast<const char*>(content.data), content.size)
    {}

    bool IsAtEnd() const { return m_rest.empty(); }

    /// Goes to the next line, which has to be there.
    void NextLine()
    {
        ++m_lineNumber;
        const size_t end = m_rest.find('\n');
        if (end == std::string_view::npos)
            Raise("isn't complete");
        m_line = m_rest.substr(0, end);
        m_rest.remove_prefix(end + 1);
        if (!m_line.empty() && m_line.back() == '\r') // as spreadsheets write it
            m_line.remove_suffix(1);
        m_hasCell = true;
    }

    bool HasCell() const { return m_hasCell; }
    std::string_view NextCell()
    {
        if (!m_hasCell)
            Raise("has too few columns");
        const size_t end = m_line.find(',');
        const std::string_view cell = m_line.substr(0, end);
        m_hasCell = end != std::string_view::npos;
        m_line.remove_prefix(m_hasCell ? end + 1 : m_line.size());
        return cell;
    }

    void StartRow(std::string_view title)
    {
        NextLine();
        if (NextCell() != title)
            Raise("isn't the row that should stand there");
    }
    void EndRow() const
    {
        if (m_hasCell)
            Raise("has too many columns");
    }

    template <class T>
    T Number(std::string_view cell, int base = 10) const
    {
        T value{};
        std::from_chars_result result{};
        if constexpr (std::is_floating_point_v<T>)
            result = std::from_chars(cell.data(), cell.data() + cell.size(), value);
        else
            result = std::from_chars(cell.data(), cell.data() + cell.size(), value, base);
        if (result.ec != std::errc() || result.ptr != cell.data() + cell.size())
            Raise("has a cell that is no number");
        return value;
    }

    [[noreturn]] void Raise(const char* cause) const { m_content.Raise("line %zu %s", m_lineNumber, cause); }

private:
    const CFileContent& m_content;
    std::string_view m_rest;
    std::string_view m_line;
    size_t m_lineNumber = 0;
    bool m_hasCell = false;
};

CGraphLines ReadKinds(CCsvReader& reader)
{
    CGraphLines lines;
    reader.StartRow(kKindRow);
    while (reader.HasCell()) {
        const std::string_view cell = reader.NextCell();
        const auto* const found = std::find(std::begin(kKindNames), std::end(kKindNames), cell);
        if (found == std::end(kKindNames))
            reader.Raise("names an unknown kind");
        lines.emplace_back().description.eKind =
            static_cast<EKxGraphDataKind_t>(found - std::begin(kKindNames));
    }
    return lines;
}

uint32_t ReadHex(const CCsvReader& reader, std::string_view cell)
{
    if (cell.substr(0, 2) != "0x")
        reader.Raise("has a cell that doesn't begin with 0x");
    return reader.Number<uint32_t>(cell.substr(2), 16);
}

CGraphLines ReadHeader(CCsvReader& reader)
{
    CGraphLines lines = ReadKinds(reader);
    reader.StartRow(kComponentRow);
    for (CGraphLine& line : lines)
        line.description.eComponent =
            static_cast<EKxPixelComponentType_t>(ReadHex(reader, reader.NextCell()));
    reader.EndRow();
    reader.StartRow(kFullScaleRow);
    for (CGraphLine& line : lines)
        line.description.nFullScale = reader.Number<uint32_t>(reader.NextCell());
    reader.EndRow();
    reader.StartRow(kDivisorRow);
    for (CGraphLine& line : lines) {
        line.description.nDivisor = reader.Number<uint32_t>(reader.NextCell());
        if (!IsSound(line.description))
            reader.Raise("has a divisor that doesn't go with the kind");
    }
    reader.EndRow();
    reader.StartRow(kNameRow);
    for (size_t i = 0; i < lines.size(); ++i)
        reader.NextCell();
    reader.EndRow();
    return lines;
}

uint32_t ReadValue(const CCsvReader& reader, std::string_view cell, uint32_t divisor)
{
    if (divisor == 1)
        return reader.Number<uint32_t>(cell);
    const double value = std::round(reader.Number<double>(cell) * divisor);
    if (!(value >= 0 && value <= std::numeric_limits<uint32_t>::max()))
        reader.Raise("has a value beyond the range");
    return static_cast<uint32_t>(value);
}

} // namespace

void WriteCsvGraph(const CGraphLines& lines, COutputFile& file)
{
    size_t length = 0;
    for (const CGraphLine& line : lines)
        length = std::max(length, line.values.size());
    std::string text;
    AppendHeader(text, lines);
    for (size_t i = 0; i < length; ++i) {
        AppendNumber(text, i);
        for (const CGraphLine& line : lines) {
            text += ',';
            AppendValue(text, line, i);
        }
        text += '\n';
        if (!file.Write(text.data(), text.size()))
            return;
        text.clear();
    }
    file.Write(text.data(), text.size());
}

CGraphLines ReadCsvGraph(const CFileContent& content)
{
    CCsvReader reader(content);
    CGraphLines lines = ReadHeader(reader);
    for (size_t i = 0; !reader.IsAtEnd(); ++i) {
        reader.NextLine();
        if (reader.Number<size_t>(reader.NextCell()) != i)
            reader.Raise("isn't the next index");
        for (CGraphLine& line : lines) {
            const std::string_view cell = reader.NextCell();
            if (cell.empty()) // the item has ended
                continue;
            if (line.values.size() != i)
                reader.Raise("goes on with an item that has ended");
            line.values.push_back(ReadValue(reader, cell, line.description.nDivisor));
        }
        reader.EndRow();
    }
    return lines;
}

} // namespace Detail
} // namespace KxApi
