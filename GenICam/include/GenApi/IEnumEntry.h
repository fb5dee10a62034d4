// SPDX-License-Identifier: Apache-2.0
// One choice of an enumeration.
#pragma once

#include <GenApi/IValue.h>

namespace GenApi
{

/// An entry. Any thread; calls take the lock of the node map.
struct GENAPI_DECL_ABSTRACT IEnumEntry : virtual public IValue
{
    /// The integer that stands for the entry in the device.
    virtual int64_t GetValue() = 0;

    /// The name under which the entry is chosen.
    virtual GenICam::gcstring GetSymbolic() const = 0;

    /// The number that the entry means, such as 2.5 for "Factor2_5"; the integer if the file gives none.
    virtual double GetNumericValue() = 0;

    /// Whether the device leaves this entry by itself.
    virtual bool IsSelfClearing() = 0;
};

/// Reference to an entry.
template <class T>
class CEnumEntryRefT : public CValueRefT<T>
{
public:
    int64_t GetValue() override { return this->Target().GetValue(); }
    GenICam::gcstring GetSymbolic() const override { return this->Target().GetSymbolic(); }
    double GetNumericValue() override { return this->Target().GetNumericValue(); }
    bool IsSelfClearing() override { return this->Target().IsSelfClearing(); }
};
typedef CEnumEntryRefT<IEnumEntry> CEnumEntryRef;

} // namespace GenApi
