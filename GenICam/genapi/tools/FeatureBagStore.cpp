// SPDX-License-Identifier: Apache-2.0
#include <Base/GCException.h>
#include <GenApi/ICategory.h>
#include <GenApi/ICommand.h>
#include <GenApi/IInteger.h>
#include <GenApi/INode.h>
#include <GenApi/INodeMap.h>
#include <GenApi/IValue.h>
#include <GenApi/Persistence.h>
#include <GenApi/SelectorSet.h>
#include <GenApi/Synch.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace GenApi
{
namespace
{
/// Guards against selectors of absurd ranges, which would keep us busy for ever and fill the memory.
constexpr size_t kMaxSettings = 1000000;

/// Puts the selectors back when its block ends, however it does.
class CSelectorGuard
{
public:
    explicit CSelectorGuard(CSelectorSet& selectors)
        : m_selectors(selectors)
    {}
    CSelectorGuard(const CSelectorGuard&) = delete;
    CSelectorGuard& operator=(const CSelectorGuard&) = delete;
    ~CSelectorGuard()
    {
        try {
            m_selectors.Restore();
        } catch (...) {
            // What made the device fail has been told already, or the values are complete.
        }
    }

private:
    CSelectorSet& m_selectors;
};

/// Finds the features to be saved, in the order in which to save them.
class CFeatureOrder
{
public:
    explicit CFeatureOrder(INodeMap& nodeMap)
    {
        CollectFrom(nodeMap.GetNode("Root"));
        for (INode* const feature : m_inCategories)
            Add(feature);
    }

    const std::vector<INode*>& Features() const { return m_ordered; }

private:
    void CollectFrom(INode* root)
    {
        std::unordered_set<INode*> seen;
        std::vector<INode*> left{root};
        while (!left.empty()) {
            INode* const node = left.back();
            left.pop_back();
            if (!node || !seen.insert(node).second)
                continue;
            const auto category = dynamic_cast<ICategory*>(node);
            if (!category) {
                m_rank.emplace(node, m_inCategories.size());
                m_inCategories.push_back(node);
                continue;
            }
            FeatureList_t features;
            category->GetFeatures(features);
            for (auto feature = features.rbegin(); feature != features.rend(); ++feature)
                left.push_back((*feature)->GetNode());
        }
    }

    /// Adds a feature behind all that it selects, for loading a bag has to leave the selectors as they were.
    /// Chains of selectors may be of any length, hence no recursion.
    void Add(INode* feature)
    {
        std::vector<INode*> open{feature};
        while (!open.empty()) {
            INode* const node = open.back();
            if (m_opened.insert(node).second) {
                for (const size_t rank : RanksOfSelected(*node))
                    open.push_back(m_inCategories[rank]);
                continue;
            }
            open.pop_back();
            if (m_added.insert(node).second)
                m_ordered.push_back(node);
        }
    }

    /// Places of the selected features among all, the last one first, as a stack wants them.
    std::vector<size_t> RanksOfSelected(const INode& selector) const
    {
        FeatureList_t selected;
        selector.GetSelectedFeatures(selected);
        std::vector<size_t> ranks;
        for (IValue* const value : selected) {
            const auto found = value ? m_rank.find(value->GetNode()) : m_rank.end();
            if (found != m_rank.end() && m_opened.count(found->first) == 0)
                ranks.push_back(found->second);
        }
        std::sort(ranks.begin(), ranks.end(), std::greater<>());
        return ranks;
    }

    std::vector<INode*> m_inCategories;
    std::unordered_map<INode*, size_t> m_rank;
    std::unordered_set<INode*> m_opened, m_added;
    std::vector<INode*> m_ordered;
};

bool IsToBeStored(INode& node)
{
    return node.IsStreamable() && IsReadable(node) && IsWritable(node) &&
           dynamic_cast<ICommand*>(&node) == nullptr;
}

[[noreturn]] void RaiseTooManySettings(INode& node)
{
    throw RUNTIME_EXCEPTION("Feature '%s' has more than %zu settings of its selectors",
                            node.GetName().c_str(), kMaxSettings);
}

/// Refuses a selector whose range alone is too large before going through it.
void CheckRanges(INode& node, CSelectorSet& selectors)
{
    FeatureList_t list;
    selectors.GetSelectorList(list);
    for (IValue* const selector : list) {
        const auto integer = dynamic_cast<IInteger*>(selector);
        if (!integer || !IsWritable(integer->GetAccessMode()))
            continue;
        const int64_t min = integer->GetMin(), max = integer->GetMax(), inc = integer->GetInc();
        const uint64_t span = max > min ? static_cast<uint64_t>(max) - static_cast<uint64_t>(min) : 0;
        if (inc > 0 && span / static_cast<uint64_t>(inc) >= kMaxSettings)
            RaiseTooManySettings(node);
    }
}

/// Adds the entries of one feature until there are `limit` entries.
void StoreFeature(INode& node, size_t limit, std::vector<CFeatureBag::CEntry>& entries)
{
    const auto value = dynamic_cast<IValue*>(&node);
    if (!value || !node.IsStreamable())
        return;
    CSelectorSet selectors(&node);
    CheckRanges(node, selectors);
    const CSelectorGuard guard(selectors);
    size_t count = 0;
    for (bool set = selectors.SetFirst(); set && entries.size() < limit; set = selectors.SetNext()) {
        if (++count > kMaxSettings)
            throw RUNTIME_EXCEPTION("Feature '%s' has more than %zu settings of its selectors",
                                    node.GetName().c_str(), kMaxSettings);
        if (IsToBeStored(node))
            entries.push_back({node.GetName(), selectors.ToString(), value->ToString()});
    }
}
} // namespace

int64_t CFeatureBag::StoreToBag(INodeMap* pNodeMap, int MaxNumPersistScriptEntries,
                                GenICam::gcstring_vector* pErrorList)
{
    if (!pNodeMap)
        throw INVALID_ARGUMENT_EXCEPTION("Features can't be stored from no node map");
    const size_t limit = MaxNumPersistScriptEntries < 0 ? std::numeric_limits<size_t>::max()
                                                        : static_cast<size_t>(MaxNumPersistScriptEntries);
    std::vector<CEntry> entries;
    const AutoLock lock(pNodeMap->GetLock());
    const CFeatureOrder order(*pNodeMap);
    for (INode* const feature : order.Features()) {
        try {
            StoreFeature(*feature, limit, entries);
        } catch (const GenICam::GenericException& e) {
            if (!pErrorList)
                throw;
            pErrorList->push_back(feature->GetName() + ": " + e.GetDescription());
        }
    }
    m_entries = std::move(entries);
    return static_cast<int64_t>(m_entries.size());
}

} // namespace GenApi
