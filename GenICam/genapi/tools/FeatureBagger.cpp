// SPDX-License-Identifier: Apache-2.0
// Bags of the features as they are, of the user sets and of the sequencer sets.
#include "Attempt.h"
#include "SelectorDigits.h"

#include <Base/GCException.h>
#include <GenApi/ICommand.h>
#include <GenApi/INode.h>
#include <GenApi/INodeMap.h>
#include <GenApi/IValue.h>
#include <GenApi/Persistence.h>
#include <GenApi/Synch.h>

namespace GenApi
{
namespace
{
using GenICam::gcstring;
using GenICam::gcstring_vector;

/// The standard features of one kind of set.
struct SetNames
{
    const char* prefix;
    const char* selector;
    const char* load;
    const char* save; ///< null if storing in the device is not part of loading a bag
    const char* featureSelector;
    const char* featureEnable;
};

constexpr SetNames kUserSets = {"UserSet.",    "UserSetSelector",        "UserSetLoad",
                                "UserSetSave", "UserSetFeatureSelector", "UserSetFeatureEnable"};
constexpr SetNames kSequencerSets = {"SequencerSet.", "SequencerSetSelector",     "SequencerSetLoad",
                                     nullptr,         "SequencerFeatureSelector", "SequencerFeatureEnable"};

template <class Interface>
Interface* FindStandard(INodeMap& nodeMap, const char* name)
{
    INode* const node = nodeMap.GetNode(name);
    return node != nullptr && node->GetNameSpace() == Standard ? dynamic_cast<Interface*>(node) : nullptr;
}

bool HasSets(INodeMap& nodeMap, const SetNames& names)
{
    return FindStandard<IValue>(nodeMap, names.selector) && FindStandard<ICommand>(nodeMap, names.load) &&
           FindStandard<IValue>(nodeMap, names.featureSelector) &&
           FindStandard<IValue>(nodeMap, names.featureEnable);
}

/// Does both, the second even if the first fails, whose exception leaves then.
template <class Work, class Finish>
void DoBoth(const Work& work, const Finish& finish)
{
    try {
        work();
    } catch (...) {
        KxGenApi::Attempt(finish, gcstring(), nullptr);
        throw;
    }
    finish();
}

/// Calls `visit` with each value of a selector, at which the selector stands then.
template <class Visit>
void ForEachSetting(IValue& selector, const Visit& visit)
{
    const auto digit = KxGenApi::MakeSelectorDigit(selector);
    if (!digit)
        return;
    const auto visitAll = [&] {
        for (bool set = digit->SetFirst(); set; set = digit->SetNext())
            visit(selector.ToString());
    };
    DoBoth(visitAll, [&] { digit->Restore(); });
}

void BagSets(INodeMap& nodeMap, const SetNames& names, int limit, std::vector<CFeatureBag>& bags)
{
    if (!HasSets(nodeMap, names))
        return;
    CFeatureBag before;
    before.StoreToBag(&nodeMap);
    const auto bagSet = [&](const gcstring& set) {
        FindStandard<ICommand>(nodeMap, names.load)->Execute();
        gcstring_vector features;
        ForEachSetting(*FindStandard<IValue>(nodeMap, names.featureSelector),
                       [&](const gcstring& feature) { features.push_back(feature); });
        CFeatureBag bag;
        bag.SetBagName(names.prefix + set);
        bag.StoreToBag(&nodeMap, limit, &features);
        bags.push_back(bag);
    };
    DoBoth([&] { ForEachSetting(*FindStandard<IValue>(nodeMap, names.selector), bagSet); },
           [&] { before.LoadFromBag(&nodeMap, false); });
}

bool HasPrefix(const gcstring& text, const char* prefix) { return text.find(prefix) == 0; }
} // namespace

CFeatureBagger::CFeatureBagger() = default;
CFeatureBagger::~CFeatureBagger() = default;

void CFeatureBagger::SetInfo(const gcstring& Info) { m_info = Info; }

size_t CFeatureBagger::Bag(INodeMap* pNodeMap, bool handleDefaultNodeMap, bool handleUserSets,
                           bool handleSequencerSets, const int MaxNumPersistScriptEntries)
{
    if (pNodeMap == nullptr)
        throw INVALID_ARGUMENT_EXCEPTION("Features can't be stored from no node map");
    const AutoLock lock(pNodeMap->GetLock());
    std::vector<CFeatureBag> bags;
    CFeatureBag all;
    all.SetBagName("All");
    all.StoreToBag(pNodeMap, MaxNumPersistScriptEntries);
    const gcstring info = all.m_info;
    if (handleDefaultNodeMap)
        bags.push_back(all);
    if (handleUserSets)
        BagSets(*pNodeMap, kUserSets, MaxNumPersistScriptEntries, bags);
    if (handleSequencerSets)
        BagSets(*pNodeMap, kSequencerSets, MaxNumPersistScriptEntries, bags);
    m_bags.swap(bags);
    m_info = info;
    return m_bags.size();
}

bool CFeatureBagger::UnBag(INodeMap* pNodeMap, bool Verify, gcstring_vector* pErrorList)
{
    if (pNodeMap == nullptr)
        throw INVALID_ARGUMENT_EXCEPTION("Features can't be loaded into no node map");
    const AutoLock lock(pNodeMap->GetLock());
    gcstring_vector errors;
    bool allGood = true;
    const auto load = [&](CFeatureBag& bag) {
        gcstring_vector own;
        allGood = bag.LoadFromBag(pNodeMap, Verify, &own) && allGood;
        for (const gcstring& error : own)
            errors.push_back(error);
    };
    const auto loadSets = [&](const SetNames& names) {
        for (CFeatureBag& bag : m_bags) {
            if (!HasPrefix(bag.GetBagName(), names.prefix))
                continue;
            load(bag);
            const gcstring set = bag.GetBagName().substr(std::strlen(names.prefix));
            const auto selector = FindStandard<IValue>(*pNodeMap, names.selector);
            const auto save = names.save ? FindStandard<ICommand>(*pNodeMap, names.save) : nullptr;
            if (selector == nullptr || save == nullptr || set == "Default")
                continue;
            const auto keep = [&] {
                selector->FromString(set);
                save->Execute();
            };
            allGood = KxGenApi::Attempt(keep, "Error while saving '" + bag.GetBagName() + "': ", &errors) &&
                      allGood;
        }
    };
    loadSets(kUserSets);
    loadSets(kSequencerSets);
    for (CFeatureBag& bag : m_bags) {
        if (!HasPrefix(bag.GetBagName(), kUserSets.prefix) &&
            !HasPrefix(bag.GetBagName(), kSequencerSets.prefix))
            load(bag);
    }
    if (pErrorList != nullptr)
        *pErrorList = errors;
    return allGood;
}

} // namespace GenApi
