// SPDX-License-Identifier: Apache-2.0
// What may stand in a description: the elements, their order and number in each kind of node, the words they
// hold, and what a reference means for the nodes at its two ends. Everything is a table known at compile
// time.
#pragma once

#include "description/Description.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace KxGenApi
{

constexpr size_t kPropCount = static_cast<size_t>(Prop::Other) + 1;
constexpr size_t kNodeTypeCount = static_cast<size_t>(NodeType::SmartFeature) + 1;

/// How the content of an element is read.
enum class ValueKind : uint8_t
{
    Text,       ///< kept as it is
    Token,      ///< text without the white space around it
    Word,       ///< one of a list of words
    Integer,    ///< integer literal
    Real,       ///< floating-point literal
    Number,     ///< integer or floating-point literal, or text, as the kind of node wants it
    Reference,  ///< name of a node
    Variable,   ///< name of a node with a suffix
    Constant,   ///< named literal, a node of its own
    Expression, ///< named formula, a node of its own
    Node,       ///< a node inside a node
};

/// What a reference may name.
enum class Target : uint8_t
{
    Any,
    Number, ///< what has a value that is a number
    Value,  ///< a number or a text, as the kind of the naming node wants it
    Port,
};

/// What a reference means for the nodes at its ends.
enum EdgeFlags : uint8_t
{
    kNoEdge = 0,
    kInvalidates = 1, ///< the naming node changes when the named one does
    kEvaluates = 2,   ///< the naming node's value or list needs the named one's: no cycles
    kSelects = 4,     ///< the named node changes when the naming one does
};

/// A word of the file and the value of the public enumerator.
struct Word
{
    std::string_view text;
    int value;
};

struct WordList
{
    const Word* first;
    size_t count;

    /// Null if the text is none of the words.
    const Word* Find(std::string_view text) const;
    /// Null if the value is that of no word.
    const Word* Find(int64_t value) const;
};

struct PropertyInfo
{
    std::string_view name;
    Prop prop;
    ValueKind kind;
    Target target;
    uint8_t edges;
    const WordList* words;
};

/// Null if there is no such element. A name space prefix is skipped.
const PropertyInfo* FindProperty(std::string_view elementName);
const PropertyInfo& InfoOf(Prop prop);

/// What stands directly in a description or a group.
enum class Tag : uint8_t
{
    Node,
    StructReg,
    Group
};

struct NodeInfo
{
    std::string_view name;
    Tag tag;
    NodeType type;
    uint8_t traits;
};

/// Traits of a kind of node.
enum NodeTraits : uint8_t
{
    kNoTraits = 0,
    kIsNumber = 1,    ///< can be named where a number is wanted
    kIsText = 2,      ///< can be named as the value of a String
    kIsReal = 4,      ///< its literals are floating-point numbers
    kIsRegister = 8,  ///< has address terms, inline IntSwissKnife among them
    kIsFormula = 16,  ///< has constants and expressions
    kIsConverter = 32 ///< has a formula for each direction
};

/// Null if there is no such node. A name space prefix is skipped.
const NodeInfo* FindNodeKind(std::string_view elementName);
const NodeInfo& InfoOf(NodeType type);
inline bool Has(NodeType type, NodeTraits trait) { return (InfoOf(type).traits & trait) != 0; }

/// Order and number of the elements in a kind of node. Each element belongs to a slot; the elements of one
/// slot exclude each other unless they may be repeated.
struct NodeRules
{
    static constexpr uint8_t kNotAllowed = 0xFF;

    std::array<uint8_t, kPropCount> slot{};
    std::array<uint8_t, 48> rank{}; ///< of a slot: its place in the order
    uint64_t once = 0;              ///< slots that may be filled only once
    uint64_t required = 0;          ///< slots that have to be filled
    bool lenient = false;           ///< any known element in any order, unknown ones are kept as text

    bool Allows(Prop prop) const { return lenient || slot[static_cast<size_t>(prop)] != kNotAllowed; }
    bool Repeats(Prop prop) const { return lenient || !(once >> slot[static_cast<size_t>(prop)] & 1); }
};

const NodeRules& RulesOf(NodeType type);
/// The rules of StructReg itself; its entries are NodeType::StructEntry.
const NodeRules& StructRegRules();
/// The rules of a StructEntry together with what it inherits.
inline const NodeRules& CompleteEntryRules() { return RulesOf(NodeType::MaskedIntReg); }

} // namespace KxGenApi
