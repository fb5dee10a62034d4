// SPDX-License-Identifier: Apache-2.0
#include "runtime/NumberLink.h"

#include "runtime/NodeMap.h"

#include <Base/GCException.h>

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

int64_t ReadIntegerPart(Node& target, RefPart part, ReadOptions options)
{
    switch (part) {
    case RefPart::Min:
        return target.IntegerMin();
    case RefPart::Max:
        return target.IntegerMax();
    case RefPart::Inc:
        return target.IntegerInc();
    case RefPart::Enum:
        return target.ReadEnumInteger(options);
    case RefPart::Value:
    case RefPart::Entry:
        break;
    }
    return target.ReadInteger(options);
}

double ReadRealPart(Node& target, RefPart part, ReadOptions options)
{
    switch (part) {
    case RefPart::Min:
        return target.RealMin();
    case RefPart::Max:
        return target.RealMax();
    case RefPart::Inc:
        return target.RealInc();
    case RefPart::Enum:
        return static_cast<double>(target.ReadEnumInteger(options));
    case RefPart::Value:
    case RefPart::Entry:
        break;
    }
    return target.ReadReal(options);
}

} // namespace KxGenApi
