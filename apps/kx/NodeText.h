// SPDX-License-Identifier: Apache-2.0
// What a node is and holds, as text.
#pragma once

#include <GenApi/GenApi.h>

#include <string>

namespace Kx
{

/// What reading a node's value gave.
struct ValueText
{
    enum class Kind
    {
        None,        ///< the node has no value (category, port), or reading it would make no sense (command)
        Value,       ///< `text` is the value
        NotReadable, ///< the access mode forbids to read it
        Raised,      ///< an exception of the GenICam family; `text` is its class and description
    };
    Kind kind = Kind::None;
    std::string text;
};

/// Reads the value of a node. Exceptions of other families pass through.
ValueText ReadValue(GenApi::INode& node);

/// Physical unit, empty if none.
std::string UnitOf(GenApi::INode& node);

const char* NameOf(GenApi::EAccessMode mode);
const char* NameOf(GenApi::EVisibility visibility);
const char* NameOf(GenApi::ECachingMode mode);
const char* NameOf(GenApi::EInterfaceType type);

/// The text without control characters, so that it stays one line on a terminal.
std::string OneLine(std::string text);

} // namespace Kx
