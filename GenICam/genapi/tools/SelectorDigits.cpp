// SPDX-License-Identifier: Apache-2.0
#include "SelectorDigits.h"

#include <Base/GCException.h>
#include <GenApi/IBoolean.h>
#include <GenApi/IEnumEntry.h>
#include <GenApi/IEnumeration.h>
#include <GenApi/IInteger.h>
#include <GenApi/INode.h>

#include <optional>

namespace KxGenApi
{

using namespace GenApi;

namespace
{
/// What all digits have in common: name, text, and the setting to go back to.
template <class Interface>
class CDigit : public ISelectorDigit
{
public:
    explicit CDigit(Interface& selector)
        : m_selector(selector)
    {
        if (IsReadable(selector))
            m_original = selector.ToString();
    }

    void Restore() override
    {
        // Verified or not is no question here: the device had this setting itself.
        if (m_original && (!IsReadable(m_selector) || m_selector.ToString() != *m_original))
            m_selector.FromString(*m_original, false);
    }

    GenICam::gcstring ToString() override
    {
        return m_selector.GetNode()->GetName() + "=" + m_selector.ToString();
    }

    void GetState(CSelectorState& state) override { state.AddSelector(m_selector); }

    void GetSelectorList(FeatureList_t& SelectorList, bool Incremental) override
    {
        if (!Incremental)
            SelectorList.clear();
        SelectorList.push_back(&m_selector);
    }

protected:
    Interface& m_selector;

private:
    std::optional<GenICam::gcstring> m_original;
};

class CEnumerationDigit : public CDigit<IEnumeration>
{
public:
    using CDigit::CDigit;

    bool SetFirst() override
    {
        m_selector.GetEntries(m_entries);
        return SetFrom(0);
    }
    bool SetNext(bool Tick) override { return SetFrom(Tick ? m_position + 1 : m_position); }

private:
    bool SetFrom(size_t position)
    {
        for (; position < m_entries.size(); ++position) {
            const auto entry = dynamic_cast<IEnumEntry*>(m_entries[position]);
            if (!entry || !IsAvailable(entry))
                continue;
            m_selector.SetIntValue(entry->GetValue());
            m_position = position;
            return true;
        }
        return false;
    }

    NodeList_t m_entries;
    size_t m_position = 0;
};

class CIntegerDigit : public CDigit<IInteger>
{
public:
    using CDigit::CDigit;

    bool SetFirst() override
    {
        const int64_t min = m_selector.GetMin();
        return min <= m_selector.GetMax() && Set(min);
    }

    bool SetNext(bool Tick) override
    {
        if (!Tick)
            return Set(m_value);
        const int64_t inc = m_selector.GetInc();
        if (inc <= 0)
            throw LOGICAL_ERROR_EXCEPTION("Selector '%s': Inc = %lld must be greater than 0",
                                          m_selector.GetNode()->GetName().c_str(),
                                          static_cast<long long>(inc));
        const int64_t max = m_selector.GetMax();
        // The distance may exceed the signed range.
        const uint64_t left = static_cast<uint64_t>(max) - static_cast<uint64_t>(m_value);
        return m_value < max && left >= static_cast<uint64_t>(inc) && Set(m_value + inc);
    }

private:
    bool Set(int64_t value)
    {
        m_selector.SetValue(value);
        m_value = value;
        return true;
    }

    int64_t m_value = 0;
};

class CBooleanDigit : public CDigit<IBoolean>
{
public:
    using CDigit::CDigit;

    bool SetFirst() override { return Set(false); }
    bool SetNext(bool Tick) override { return Tick ? !m_value && Set(true) : Set(m_value); }

private:
    bool Set(bool value)
    {
        m_selector.SetValue(value);
        m_value = value;
        return true;
    }

    bool m_value = false;
};
} // namespace

std::unique_ptr<ISelectorDigit> MakeSelectorDigit(IValue& selector)
{
    if (!IsWritable(selector))
        return nullptr;
    if (const auto enumeration = dynamic_cast<IEnumeration*>(&selector))
        return std::make_unique<CEnumerationDigit>(*enumeration);
    if (const auto integer = dynamic_cast<IInteger*>(&selector))
        return std::make_unique<CIntegerDigit>(*integer);
    if (const auto boolean = dynamic_cast<IBoolean*>(&selector))
        return std::make_unique<CBooleanDigit>(*boolean);
    return nullptr;
}

} // namespace KxGenApi
