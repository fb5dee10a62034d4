// SPDX-License-Identifier: Apache-2.0
#include "runtime/ValidValues.h"

#include "runtime/TextConversion.h"

#include <Base/GCException.h>

namespace KxGenApi
{
namespace
{

template <typename Number, typename Convert>
std::vector<Number> Members(const Node& node, const Convert& convert)
{
    std::vector<Number> values;
    const Property* const property = node.Find(Prop::ValidValueSet);
    std::string_view rest = property != nullptr ? property->text : std::string_view();
    while (!rest.empty()) {
        const size_t end = std::min(rest.find(';'), rest.size());
        const std::string_view member = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (member.find_first_not_of(" \t\r\n") == std::string_view::npos)
            continue;
        const auto value = convert(member);
        if (!value) {
            throw PROPERTY_EXCEPTION_NODE("GetListOfValidValues", node.NameText())(
                "ValidValueSet: '%.*s' is no number", static_cast<int>(member.size()), member.data());
        }
        values.push_back(*value);
    }
    return values;
}

} // namespace

std::vector<int64_t> ValidIntegers(const Node& node)
{
    return Members<int64_t>(node,
                            [](std::string_view text) { return TextToInteger(text, GenApi::PureNumber); });
}

std::vector<double> ValidReals(const Node& node)
{
    return Members<double>(node, [](std::string_view text) { return TextToReal(text); });
}

} // namespace KxGenApi
