// SPDX-License-Identifier: Apache-2.0
// The immutable form of a camera description: what the file says, with names resolved to indexes.
#pragma once

#include "description/NameIndex.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace KxGenApi
{

/// Position of a node in its description. Nodes are numbered in the order of their first mention in the file,
/// be it a reference or the definition.
using NodeIndex = uint32_t;
constexpr NodeIndex kNoNode = ~NodeIndex{0};

/// Kind of a node. StructReg has no node of its own: each StructEntry is one.
enum class NodeType : uint8_t
{
    Node,
    Category,
    Integer,
    IntReg,
    MaskedIntReg,
    StructEntry,
    IntConverter,
    IntSwissKnife,
    Float,
    FloatReg,
    Converter,
    SwissKnife,
    Boolean,
    Command,
    Enumeration,
    EnumEntry,
    String,
    StringReg,
    Register,
    Port,
    ConfRom,
    TextDesc,
    IntKey,
    AdvFeatureLock,
    SmartFeature,
};

/// The element that a property comes from. The names are those of the schema.
enum class Prop : uint8_t
{
    // every node
    ToolTip,
    Description,
    DisplayName,
    Visibility,
    DocuURL,
    IsDeprecated,
    EventID,
    pIsImplemented,
    pIsAvailable,
    pIsLocked,
    pBlockPolling,
    ImposedAccessMode,
    ImposedVisibility,
    pError,
    pAlias,
    pCastAlias,
    // values
    Streamable,
    Value,
    pValue,
    pValueCopy,
    pIndex, // of a value: selects among ValueIndexed; of a register: an address term
    ValueIndexed,
    pValueIndexed,
    ValueDefault,
    pValueDefault,
    Min,
    pMin,
    Max,
    pMax,
    Inc,
    pInc,
    ValidValueSet,
    Unit,
    Representation,
    DisplayNotation,
    DisplayPrecision,
    PollingTime,
    pSelected,
    // registers
    Address,
    IntSwissKnife, // an inline address term; node() is the node made of it
    pAddress,
    Length,
    pLength,
    AccessMode,
    pPort,
    Cachable,
    pInvalidator,
    Sign,
    Endianess,
    LSB,
    MSB,
    Bit,
    // formulas
    pVariable,
    Constant,
    Expression,
    Formula,
    FormulaTo,
    FormulaFrom,
    Slope,
    IsLinear,
    // Boolean, Command, Enumeration, EnumEntry, Category
    OnValue,
    OffValue,
    CommandValue,
    pCommandValue,
    EnumEntry, // of an Enumeration: node() is the entry's node
    EntryName, // of an EnumEntry: the Name attribute as written, which is the symbol unless Symbolic is given
    NumericValue,
    Symbolic,
    IsSelfClearing,
    pFeature,
    // Port and the transport oddities
    ChunkID,
    pChunkID,
    SwapEndianess,
    CacheChunkData,
    FeatureID,
    Timeout,
    Other, // an element kept only for GetProperty: the name is in `attribute`
};

/// Which side of the target a formula's variable reads: what follows the first dot of the variable's name.
enum class RefPart : uint8_t
{
    Value, // also without a dot
    Min,
    Max,
    Inc,
    AccessMode,
    Entry,   // the integer of the entry that is named behind a second dot
    Unknown, // an error at the first use
};

/// One element of a node. Only the members that the kind of element needs are set; `text` always holds the
/// literal as written (the name for a reference), so that GetProperty can give it back.
struct Property
{
    Prop id = Prop::Other;
    RefPart part = RefPart::Value;
    bool hasOffset = false;   ///< whether a pIndex has a literal Offset
    NodeIndex node = kNoNode; ///< the referenced node of a p... element; of a Constant, an Expression and a
                              ///< converter's formula the synthetic node made of it
    NodeIndex offsetNode = kNoNode; ///< pOffset of a pIndex
    union {
        int64_t
            integer; ///< literal; an enumeration word as the value of the public enumerator; Yes/No as 1/0
        double real; ///< literal of a Float's Value, Min, Max, Inc, ValueIndexed, ...
    };
    int64_t index = 0;          ///< Index of (p)ValueIndexed, literal Offset of a pIndex
    std::string_view text;      ///< the element's text, trimmed where its type says so
    std::string_view attribute; ///< Name of pVariable, Constant, Expression, EnumEntry, IntSwissKnife; of
                                ///< Other: the element's name

    Property()
        : integer(0)
    {}
};

/// Place in the file, counted from 1.
struct Position
{
    uint32_t line = 0;
    uint32_t column = 0;
};

struct NodeData
{
    std::string_view name; ///< NUL-terminated
    NodeType type = NodeType::Node;
    uint8_t nameSpace = 0;  ///< GenApi::ENameSpace
    bool isFeature = false; ///< reachable from the category "Root" through pFeature, Root included
    bool synthetic = false; ///< made of a Constant, Expression, inline IntSwissKnife or a converter's formula
    uint32_t firstProperty = 0;
    uint32_t propertyCount = 0;
    Position position;
};

/// The attributes of RegisterDescription.
struct DeviceFacts
{
    std::string modelName, vendorName, toolTip, standardNameSpace, productGuid, versionGuid;
    uint16_t schemaMajor = 0, schemaMinor = 0, schemaSubMinor = 0;
    uint16_t major = 0, minor = 0, subMinor = 0;
};

/// A contiguous range that somebody else owns.
template <typename T>
class Range
{
public:
    Range(const T* first, size_t count)
        : m_first(first)
        , m_count(count)
    {}
    const T* begin() const { return m_first; }
    const T* end() const { return m_first + m_count; }
    size_t size() const { return m_count; }
    bool empty() const { return m_count == 0; }
    const T& operator[](size_t i) const { return m_first[i]; }

private:
    const T* m_first;
    size_t m_count;
};

struct DescriptionParts;

/// A parsed and checked description: built once, never changed, shared by any number of node maps.
/// All methods may be called from any thread.
class Description
{
public:
    const DeviceFacts& Device() const { return m_device; }
    NodeIndex NodeCount() const { return static_cast<NodeIndex>(m_nodes.size()); }
    const NodeData& Node(NodeIndex node) const { return m_nodes[node]; }

    /// The elements of a node in the order of the file.
    Range<Property> Properties(NodeIndex node) const
    {
        const NodeData& data = m_nodes[node];
        return {m_properties.data() + data.firstProperty, data.propertyCount};
    }

    /// First element of that kind, null if the node has none.
    const Property* Find(NodeIndex node, Prop id) const;

    /// Index of the node of that plain name (no name space prefix), kNoNode if there is none.
    NodeIndex FindNode(std::string_view name) const noexcept;

    /// The nodes that change when this one does: those that name it as value, limit, flag, address term,
    /// variable, port, child or invalidator, the nodes it selects, and the categories it is listed in. Direct
    /// ones only.
    Range<NodeIndex> Dependents(NodeIndex node) const
    {
        return {m_dependents.data() + m_firstDependent[node],
                m_firstDependent[node + 1] - m_firstDependent[node]};
    }

    /// The nodes that name this one in pSelected. Direct ones only.
    Range<NodeIndex> Selectors(NodeIndex node) const
    {
        return {m_selectors.data() + m_firstSelector[node],
                m_firstSelector[node + 1] - m_firstSelector[node]};
    }

private:
    friend std::shared_ptr<const Description> Assemble(DescriptionParts&& parts);
    Description() = default;

    DeviceFacts m_device;
    std::vector<NodeData> m_nodes;
    std::vector<Property> m_properties;
    std::vector<NodeIndex> m_dependents;
    std::vector<uint32_t> m_firstDependent; // NodeCount() + 1 entries
    std::vector<NodeIndex> m_selectors;
    std::vector<uint32_t> m_firstSelector;       // NodeCount() + 1 entries
    NameIndex m_names;                           // of all nodes
    std::vector<std::unique_ptr<char[]>> m_text; // what the string views point into
    std::string m_source;                        // the same: the file, as the parser left it
};

/// How a file's bytes are to be read.
enum class ContentType
{
    Automatic, ///< zipped if it begins like a zip archive
    Xml,
    ZippedXml,
};

/// Parses, validates and links a description.
/// Raises RuntimeException for what is broken or refers to nothing (with line, column and node),
/// PropertyException for a literal that is no number of the wanted kind, InvalidArgumentException for empty
/// content.
std::shared_ptr<const Description> ReadDescription(std::string content,
                                                   ContentType type = ContentType::Automatic);

/// The same for a description into whose tree a second one is injected: nodes of the second are added, and
/// where both define a node its MergePriority decides whose elements win (the injected one's when equal).
std::shared_ptr<const Description> ReadDescription(std::string content, std::string injected,
                                                   ContentType type = ContentType::Automatic);

/// The part of a description that a node needs: the node, all that it refers to, and a category "Root" that
/// lists it if it is not part of it anyway.
/// @param rename calls the node itself "Root"; no other node that it needs may have that name.
std::shared_ptr<const Description> ExtractSubtree(const Description& description, NodeIndex root,
                                                  bool rename = false);

/// A description without nodes.
std::shared_ptr<const Description> EmptyDescription();

/// The description as XML text of schema 1.1.
std::string WriteXml(const Description& description);

} // namespace KxGenApi
