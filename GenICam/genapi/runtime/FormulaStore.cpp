// SPDX-License-Identifier: Apache-2.0
#include "runtime/FormulaStore.h"

#include <type_traits>

namespace KxGenApi
{
namespace
{

FormulaNames NamesOf(const Description& description, NodeIndex node)
{
    FormulaNames names;
    for (const Property& property : description.Properties(node)) {
        if (property.id == Prop::pVariable)
            names.variables.push_back(property.attribute);
        else if (property.id == Prop::Constant)
            names.constants.emplace_back(property.attribute, property.text);
        else if (property.id == Prop::Expression)
            names.expressions.emplace_back(property.attribute, property.text);
    }
    const NodeData& data = description.Node(node);
    const bool converts = data.type == NodeType::Converter || data.type == NodeType::IntConverter;
    if (converts || data.synthetic) {
        names.variables.push_back("FROM");
        names.variables.push_back("TO");
    }
    return names;
}

template <typename Number>
std::unique_ptr<CompiledFormula<Number>> Compile(const Description& description, NodeIndex node, Prop which)
{
    auto compiled = std::make_unique<CompiledFormula<Number>>();
    const Property* const text = description.Find(node, which);
    if (text == nullptr) {
        compiled->error = "there is no formula";
        return compiled;
    }
    try {
        compiled->formula = std::make_unique<const Formula<Number>>(
            Formula<Number>::Compile(text->text, NamesOf(description, node)));
    } catch (const FormulaError& error) {
        compiled->error = error.what();
    }
    return compiled;
}

} // namespace

template <typename Number>
std::unique_ptr<CompiledFormula<Number>>& FormulaStore::Slot(Entry& entry, Prop which)
{
    const size_t index = which == Prop::FormulaFrom ? 1 : 0;
    if constexpr (std::is_same_v<Number, int64_t>)
        return entry.integer[index];
    else
        return entry.real[index];
}

template <typename Number>
const CompiledFormula<Number>& FormulaStore::Get(const Description& description, NodeIndex node, Prop which)
{
    const std::lock_guard<std::mutex> guard(m_lock);
    std::unique_ptr<Entry>& entry = m_entries[node];
    if (!entry)
        entry = std::make_unique<Entry>();
    std::unique_ptr<CompiledFormula<Number>>& slot = Slot<Number>(*entry, which);
    if (!slot)
        slot = Compile<Number>(description, node, which);
    return *slot;
}

template const CompiledFormula<int64_t>& FormulaStore::Get(const Description&, NodeIndex, Prop);
template const CompiledFormula<double>& FormulaStore::Get(const Description&, NodeIndex, Prop);

} // namespace KxGenApi
