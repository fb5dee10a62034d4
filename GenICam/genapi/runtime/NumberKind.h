// SPDX-License-Identifier: Apache-2.0
// What differs between nodes over integers and nodes over floating-point numbers, so that their code need
// not.
#pragma once

#include "runtime/Node.h"

#include <limits>

namespace KxGenApi
{

class IntegerBase;
class FloatBase;

/// A number of another node, its literals, and the class that nodes of that kind derive from.
template <typename Number>
struct NumberKind;

template <>
struct NumberKind<int64_t>
{
    using Base = IntegerBase;

    static int64_t Read(Node& node, ReadOptions options) { return node.ReadInteger(options); }
    static void Write(Node& node, int64_t value, bool verify, Change& change)
    {
        node.WriteInteger(value, verify, change);
    }
    static int64_t Min(Node& node) { return node.IntegerMin(); }
    static int64_t Max(Node& node) { return node.IntegerMax(); }
    static int64_t Inc(Node& node) { return node.IntegerInc(); }
    static int64_t Literal(const Property& property) { return property.integer; }
    static int64_t FromInteger(int64_t value) { return value; }
    static constexpr ECachingMode kCaching = WriteThrough; // of a value that is no register's
};

template <>
struct NumberKind<double>
{
    using Base = FloatBase;

    static double Read(Node& node, ReadOptions options) { return node.ReadReal(options); }
    static void Write(Node& node, double value, bool verify, Change& change)
    {
        node.WriteReal(value, verify, change);
    }
    static double Min(Node& node) { return node.RealMin(); }
    static double Max(Node& node) { return node.RealMax(); }
    static double Inc(Node& node) { return node.RealInc(); }
    static double Literal(const Property& property) { return property.real; }
    static double FromInteger(int64_t value) { return static_cast<double>(value); }
    static constexpr ECachingMode kCaching = WriteAround;
};

} // namespace KxGenApi
