// SPDX-License-Identifier: Apache-2.0
// Compiled formulas of a description, made at first use and shared by all its maps.
#pragma once

#include "description/Description.h"
#include "formula/Formula.h"

#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace KxGenApi
{

/// A formula, or why there is none.
template <typename Number>
struct CompiledFormula
{
    std::unique_ptr<const Formula<Number>> formula;
    std::string error; ///< set if formula is null
};

/// Any thread. What it hands out lives as long as the store.
class FormulaStore
{
public:
    explicit FormulaStore(NodeIndex nodeCount)
        : m_entries(nodeCount)
    {}

    /// The formula of a node. Variables are numbered as the node's pVariable elements; FROM and TO, which
    /// stand for what a converter is given, follow them in this order for the nodes that belong to a
    /// converter.
    /// @param which Formula, FormulaTo or FormulaFrom
    template <typename Number>
    const CompiledFormula<Number>& Get(const Description& description, NodeIndex node, Prop which);

private:
    struct Entry
    {
        std::unique_ptr<CompiledFormula<int64_t>> integer[2]; // [0] Formula or FormulaTo, [1] FormulaFrom
        std::unique_ptr<CompiledFormula<double>> real[2];
    };
    template <typename Number>
    static std::unique_ptr<CompiledFormula<Number>>& Slot(Entry& entry, Prop which);

    std::mutex m_lock; // protects m_entries; nothing is taken while it is held
    std::vector<std::unique_ptr<Entry>> m_entries;
};

} // namespace KxGenApi
