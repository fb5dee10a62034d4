// SPDX-License-Identifier: Apache-2.0
#include "description/Schema.h"

#include "description/NameTable.h"
#include "description/PropertyTable.h"

#include <iterator>

namespace KxGenApi
{
namespace
{

#define N(name) #name, Tag::Node, NodeType::name
// In the order of NodeType, then what is no node.
constexpr NodeInfo kNodes[] = {
    {N(Node), kNoTraits},
    {N(Category), kNoTraits},
    {N(Integer), kIsNumber},
    {N(IntReg), kIsNumber | kIsRegister},
    {N(MaskedIntReg), kIsNumber | kIsRegister},
    {N(StructEntry), kIsNumber},
    {N(IntConverter), kIsNumber | kIsFormula | kIsConverter},
    {N(IntSwissKnife), kIsNumber | kIsFormula},
    {N(Float), kIsNumber | kIsReal},
    {N(FloatReg), kIsNumber | kIsReal | kIsRegister},
    {N(Converter), kIsNumber | kIsReal | kIsFormula | kIsConverter},
    {N(SwissKnife), kIsNumber | kIsReal | kIsFormula},
    {N(Boolean), kIsNumber},
    {N(Command), kNoTraits},
    {N(Enumeration), kIsNumber},
    {N(EnumEntry), kIsNumber},
    {N(String), kIsText},
    {N(StringReg), kIsText | kIsRegister},
    {N(Register), kIsRegister},
    {N(Port), kNoTraits},
    {N(ConfRom), kIsRegister},
    {N(TextDesc), kIsText},
    {N(IntKey), kIsNumber},
    {N(AdvFeatureLock), kIsNumber | kIsRegister},
    {N(SmartFeature), kIsNumber | kIsRegister},
    {"StructReg", Tag::StructReg, NodeType::StructEntry, kIsRegister},
    {"Group", Tag::Group, NodeType::Node, kNoTraits},
};
#undef N

constexpr bool NodesAreInOrder()
{
    for (size_t i = 0; i < kNodeTypeCount; ++i)
        if (static_cast<size_t>(kNodes[i].type) != i)
            return false;
    return true;
}
static_assert(std::size(kNodes) == kNodeTypeCount + 2 && NodesAreInOrder());

constexpr NameTable<256> kPropertyTable(Tables::kProperties);
constexpr NameTable<64> kNodeTable(kNodes);

// Prefixes are so rare that a second search costs less than looking for one each time.
template <typename Table, typename Row>
const Row* FindRow(const Table& table, const Row* rows, std::string_view name)
{
    const Row* const row = table.Find(rows, name);
    return row || name.find(':') == std::string_view::npos
               ? row
               : table.Find(rows, name.substr(name.find(':') + 1));
}

} // namespace

const Word* WordList::Find(std::string_view text) const
{
    for (size_t i = 0; i < count; ++i)
        if (first[i].text == text)
            return &first[i];
    return nullptr;
}

const Word* WordList::Find(int64_t value) const
{
    for (size_t i = 0; i < count; ++i)
        if (first[i].value == value)
            return &first[i];
    return nullptr;
}

const PropertyInfo* FindProperty(std::string_view elementName)
{
    const PropertyInfo* const info = FindRow(kPropertyTable, Tables::kProperties, elementName);
    return info && info->prop != Prop::Other && info->prop != Prop::EntryName ? info : nullptr;
}

const PropertyInfo& InfoOf(Prop prop) { return Tables::kProperties[static_cast<size_t>(prop)]; }

const NodeInfo* FindNodeKind(std::string_view elementName)
{
    return FindRow(kNodeTable, kNodes, elementName);
}

const NodeInfo& InfoOf(NodeType type) { return kNodes[static_cast<size_t>(type)]; }

} // namespace KxGenApi
