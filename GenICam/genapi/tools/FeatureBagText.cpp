// SPDX-License-Identifier: Apache-2.0
// The text form of a bag of features.
#include <Base/GCException.h>
#include <GenApi/GenApiVersion.h>
#include <GenApi/Persistence.h>

#include <algorithm>
#include <istream>
#include <ostream>
#include <string>
#include <string_view>

namespace GenApi
{
namespace
{
using GenICam::gcstring;

/// Marks the text as a bag of features; a constant of the format.
constexpr std::string_view kMark = "# {05D8C294-F295-4dfb-9D01-096BD04049F4}";

std::string_view View(const gcstring& text) { return {text.c_str(), text.size()}; }

/// A comment has one line, whatever the info has.
gcstring OnOneLine(const gcstring& text)
{
    gcstring line;
    for (const char ch : View(text))
        line += ch == '\n' || ch == '\r' ? ' ' : ch;
    return line;
}

void CheckStreamable(const CFeatureBag::CEntry& entry)
{
    if (entry.Value.find_first_of("\r\n") != gcstring::npos)
        throw RUNTIME_EXCEPTION("Feature '%s': its value has a line break, which a feature file can't hold",
                                entry.Name.c_str());
}

/// Reads a line without its end of either kind; false at the end of the stream.
bool ReadLine(std::istream& is, std::string& line)
{
    if (!std::getline(is, line))
        return false;
    if (!line.empty() && line.back() == '\r')
        line.pop_back();
    return true;
}

CFeatureBag::CEntry ParseLine(std::string_view line, size_t number)
{
    const size_t firstTab = line.find('\t');
    if (firstTab == line.npos || firstTab == 0)
        throw RUNTIME_EXCEPTION("Line %zu of the feature file: name or value is missing in '%.*s'", number,
                                static_cast<int>(std::min<size_t>(line.size(), 80)), line.data());
    const auto text = [](std::string_view part) { return gcstring(part.data(), part.size()); };
    const std::string_view rest = line.substr(firstTab + 1);
    const size_t secondTab = rest.find('\t');
    const bool hasSelectors = secondTab != rest.npos && rest.front() == '{' && rest[secondTab - 1] == '}';
    return {text(line.substr(0, firstTab)), hasSelectors ? text(rest.substr(0, secondTab)) : gcstring(),
            text(hasSelectors ? rest.substr(secondTab + 1) : rest)};
}
} // namespace

std::ostream& operator<<(std::ostream& os, const CFeatureBag& FeatureBag)
{
    for (const CFeatureBag::CEntry& entry : FeatureBag)
        CheckStreamable(entry);
    os << kMark << '\n';
    if (!FeatureBag.m_info.empty()) {
        os << "# GenApi persistence file (version " << GENAPI_VERSION_MAJOR << '.' << GENAPI_VERSION_MINOR
           << '.' << GENAPI_VERSION_SUBMINOR << ")\n";
        os << "# " << OnOneLine(FeatureBag.m_info) << '\n';
    }
    for (const CFeatureBag::CEntry& entry : FeatureBag) {
        os << entry.Name << '\t';
        if (!entry.Selectors.empty())
            os << entry.Selectors << '\t';
        os << entry.Value << '\n';
    }
    return os;
}

std::istream& operator>>(std::istream& is, CFeatureBag& FeatureBag)
{
    std::string line;
    if (!ReadLine(is, line) || line != kMark)
        throw RUNTIME_EXCEPTION("The text is no feature file: its first line must be '%s'", kMark.data());
    std::vector<CFeatureBag::CEntry> entries;
    for (size_t number = 2; ReadLine(is, line); ++number) {
        if (!line.empty() && line.front() != '#')
            entries.push_back(ParseLine(line, number));
    }
    // Reading up to the end has set the fail bit, which is no failure here.
    is.clear(is.rdstate() & ~std::ios::failbit);
    FeatureBag.m_entries = std::move(entries);
    FeatureBag.m_info.clear();
    return is;
}

} // namespace GenApi
