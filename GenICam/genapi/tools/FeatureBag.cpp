// SPDX-License-Identifier: Apache-2.0
#include <GenApi/INode.h>
#include <GenApi/IValue.h>
#include <GenApi/Persistence.h>

#include <sstream>

namespace GenApi
{

void CFeatureBag::SetInfo(GenICam::gcstring& Info) { m_info = Info; }

void CFeatureBag::PersistFeature(IValue& item)
{
    m_entries.push_back({item.GetNode()->GetName(), GenICam::gcstring(), item.ToString()});
}

bool CFeatureBag::operator==(const CFeatureBag& FeatureBag) const
{
    return m_entries == FeatureBag.m_entries;
}

GenICam::gcstring CFeatureBag::ToString() const
{
    std::ostringstream stream;
    stream << *this;
    return GenICam::gcstring(stream.str());
}

CFeatureBag* CFeatureBag::Clone() const { return new CFeatureBag(*this); }

void CFeatureBag::Destroy() { delete this; }

} // namespace GenApi
