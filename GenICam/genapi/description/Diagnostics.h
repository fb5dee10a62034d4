// SPDX-License-Identifier: Apache-2.0
// Errors in a description: they name the place in the file, the node, the element, and what is wrong.
#pragma once

#include "description/Description.h"

#include <string>
#include <string_view>

namespace KxGenApi
{

/// Which class of exception an error becomes.
enum class Fault
{
    Structure, ///< RuntimeException
    Literal,   ///< PropertyException
};

/// Where an error is. Unknown parts are left empty.
struct Place
{
    Position position;
    std::string_view node;
    std::string_view element;
};

/// Raises the exception "line 12, column 5: node 'Width': element 'pValue' <detail>".
[[noreturn]] void Fail(const Place& place, const std::string& detail, Fault fault = Fault::Structure);

/// The text between quotes, shortened where a message could not hold it, without control characters.
std::string Quoted(std::string_view text);

/// Raises RuntimeException "... <count> <unit> exceed the limit of <limit>".
[[noreturn]] void FailLimit(const Place& place, size_t count, const char* unit, size_t limit);

} // namespace KxGenApi
