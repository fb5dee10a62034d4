// SPDX-License-Identifier: Apache-2.0
// An enumeration whose entries are known at compile time.
#pragma once

#include <Base/GCException.h>
#include <GenApi/IEnumeration.h>
#include <GenApi/Reference.h>

#include <cstdint>
#include <vector>

namespace GenApi
{

/// An enumeration with values of an enumeration type. Any thread.
template <typename EnumT>
struct IEnumerationT : public IEnumeration
{
    /// Chooses an entry.
    virtual void SetValue(EnumT Value, bool Verify = true) = 0;
    virtual IEnumeration& operator=(EnumT Value) = 0;
    IEnumeration& operator=(const GenICam::gcstring& ValueStr) override = 0;

    /// The present entry.
    virtual EnumT GetValue(bool Verify = false, bool IgnoreCache = false) = 0;
    virtual EnumT operator()() = 0;

    /// The node of an entry.
    virtual IEnumEntry* GetEntry(const EnumT Value) = 0;
    using IEnumeration::GetEntry;
};

/// Reference to an enumeration, whose entries have their places in an enumeration type. A place without an
/// entry can't be chosen: AccessException.
template <typename EnumT>
class CEnumerationTRef : public IEnumerationT<EnumT>, public IReference, public IEnumReference
{
public:
    CEnumerationTRef()
        : m_Ptr(nullptr)
    {}

    void SetReference(IBase* ptr) override
    {
        m_Ptr = ptr != nullptr ? dynamic_cast<IEnumeration*>(ptr) : nullptr;
    }
    void SetNumEnums(int NumEnums) override
    {
        m_EnumExists.assign(NumEnums > 0 ? static_cast<size_t>(NumEnums) : 0, false);
        m_EnumValues.assign(m_EnumExists.size(), 0);
    }
    void SetEnumReference(int Index, GenICam::gcstring Name) override
    {
        const size_t place = static_cast<size_t>(Index);
        IEnumEntry* const entry = m_Ptr != nullptr ? m_Ptr->GetEntryByName(Name) : nullptr;
        if (entry == nullptr || place >= m_EnumExists.size())
            return;
        m_EnumExists[place] = true;
        m_EnumValues[place] = entry->GetValue();
    }

    void SetValue(EnumT Value, bool Verify = true) override { Get().SetIntValue(ValueOf(Value), Verify); }
    IEnumeration& operator=(EnumT Value) override
    {
        SetValue(Value);
        return *this;
    }
    IEnumeration& operator=(const GenICam::gcstring& ValueStr) override
    {
        Get().FromString(ValueStr);
        return *this;
    }
    IEnumeration& operator=(const char* pValueStr)
    {
        Get().FromString(GenICam::gcstring(pValueStr));
        return *this;
    }
    EnumT GetValue(bool Verify = false, bool IgnoreCache = false) override
    {
        const int64_t value = Get().GetIntValue(Verify, IgnoreCache);
        for (size_t place = 0; place < m_EnumValues.size(); ++place) {
            if (m_EnumExists[place] && m_EnumValues[place] == value)
                return static_cast<EnumT>(place);
        }
        throw ACCESS_EXCEPTION("Unknown IntValue %lld", static_cast<long long>(value));
    }
    EnumT operator()() override { return GetValue(); }
    IEnumEntry* GetEntry(const EnumT Value) override
    {
        const size_t place = static_cast<size_t>(Value);
        return Exists(place) ? Get().GetEntry(m_EnumValues[place]) : nullptr;
    }
    IEnumEntry* GetEntry(const int64_t IntValue) override { return Get().GetEntry(IntValue); }

    EAccessMode GetAccessMode() const override { return m_Ptr != nullptr ? m_Ptr->GetAccessMode() : NI; }
    INode* GetNode() override { return Get().GetNode(); }
    GenICam::gcstring ToString(bool Verify = false, bool IgnoreCache = false) override
    {
        return Get().ToString(Verify, IgnoreCache);
    }
    void FromString(const GenICam::gcstring& ValueStr, bool Verify = true) override
    {
        Get().FromString(ValueStr, Verify);
    }
    bool IsValueCacheValid() const override { return Get().IsValueCacheValid(); }
    void GetSymbolics(StringList_t& Symbolics) override { Get().GetSymbolics(Symbolics); }
    void GetEntries(NodeList_t& Entries) override { Get().GetEntries(Entries); }
    void SetIntValue(int64_t Value, bool Verify = true) override { Get().SetIntValue(Value, Verify); }
    GenICam::gcstring operator*() override { return *Get(); }
    int64_t GetIntValue(bool Verify = false, bool IgnoreCache = false) override
    {
        return Get().GetIntValue(Verify, IgnoreCache);
    }
    IEnumEntry* GetEntryByName(const GenICam::gcstring& Symbolic) override
    {
        return Get().GetEntryByName(Symbolic);
    }
    IEnumEntry* GetCurrentEntry(bool Verify = false, bool IgnoreCache = false) override
    {
        return Get().GetCurrentEntry(Verify, IgnoreCache);
    }

    /// Whether it is set.
    bool IsValid() const { return m_Ptr != nullptr; }

protected:
    IEnumeration& Get() const
    {
        if (m_Ptr == nullptr)
            throw ACCESS_EXCEPTION("Feature not present (reference not valid)");
        return *m_Ptr;
    }
    bool Exists(size_t place) const { return place < m_EnumExists.size() && m_EnumExists[place]; }
    int64_t ValueOf(EnumT value) const
    {
        const size_t place = static_cast<size_t>(value);
        if (!Exists(place))
            throw ACCESS_EXCEPTION("EnumEntry %d not present", static_cast<int>(value));
        return m_EnumValues[place];
    }

    IEnumeration* m_Ptr;
    std::vector<int64_t> m_EnumValues;
    std::vector<bool> m_EnumExists;
};

} // namespace GenApi
