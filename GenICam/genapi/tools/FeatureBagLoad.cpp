// SPDX-License-Identifier: Apache-2.0
#include <Base/GCException.h>
#include <GenApi/INode.h>
#include <GenApi/INodeMap.h>
#include <GenApi/IValue.h>
#include <GenApi/Persistence.h>
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
/// Names of selectors with their values.
using Selectors = std::vector<std::pair<gcstring, gcstring>>;

gcstring Trimmed(std::string_view text)
{
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return gcstring(text.data(), text.size());
}

/// Takes "{Selector=Value,...}" apart.
Selectors ParseSelectors(const gcstring& text)
{
    Selectors selectors;
    std::string_view left(text.c_str(), text.size());
    if (left.empty())
        return selectors;
    if (left.size() < 2 || left.front() != '{' || left.back() != '}')
        throw RUNTIME_EXCEPTION("'%s' is no list of selectors", text.c_str());
    left = left.substr(1, left.size() - 2);
    while (!left.empty()) {
        const std::string_view part = left.substr(0, left.find(','));
        const size_t equals = part.find('=');
        if (equals == part.npos)
            throw RUNTIME_EXCEPTION("'%s' is no list of selectors", text.c_str());
        selectors.emplace_back(Trimmed(part.substr(0, equals)), Trimmed(part.substr(equals + 1)));
        left.remove_prefix(part.size() == left.size() ? left.size() : part.size() + 1);
    }
    return selectors;
}

IValue& GetValueNode(INodeMap& nodeMap, const gcstring& name)
{
    const auto value = dynamic_cast<IValue*>(nodeMap.GetNode(name));
    if (!value)
        throw INVALID_ARGUMENT_EXCEPTION("There is no feature of this name in the node map");
    return *value;
}

/// Writes a bag's entries and reads them back.
class CBagLoader
{
public:
    CBagLoader(INodeMap& nodeMap, GenICam::gcstring_vector* errors)
        : m_nodeMap(nodeMap)
        , m_errors(errors)
    {}

    bool Write(const CFeatureBag::CEntry& entry)
    {
        return Try(entry, [&] {
            SetSelectors(entry);
            GetValueNode(m_nodeMap, entry.Name).FromString(entry.Value, false);
        });
    }

    bool Compare(const CFeatureBag::CEntry& entry)
    {
        return Try(entry, [&] {
            SetSelectors(entry);
            IValue& value = GetValueNode(m_nodeMap, entry.Name);
            // Comparing the selected features has moved it.
            if (m_moved.count(entry.Name) != 0)
                value.FromString(entry.Value, false);
            const gcstring found = value.ToString();
            if (found != entry.Value)
                throw RUNTIME_EXCEPTION("Value = %s must be equal to the bag's value = %s", found.c_str(),
                                        entry.Value.c_str());
        });
    }

private:
    template <class Function>
    bool Try(const CFeatureBag::CEntry& entry, Function function)
    {
        try {
            function();
            return true;
        } catch (const GenICam::GenericException& e) {
            if (m_errors)
                m_errors->push_back(entry.Name + entry.Selectors + ": " + e.GetDescription());
            return false;
        }
    }

    void SetSelectors(const CFeatureBag::CEntry& entry)
    {
        for (const auto& [name, value] : ParseSelectors(entry.Selectors)) {
            GetValueNode(m_nodeMap, name).FromString(value, false);
            m_moved.insert(name);
        }
    }

    INodeMap& m_nodeMap;
    GenICam::gcstring_vector* m_errors;
    std::set<gcstring> m_moved;
};
} // namespace

bool CFeatureBag::LoadFromBag(INodeMap* pNodeMap, bool Verify, GenICam::gcstring_vector* pErrorList)
{
    if (!pNodeMap)
        throw INVALID_ARGUMENT_EXCEPTION("Features can't be loaded into no node map");
    const AutoLock lock(pNodeMap->GetLock());
    CBagLoader loader(*pNodeMap, pErrorList);
    std::vector<const CEntry*> written;
    for (const CEntry& entry : m_entries) {
        if (loader.Write(entry))
            written.push_back(&entry);
    }
    size_t correct = 0;
    // In the same order, so that the selectors end where the bag leaves them.
    for (const CEntry* const entry : written) {
        if (!Verify || loader.Compare(*entry))
            ++correct;
    }
    return correct == m_entries.size();
}

} // namespace GenApi
