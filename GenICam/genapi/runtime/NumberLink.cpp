// SPDX-License-Identifier: Apache-2.0
#include "runtime/NumberLink.h"

#include "runtime/NodeMap.h"

#include <Base/GCException.h>

#include <algorithm>
#include <cmath>

namespace KxGenApi
{

int64_t RoundToInteger(const Node& node, double value)
{
    const double rounded = std::round(value);
    constexpr double kLimit = 9223372036854775808.0; // 2^63
    if (!(rounded >= -kLimit && rounded < kLimit)) {
        throw RUNTIME_EXCEPTION_NODE(node.Map().EntryText().c_str(), node.NameText())(
            "The value %g does not fit into a 64-bit integer", value);
    }
    return static_cast<int64_t>(rounded);
}

void RaiseUnknownPart(const Node& owner, const Property& variable)
{
    const std::string_view part = variable.attribute.substr(variable.attribute.find('.') + 1);
    throw RUNTIME_EXCEPTION_NODE(owner.Map().EntryText().c_str(), owner.NameText())(
        "Invalid Extension %.*s", static_cast<int>(std::min<size_t>(part.size(), 80)), part.data());
}

} // namespace KxGenApi
