// SPDX-License-Identifier: Apache-2.0
// All values of a selected feature in one access.
#pragma once

#include <Base/GCException.h>
#include <GenApi/IBoolean.h>
#include <GenApi/IFloat.h>
#include <GenApi/IInteger.h>
#include <GenApi/INode.h>
#include <GenApi/IRegister.h>
#include <GenApi/ISelector.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace GenApi
{

/// Finds where the values of a feature lie for the settings of its integer selector: registers of one length
/// at equal distances. Any thread; the calls take the lock of the node map and leave the selector alone.
class GENAPI_DECL CValueArrayAdapterBase
{
public:
    /// Whether the values can be read in one access.
    bool IsValid() const { return m_pRegister != nullptr; }

protected:
    CValueArrayAdapterBase(IValue* pValue, IInteger* pSelector);

    /// The bytes of the registers of all settings, one behind the other; RuntimeException unless valid.
    std::vector<uint8_t> ReadBytes() const;
    /// Number of settings, and bytes of a register.
    size_t Count() const { return m_count; }
    size_t Length() const { return m_length; }
    /// A register's bytes as a number, in the byte order and with the sign that the description says.
    int64_t IntegerAt(const std::vector<uint8_t>& bytes, size_t index) const;
    double RealAt(const std::vector<uint8_t>& bytes, size_t index) const;
    bool IsReal() const { return m_isReal; }
    int64_t OnValue() const { return m_onValue; }

    /// Whether the map's text ValueArrayCandidates names the feature with that selector.
    static bool IsAdvertised(INode* pNode, IInteger* pSelector);

private:
    IRegister* m_pRegister; // null if not valid
    int64_t m_address, m_stride, m_onValue;
    size_t m_count, m_length;
    bool m_isBigEndian, m_isSigned, m_isReal;
};

/// The values as numbers of the type Out. Node is the feature's interface.
template <class Node, typename Out, typename Effective = Out>
class CValueArrayAdapter : public CValueArrayAdapterBase
{
public:
    CValueArrayAdapter(Node* pNode, IInteger* pSelector)
        : CValueArrayAdapterBase(pNode, pSelector)
    {}

    /// The values in the order of the selector's; each call reads them anew. RuntimeException unless valid.
    std::vector<Out> GetAllValues() const
    {
        std::vector<Out> values;
        GetAllValues(values);
        return values;
    }
    void GetAllValues(std::vector<Out>& values) const
    {
        const std::vector<uint8_t> bytes = ReadBytes();
        values.clear();
        for (size_t i = 0; i < Count(); ++i)
            values.push_back(static_cast<Out>(At(bytes, i, static_cast<Node*>(nullptr))));
    }

    /// Whether the description says that this combination is suited, in its text node ValueArrayCandidates.
    static bool CheckAdvertisedCompatibility(Node* pNode, IInteger* pSelector)
    {
        return pNode != nullptr && IsAdvertised(pNode->GetNode(), pSelector);
    }

private:
    Effective At(const std::vector<uint8_t>& bytes, size_t index, IBoolean*) const
    {
        return static_cast<Effective>(IntegerAt(bytes, index) == OnValue());
    }
    Effective At(const std::vector<uint8_t>& bytes, size_t index, IValue*) const
    {
        return IsReal() ? static_cast<Effective>(RealAt(bytes, index))
                        : static_cast<Effective>(IntegerAt(bytes, index));
    }
};

typedef CValueArrayAdapter<IInteger, int64_t> CIntegerValueArray;
typedef CValueArrayAdapter<IFloat, double> CFloatValueArray;
typedef CValueArrayAdapter<IBoolean, uint8_t, bool> CBooleanValueArray;

} // namespace GenApi
