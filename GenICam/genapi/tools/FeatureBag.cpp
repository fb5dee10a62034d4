// SPDX-License-Identifier: Apache-2.0
#include <GenApi/INode.h>
#include <GenApi/IValue.h>
#include <GenApi/Persistence.h>
#include <GenApi/SelectorSet.h>

#include <sstream>

namespace GenApi
{

using GenICam::gcstring;

void CFeatureBag::SetInfo(const gcstring& Info) { m_info = Info; }

void CFeatureBag::PersistFeature(IValue& item, CSelectorSet* selectorSet)
{
    CSelectorState state;
    if (selectorSet != nullptr)
        selectorSet->GetState(state);
    m_entries.push_back({item.GetNode()->GetName(), state.ToBraces(), item.ToString()});
}

bool CFeatureBag::operator==(const CFeatureBag& FeatureBag) const
{
    return m_entries == FeatureBag.m_entries;
}

gcstring CFeatureBag::ToString() const
{
    std::ostringstream stream;
    Write(stream);
    return gcstring(stream.str());
}

CFeatureBag* CFeatureBag::Clone() const { return new CFeatureBag(*this); }

void CFeatureBag::Destroy() { delete this; }

const gcstring& CFeatureBag::GetBagName() const { return m_name; }

void CFeatureBag::SetBagName(const gcstring& Name) { m_name = Name; }

} // namespace GenApi
