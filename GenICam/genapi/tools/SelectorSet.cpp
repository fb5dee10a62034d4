// SPDX-License-Identifier: Apache-2.0
#include "SelectorDigits.h"

#include <Base/GCException.h>
#include <GenApi/INode.h>
#include <GenApi/ISelector.h>
#include <GenApi/IValue.h>
#include <GenApi/SelectorSet.h>

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace GenApi
{
namespace
{
/// More than any real feature has; a longer chain would exhaust the stack when it is counted through.
constexpr size_t kMaxSelectors = 64;

/// Collects the selectors of a feature and their own ones, outer ones first.
class CSelectorOrder
{
public:
    explicit CSelectorOrder(ISelector& feature)
        : m_feature(feature)
    {
        AddSelectorsOf(feature);
    }

    const FeatureList_t& Selectors() const { return m_ordered; }

private:
    void AddSelectorsOf(const ISelector& feature)
    {
        FeatureList_t direct;
        feature.GetSelectingFeatures(direct);
        // The selector that is mentioned first counts fastest.
        for (auto it = direct.rbegin(); it != direct.rend(); ++it) {
            IValue* const selector = *it;
            INode* const node = selector ? selector->GetNode() : nullptr;
            if (!node || dynamic_cast<ISelector*>(node) == &m_feature || !m_seen.insert(node).second)
                continue;
            if (m_seen.size() > kMaxSelectors)
                throw RUNTIME_EXCEPTION("Selector '%s' belongs to a feature with more than %zu selectors",
                                        node->GetName().c_str(), kMaxSelectors);
            AddSelectorsOf(dynamic_cast<ISelector&>(*node));
            m_ordered.push_back(selector);
        }
    }

    ISelector& m_feature;
    std::unordered_set<INode*> m_seen;
    FeatureList_t m_ordered;
};
} // namespace

CSelectorSet::CSelectorSet(IBase* pBase)
{
    const auto feature = dynamic_cast<ISelector*>(pBase);
    if (!feature)
        throw INVALID_ARGUMENT_EXCEPTION("A set of selectors needs a node");
    m_selectors = CSelectorOrder(*feature).Selectors();
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
    GenICam::gcstring text("[");
    for (const auto& digit : m_digits)
        text += (text.size() == 1 ? "" : ", ") + digit->ToString();
    return text + "]";
}

void CSelectorSet::GetState(CSelectorState& state)
{
    for (const auto& digit : m_digits)
        digit->GetState(state);
}

void CSelectorSet::GetSelectorList(FeatureList_t& SelectorList, bool Incremental)
{
    if (!Incremental)
        SelectorList.clear();
    SelectorList.insert(SelectorList.end(), m_selectors.begin(), m_selectors.end());
}

} // namespace GenApi
