// SPDX-License-Identifier: Apache-2.0
#include "PersistenceSession.h"

#include <Base/GCException.h>
#include <GenApi/ICategory.h>
#include <GenApi/ICommand.h>
#include <GenApi/IDeviceInfo.h>
#include <GenApi/IInteger.h>
#include <GenApi/INode.h>
#include <GenApi/INodeMap.h>
#include <GenApi/ISelector.h>
#include <GenApi/IValue.h>
#include <GenApi/Persistence.h>
#include <GenApi/SelectorSet.h>
#include <GenApi/Synch.h>

#include <algorithm>
#include <cstdio>
#include <limits>
#include <unordered_set>
#include <vector>

namespace GenApi
{
namespace
{
using GenICam::gcstring;

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

/// The features below "Root", in the order of the categories, each once.
std::vector<INode*> FeaturesOf(INodeMap& nodeMap)
{
    std::vector<INode*> features;
    std::unordered_set<INode*> seen;
    std::vector<INode*> left{nodeMap.GetNode("Root")};
    while (!left.empty()) {
        INode* const node = left.back();
        left.pop_back();
        if (node == nullptr || !seen.insert(node).second)
            continue;
        const auto category = dynamic_cast<ICategory*>(node);
        if (category == nullptr) {
            features.push_back(node);
            continue;
        }
        FeatureList_t list;
        category->GetFeatures(list);
        for (auto feature = list.rbegin(); feature != list.rend(); ++feature)
            left.push_back((*feature)->GetNode());
    }
    return features;
}

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

gcstring InfoOf(INodeMap& nodeMap)
{
    const auto info = dynamic_cast<IDeviceInfo*>(&nodeMap);
    if (info == nullptr)
        return gcstring();
    Version_t version;
    info->GetDeviceVersion(version);
    char numbers[24];
    std::snprintf(numbers, sizeof numbers, "%u.%u.%u", version.Major, version.Minor, version.SubMinor);
    return "Device = " + info->GetVendorName() + "::" + info->GetModelName() + " -- " + info->GetToolTip() +
           " -- Device version = " + numbers + " -- Product GUID = " + info->GetProductGuid() +
           " -- Product version GUID = " + info->GetVersionGuid();
}

/// Takes the entries of features until there are as many as wanted.
class CFeatureStorer
{
public:
    explicit CFeatureStorer(size_t limit)
        : m_limit(limit)
    {}

    bool IsFull() const { return m_entries.size() >= m_limit; }
    std::vector<CFeatureBag::CEntry>& Entries() { return m_entries; }

    void Store(INode& node)
    {
        const auto value = dynamic_cast<IValue*>(&node);
        // What a selector stands at is told behind what it selects.
        if (value == nullptr || !node.IsStreamable() || IsSelector(node))
            return;
        CSelectorSet selectors(&node);
        CheckRanges(node, selectors);
        const std::vector<CFeatureBag::CEntry> present = PresentOf(selectors);
        const size_t before = m_entries.size();
        const CSelectorGuard guard(selectors);
        size_t count = 0;
        for (bool set = selectors.SetFirst(); set && !IsFull(); set = selectors.SetNext()) {
            if (++count > kMaxSettings)
                RaiseTooManySettings(node);
            if (!IsToBeStored(node))
                continue;
            CSelectorState state;
            selectors.GetState(state);
            m_entries.push_back({node.GetName(), state.ToBraces(), value->ToString()});
        }
        for (size_t i = 0; m_entries.size() > before && i < present.size() && !IsFull(); ++i)
            m_entries.push_back(present[i]);
    }

private:
    static bool IsSelector(INode& node)
    {
        const auto selector = dynamic_cast<ISelector*>(&node);
        return selector != nullptr && selector->IsSelector();
    }

    static std::vector<CFeatureBag::CEntry> PresentOf(CSelectorSet& selectors)
    {
        std::vector<CFeatureBag::CEntry> present;
        CSelectorState state;
        selectors.GetState(state);
        for (bool more = state.SetFirst(); more; more = state.SetNext())
            present.push_back({state.GetNodeName(), gcstring(), state.GetNodeValue()});
        return present;
    }

    const size_t m_limit;
    std::vector<CFeatureBag::CEntry> m_entries;
};
} // namespace

int64_t CFeatureBag::StoreToBag(INodeMap* pNodeMap, const int MaxNumPersistScriptEntries,
                                GenICam::gcstring_vector* pFeatureFilter,
                                GenICam::gcstring_vector* pErrorList)
{
    if (pNodeMap == nullptr)
        throw INVALID_ARGUMENT_EXCEPTION("Features can't be stored from no node map");
    CFeatureStorer storer(MaxNumPersistScriptEntries < 0
                              ? std::numeric_limits<size_t>::max()
                              : static_cast<size_t>(std::max(MaxNumPersistScriptEntries, 1)));
    const AutoLock lock(pNodeMap->GetLock());
    const KxGenApi::PersistenceSession session(*pNodeMap, "DeviceFeaturePersistenceStart",
                                               "DeviceFeaturePersistenceEnd");
    for (INode* const feature : FeaturesOf(*pNodeMap)) {
        const gcstring name = feature->GetName();
        if (storer.IsFull())
            break;
        if (pFeatureFilter != nullptr &&
            std::find(pFeatureFilter->begin(), pFeatureFilter->end(), name) == pFeatureFilter->end())
            continue;
        try {
            storer.Store(*feature);
        } catch (const GenICam::GenericException& e) {
            if (pErrorList == nullptr)
                throw;
            pErrorList->push_back(name + ": " + e.GetDescription());
        } catch (const std::exception& e) { // of a port
            if (pErrorList == nullptr)
                throw;
            pErrorList->push_back(name + ": " + e.what());
        }
    }
    m_info = InfoOf(*pNodeMap);
    m_entries.insert(m_entries.end(), storer.Entries().begin(), storer.Entries().end());
    return static_cast<int64_t>(storer.Entries().size());
}

} // namespace GenApi
