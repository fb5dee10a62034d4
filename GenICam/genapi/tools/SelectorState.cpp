// SPDX-License-Identifier: Apache-2.0
#include "Attempt.h"

#include <Base/GCException.h>
#include <GenApi/INode.h>
#include <GenApi/INodeMap.h>
#include <GenApi/IValue.h>
#include <GenApi/SelectorState.h>

namespace GenApi
{

using GenICam::gcstring;

CSelectorState::CSelectorState()
    : m_position(0)
{}

bool CSelectorState::SetFirst()
{
    m_position = 0;
    return !m_selectors.empty();
}

bool CSelectorState::SetNext()
{
    if (m_position < m_selectors.size())
        ++m_position;
    return m_position < m_selectors.size();
}

void CSelectorState::AddSelector(IValue& Selector)
{
    AddSelector(Selector.GetNode()->GetName(), Selector.ToString());
}

void CSelectorState::AddSelector(gcstring Name, gcstring Value)
{
    m_selectors.emplace_back(std::move(Name), std::move(Value));
}

gcstring CSelectorState::GetNodeName() const { return Current().first; }

gcstring CSelectorState::GetNodeValue() const { return Current().second; }

bool CSelectorState::IsEmpty() const { return m_selectors.empty(); }

const CSelectorState::Setting& CSelectorState::Current() const
{
    if (m_position >= m_selectors.size())
        throw OUT_OF_RANGE_EXCEPTION("Position = %zu must be smaller than the number of selectors = %zu",
                                     m_position, m_selectors.size());
    return m_selectors[m_position];
}

bool CSelectorState::RestoreState(INodeMap* pNodeMap, GenICam::gcstring_vector* pErrorList) const
{
    if (pNodeMap == nullptr)
        throw INVALID_ARGUMENT_EXCEPTION("Selectors can't be set without a node map");
    bool allGood = true;
    for (const Setting& selector : m_selectors) {
        const auto value = dynamic_cast<IValue*>(pNodeMap->GetNode(selector.first));
        if (value == nullptr)
            continue; // files are made on other devices as well
        allGood = KxGenApi::Attempt([&] { value->FromString(selector.second); },
                                    "Error while writing selector '" + selector.first + "': ", pErrorList) &&
                  allGood;
    }
    return allGood;
}

gcstring CSelectorState::ToBraces() const
{
    gcstring text;
    for (const Setting& selector : m_selectors)
        text += (text.empty() ? "{" : "\t") + selector.first + "=" + selector.second;
    return text.empty() ? text : text + "}";
}

} // namespace GenApi
