// SPDX-License-Identifier: Apache-2.0
// An enumeration whose entries are known at compile time.
#pragma once

#include <GenApi/IEnumeration.h>

namespace GenApi
{

/// An enumeration with values of an enumeration type. Any thread.
template <typename EnumT>
struct IEnumerationT : virtual public IEnumeration
{
    /// Chooses an entry.
    virtual void SetValue(EnumT Value, bool Verify = true) = 0;
    virtual IEnumeration& operator=(EnumT Value) = 0;
    using IEnumeration::operator=;

    /// The present entry.
    virtual EnumT GetValue(bool Verify = false, bool IgnoreCache = false) = 0;
    virtual EnumT operator()() = 0;

    /// The node of an entry.
    virtual IEnumEntry* GetEntry(const EnumT Value) = 0;
    using IEnumeration::GetEntry;
};

} // namespace GenApi
