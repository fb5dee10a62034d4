// SPDX-License-Identifier: Apache-2.0
// The text forms of one bag of features and of several.
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

constexpr std::string_view kMark = GENAPI_PERSISTENCE_MAGIC;
constexpr std::string_view kBaggerMark = GENAPI_PERSISTENCE_MAGIC_FEATUREBAGGER;

std::string_view View(const gcstring& text) { return {text.c_str(), text.size()}; }

/// A comment has one line, whatever the info has.
gcstring OnOneLine(const gcstring& text)
{
    gcstring line;
    for (const char ch : View(text))
        line += ch == '\n' || ch == '\r' ? ' ' : ch;
    return line;
}

void WriteHead(std::ostream& os, std::string_view mark, const char* kind, const gcstring& info)
{
    os << "# " << mark << '\n';
    if (info.empty())
        return;
    os << "# GenApi " << kind << "persistence file (version " << GENAPI_VERSION_MAJOR << '.'
       << GENAPI_VERSION_MINOR << '.' << GENAPI_VERSION_SUBMINOR << ")\n";
    os << "# " << OnOneLine(info) << '\n';
}

void CheckStreamable(const CFeatureBag& bag)
{
    for (const CFeatureBag::CEntry& entry : bag) {
        if (entry.Value.find_first_of("\r\n") != gcstring::npos)
            throw RUNTIME_EXCEPTION(
                "Feature '%s': its value has a line break, which a feature file can't hold",
                entry.Name.c_str());
    }
}

/// Reads a line without its end of either kind; false at the end of the stream.
bool ReadLine(std::istream& is, std::string& line)
{
    if (!std::getline(is, line)) {
        // Reading up to the end sets the fail bit, which is no failure here.
        is.clear(is.rdstate() & ~std::ios::failbit);
        return false;
    }
    if (!line.empty() && line.back() == '\r')
        line.pop_back();
    return true;
}

void ReadHead(std::istream& is, std::string_view mark)
{
    std::string line;
    if (!ReadLine(is, line) || line.find(mark) == line.npos)
        throw RUNTIME_EXCEPTION("The text is no feature file: its first line must hold '%s'%s", mark.data(),
                                line.find(kBaggerMark) != line.npos ? "; it is a file of several bags" : "");
}

bool IsSkipped(const std::string& line)
{
    const size_t first = line.find_first_not_of(" \t");
    return first == line.npos || line[first] == '#';
}

std::string_view TrimmedText(std::string_view text)
{
    const size_t first = text.find_first_not_of(" \t");
    return first == text.npos ? std::string_view()
                              : text.substr(first, text.find_last_not_of(" \t") + 1 - first);
}

/// What stands ahead of a value that would else be taken for selectors and a value.
constexpr std::string_view kNoSelectors = "{}";

bool BeginsAsSelectors(std::string_view text)
{
    return !text.empty() && text.front() == '{' && text.find("}\t") != text.npos;
}

CFeatureBag::CEntry ParseLine(std::string_view line, size_t number)
{
    const size_t tab = line.find('\t', std::min(line.find_first_not_of(" \t"), line.size()));
    const std::string_view name = TrimmedText(line.substr(0, tab));
    if (tab == line.npos || name.empty() || line.front() == '\t')
        throw RUNTIME_EXCEPTION("Line %zu of the feature file: name or value is missing in '%.*s'", number,
                                static_cast<int>(std::min<size_t>(line.size(), 80)), line.data());
    const auto text = [](std::string_view part) { return gcstring(part.data(), part.size()); };
    const std::string_view rest = line.substr(tab + 1);
    if (!BeginsAsSelectors(rest))
        return {text(name), gcstring(), text(rest)};
    const size_t end = rest.find("}\t") + 1;
    const std::string_view selectors = rest.substr(0, end);
    return {text(name), selectors == kNoSelectors ? gcstring() : text(selectors), text(rest.substr(end + 1))};
}
} // namespace

void CFeatureBag::WriteEntries(std::ostream& os) const
{
    for (const CEntry& entry : m_entries) {
        os << entry.Name << '\t';
        if (!entry.Selectors.empty())
            os << entry.Selectors << '\t';
        else if (BeginsAsSelectors(View(entry.Value)))
            os << kNoSelectors << '\t';
        os << entry.Value << '\n';
    }
}

void CFeatureBag::Write(std::ostream& os) const
{
    CheckStreamable(*this);
    WriteHead(os, kMark, "", m_info);
    WriteEntries(os);
}

void CFeatureBag::Read(std::istream& is)
{
    ReadHead(is, kMark);
    m_entries.clear();
    m_info = gcstring();
    std::string line;
    for (size_t number = 2; ReadLine(is, line); ++number) {
        if (!IsSkipped(line))
            m_entries.push_back(ParseLine(line, number));
    }
}

void CFeatureBagger::Write(std::ostream& os) const
{
    for (const CFeatureBag& bag : m_bags)
        CheckStreamable(bag);
    WriteHead(os, kBaggerMark, "CFeatureBagger ", m_info);
    for (const CFeatureBag& bag : m_bags) {
        os << '[' << OnOneLine(bag.GetBagName()) << "]\n";
        WriteHead(os, kMark, "", gcstring());
        bag.WriteEntries(os);
    }
}

void CFeatureBagger::Read(std::istream& is)
{
    std::string line;
    if (!ReadLine(is, line) || (line.find(kMark) == line.npos && line.find(kBaggerMark) == line.npos))
        throw RUNTIME_EXCEPTION("The text is no feature file: its first line must hold '%s' or '%s'",
                                kBaggerMark.data(), kMark.data());
    m_bags.clear();
    m_info = gcstring();
    if (line.find(kMark) != line.npos) {
        m_bags.emplace_back();
        m_bags.back().SetBagName("All");
    }
    for (size_t number = 2; ReadLine(is, line); ++number) {
        if (IsSkipped(line))
            continue;
        if (line.front() == '[' && line.back() == ']' && line.find('\t') == line.npos) {
            m_bags.emplace_back();
            m_bags.back().SetBagName(gcstring(line.data() + 1, line.size() - 2));
        } else if (m_bags.empty())
            throw RUNTIME_EXCEPTION("Line %zu of the feature file: '[' and the name of a bag must come first",
                                    number);
        else
            m_bags.back().m_entries.push_back(ParseLine(line, number));
    }
}

} // namespace GenApi
