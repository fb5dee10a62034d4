// SPDX-License-Identifier: Apache-2.0
// The page's C++ code, by the kind of node.
#pragma once

#include <QString>

namespace KxApi
{

enum class ESampleCode
{
    Boolean,
    Category,
    Command,
    String,
    Register,
    Integer,
    IPAddress,
    Float,
    Enumeration,
};

/// The block of a kind of node, as HTML.
/// @param bWritable whether the node can be written now; most kinds then have more to tell.
/// @param strName what stands in the code: a float's name, an enumeration's present symbol.
QString SampleCode(ESampleCode eKind, bool bWritable, const QString& strName = {});

} // namespace KxApi
