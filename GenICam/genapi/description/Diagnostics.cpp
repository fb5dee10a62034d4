// SPDX-License-Identifier: Apache-2.0
#include "description/Diagnostics.h"

#include <Base/GCException.h>

namespace KxGenApi
{
namespace
{

// Messages hold 255 bytes; with names of this length the last word still has its place.
constexpr size_t kLongestQuote = 60;

std::string Prefix(const Place& place)
{
    std::string text;
    if (place.position.line)
        text += "line " + std::to_string(place.position.line) + ", column " +
                std::to_string(place.position.column) + ": ";
    if (!place.node.empty())
        text += "node " + Quoted(place.node) + ": ";
    if (!place.element.empty())
        text += "element " + Quoted(place.element) + " ";
    return text;
}

} // namespace

std::string Quoted(std::string_view text)
{
    std::string quoted = "'";
    quoted += text.substr(0, kLongestQuote);
    for (char& c : quoted)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F)
            c = ' ';
    // Half a character at the cut would make the whole message invalid text.
    if (text.size() > kLongestQuote) {
        while (static_cast<unsigned char>(quoted.back()) >= 0x80)
            quoted.pop_back();
        quoted += "...";
    }
    return quoted + "'";
}

void Fail(const Place& place, const std::string& detail, Fault fault)
{
    const std::string text = Prefix(place) + detail;
    if (fault == Fault::Literal)
        throw PROPERTY_EXCEPTION("%s", text.c_str());
    throw RUNTIME_EXCEPTION("%s", text.c_str());
}

void FailLimit(const Place& place, size_t count, const char* unit, size_t limit)
{
    Fail(place, std::to_string(count) + " " + unit + " exceed the limit of " + std::to_string(limit));
}

} // namespace KxGenApi
