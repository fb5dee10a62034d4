// SPDX-License-Identifier: Apache-2.0
#include "runtime/WriteList.h"

#include "Attempt.h"
#include "runtime/TextConversion.h"

#include <GenApi/IBoolean.h>
#include <GenApi/IEnumeration.h>
#include <GenApi/IFloat.h>
#include <GenApi/IInteger.h>
#include <GenApi/INode.h>
#include <GenApi/IValue.h>

namespace KxGenApi
{
namespace
{

using namespace GenApi;
using GenICam::gcstring;

void WriteText(IValue& node, const gcstring& text)
{
    const bool isNumber =
        dynamic_cast<IInteger*>(&node) || dynamic_cast<IFloat*>(&node) || dynamic_cast<IBoolean*>(&node);
    try {
        node.FromString(text);
    } catch (const GenICam::InvalidArgumentException&) {
        if (!isNumber)
            throw;
        node.FromString("0"); // a text that is no number counts as 0
    }
}

/// Writes a number; `text` is for nodes that take none.
template <typename Number>
void WriteNumber(IValue& node, Number value, const gcstring& text)
{
    if (const auto integer = dynamic_cast<IInteger*>(&node))
        integer->SetValue(static_cast<int64_t>(value));
    else if (const auto real = dynamic_cast<IFloat*>(&node))
        real->SetValue(static_cast<double>(value));
    else if (const auto enumeration = dynamic_cast<IEnumeration*>(&node))
        enumeration->SetIntValue(static_cast<int64_t>(value));
    else if (const auto boolean = dynamic_cast<IBoolean*>(&node))
        boolean->SetValue(value != Number(0));
    else
        WriteText(node, text);
}

void Write(IValue& node, const WriteList::Value& value)
{
    const auto toText = [](const std::string& text) { return gcstring(text.data(), text.size()); };
    if (const auto text = std::get_if<gcstring>(&value)) {
        WriteText(node, *text);
    } else if (const auto integer = std::get_if<int64_t>(&value)) {
        WriteNumber(node, *integer, toText(IntegerToText(*integer, PureNumber)));
    } else if (const auto real = std::get_if<double>(&value)) {
        constexpr double kLimit = 9223372036854775808.0; // 2^63
        if (dynamic_cast<IFloat*>(&node) == nullptr && !(*real >= -kLimit && *real < kLimit))
            throw OUT_OF_RANGE_EXCEPTION("The value %g does not fit into a 64-bit integer", *real);
        WriteNumber(node, *real, toText(RealToText(*real, fnAutomatic, 6)));
    } else {
        const bool on = std::get<bool>(value);
        WriteNumber(node, static_cast<int64_t>(on), on ? "1" : "0");
    }
}

} // namespace

bool WriteList::WriteTo(INodeMap& map, GenICam::gcstring_vector* errors) const
{
    bool allGood = true;
    for (const auto& [name, value] : m_entries) {
        const auto node = dynamic_cast<IValue*>(map.GetNode(name));
        if (node == nullptr)
            continue; // lists are made for several devices, of which not all have every feature
        const Value& its = value;
        allGood = Attempt([&] { Write(*node, its); }, "Error while writing node '" + name + "': ", errors) &&
                  allGood;
    }
    return allGood;
}

} // namespace KxGenApi
