// SPDX-License-Identifier: Apache-2.0
#include "SelectorDigits.h"

#include <Base/GCException.h>
#include <GenApi/INode.h>
#include <GenApi/IValue.h>
#include <GenApi/SelectorSet.h>

#include <algorithm>
#include <utility>

namespace GenApi
{
namespace
{
FeatureList_t SelectorsOf(const ISelector& feature)
{
    FeatureList_t selectors;
    feature.GetSelectingFeatures(selectors);
    return selectors;
}

/// The selectors of a feature, outer ones first.
FeatureList_t OrderedSelectorsOf(ISelector& feature)
{
    // Lists of selectors hold the indirect ones as well, so an outer selector has fewer than those within it.
    std::vector<std::pair<size_t, IValue*>> ranked;
    for (IValue* const selector : SelectorsOf(feature)) {
        INode* const node = selector ? selector->GetNode() : nullptr;
        const bool known = std::any_of(ranked.begin(), ranked.end(),
                                       [selector](const auto& rank) { return rank.second == selector; });
        if (node && !known && static_cast<ISelector*>(node) != &feature)
            ranked.emplace_back(SelectorsOf(*node).size(), selector);
    }
    std::stable_sort(ranked.begin(), ranked.end(),
                     [](const auto& l, const auto& r) { return l.first < r.first; });
    FeatureList_t ordered;
    for (const auto& [count, selector] : ranked)
        ordered.push_back(selector);
    return ordered;
}
} // namespace

CSelectorSet::CSelectorSet(IBase* pBase)
{
    const auto feature = dynamic_cast<ISelector*>(pBase);
    if (!feature)
        throw INVALID_ARGUMENT_EXCEPTION("A set of selectors needs a node");
    m_selectors = OrderedSelectorsOf(*feature);
    for (IValue* const selector : m_selectors) {
        if (auto digit = KxGenApi::MakeSelectorDigit(*selector))
            m_digits.push_back(std::move(digit));
    }
}

CSelectorSet::~CSelectorSet() = default;

bool CSelectorSet::IsEmpty() const { return m_selectors.empty(); }

bool CSelectorSet::SetFirst() { return SetFirstFrom(0); }

bool CSelectorSet::SetNext(bool Tick)
{
    if (Tick)
        return SetNextFrom(0);
    return std::all_of(m_digits.begin(), m_digits.end(),
                       [](const auto& digit) { return digit->SetNext(false); });
}

// An outer setting may leave an inner selector without any: then the outer one moves on.
bool CSelectorSet::SetFirstFrom(size_t digit)
{
    if (digit == m_digits.size())
        return true;
    for (bool found = m_digits[digit]->SetFirst(); found; found = m_digits[digit]->SetNext()) {
        if (SetFirstFrom(digit + 1))
            return true;
    }
    return false;
}

bool CSelectorSet::SetNextFrom(size_t digit)
{
    if (digit == m_digits.size())
        return false;
    if (SetNextFrom(digit + 1))
        return true;
    while (m_digits[digit]->SetNext()) {
        if (SetFirstFrom(digit + 1))
            return true;
    }
    return false;
}

void CSelectorSet::Restore()
{
    for (const auto& digit : m_digits)
        digit->Restore();
}

GenICam::gcstring CSelectorSet::ToString()
{
    GenICam::gcstring text;
    for (const auto& digit : m_digits)
        text += (text.empty() ? "{" : ",") + digit->ToString();
    return text.empty() ? text : text + "}";
}

void CSelectorSet::GetSelectorList(FeatureList_t& SelectorList, bool Incremental)
{
    if (!Incremental)
        SelectorList.clear();
    SelectorList.insert(SelectorList.end(), m_selectors.begin(), m_selectors.end());
}

} // namespace GenApi
