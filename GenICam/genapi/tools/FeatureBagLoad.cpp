// SPDX-License-Identifier: Apache-2.0
#include "Attempt.h"
#include "PersistenceSession.h"

#include <Base/GCException.h>
#include <GenApi/INode.h>
#include <GenApi/INodeMap.h>
#include <GenApi/IValue.h>
#include <GenApi/Persistence.h>
#include <GenApi/SelectorState.h>
#include <GenApi/Synch.h>

#include <set>
#include <string_view>
#include <utility>
#include <vector>

namespace GenApi
{
namespace
{
using GenICam::gcstring;

gcstring Trimmed(std::string_view text)
{
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return gcstring(text.data(), text.size());
}

/// Takes "{Selector=Value TAB ...}" apart; files of before had commas, which no selector's value has.
CSelectorState ParseSelectors(const gcstring& text)
{
    CSelectorState state;
    std::string_view left(text.c_str(), text.size());
    if (left.size() < 2)
        return state;
    left = left.substr(1, left.size() - 2);
    while (!left.empty()) {
        const std::string_view part = left.substr(0, left.find_first_of("\t,"));
        const size_t equals = part.find('=');
        if (equals != part.npos)
            state.AddSelector(Trimmed(part.substr(0, equals)), Trimmed(part.substr(equals + 1)));
        left.remove_prefix(part.size() == left.size() ? left.size() : part.size() + 1);
    }
    return state;
}

/// Writes a bag's entries and reads them back.
class CBagLoader
{
public:
    CBagLoader(INodeMap& nodeMap, GenICam::gcstring_vector* errors)
        : m_nodeMap(nodeMap)
        , m_errors(errors)
    {}

    /// False if there was an error other than that of a selector.
    bool AllGood() const { return m_allGood; }

    /// Whether the entry is to be verified as well.
    bool Write(const CFeatureBag::CEntry& entry)
    {
        const auto value = dynamic_cast<IValue*>(m_nodeMap.GetNode(entry.Name));
        if (value == nullptr) {
            Tell("Error while writing node: '" + entry.Name + "' not found ");
            return false;
        }
        if (!SetSelectors(entry))
            return true;
        return Attempt([&] { value->FromString(entry.Value, false); },
                       "Error while writing node '" + entry.Name + "': ");
    }

    void Compare(const CFeatureBag::CEntry& entry)
    {
        if (!SetSelectors(entry))
            return;
        const auto compare = [&] {
            IValue& value = dynamic_cast<IValue&>(*m_nodeMap.GetNode(entry.Name));
            // Comparing the selected features has moved it.
            if (m_moved.count(entry.Name) != 0)
                value.FromString(entry.Value, false);
            const gcstring found = value.ToString(true);
            if (found != entry.Value)
                Tell("Error while verifying node '" + entry.Name + "'. Expected '" + entry.Value +
                     "', but found '" + found + "'");
        };
        Attempt(compare, "Error while verifying the value of node '" + entry.Name + "': ");
    }

private:
    template <typename Function>
    bool Attempt(const Function& function, const gcstring& prefix)
    {
        const bool done = KxGenApi::Attempt(function, prefix, m_errors);
        m_allGood = m_allGood && done;
        return done;
    }

    void Tell(const gcstring& error)
    {
        m_allGood = false;
        if (m_errors != nullptr)
            m_errors->push_back(error);
    }

    bool SetSelectors(const CFeatureBag::CEntry& entry)
    {
        CSelectorState state = ParseSelectors(entry.Selectors);
        for (bool more = state.SetFirst(); more; more = state.SetNext())
            m_moved.insert(state.GetNodeName());
        return state.RestoreState(&m_nodeMap, m_errors);
    }

    INodeMap& m_nodeMap;
    GenICam::gcstring_vector* m_errors;
    std::set<gcstring> m_moved;
    bool m_allGood = true;
};
} // namespace

bool CFeatureBag::LoadFromBag(INodeMap* pNodeMap, bool Verify, GenICam::gcstring_vector* pErrorList)
{
    if (pNodeMap == nullptr)
        throw INVALID_ARGUMENT_EXCEPTION("Features can't be loaded into no node map");
    if (pErrorList != nullptr)
        pErrorList->clear();
    const AutoLock lock(pNodeMap->GetLock());
    const KxGenApi::PersistenceSession session(*pNodeMap, "DeviceRegistersStreamingStart",
                                               "DeviceRegistersStreamingEnd");
    CBagLoader loader(*pNodeMap, pErrorList);
    std::vector<const CEntry*> written;
    for (const CEntry& entry : m_entries) {
        if (loader.Write(entry))
            written.push_back(&entry);
    }
    if (!Verify)
        return loader.AllGood();
    // In the same order, so that the selectors end where the bag leaves them.
    for (const CEntry* const entry : written)
        loader.Compare(*entry);
    return loader.AllGood();
}

} // namespace GenApi
