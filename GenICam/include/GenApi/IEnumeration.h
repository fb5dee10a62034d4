// SPDX-License-Identifier: Apache-2.0
// A choice among named entries.
#pragma once

#include <GenApi/Container.h>
#include <GenApi/IEnumEntry.h>
#include <GenApi/IValue.h>

namespace GenApi
{

/// An enumeration. Any thread; calls take the lock of the node map.
struct GENAPI_DECL_ABSTRACT IEnumeration : virtual public IValue
{
    /// Replaces the list by the symbols of the available entries.
    virtual void GetSymbolics(StringList_t& Symbolics) = 0;

    /// Replaces the list by the nodes of all entries, in the order of the description.
    virtual void GetEntries(NodeList_t& Entries) = 0;

    /// Chooses the entry of that symbol.
    virtual IEnumeration& operator=(const GenICam::gcstring& ValueStr) = 0;

    /// Chooses the entry of that integer; InvalidArgumentException if there is none.
    /// @param Verify checks access mode and availability of the entry: AccessException.
    virtual void SetIntValue(int64_t Value, bool Verify = true) = 0;

    /// Symbol of the present entry; InvalidArgumentException if the device holds no known value.
    virtual GenICam::gcstring operator*() = 0;

    /// The integer that the device holds, be it known or not; AccessException if it can't be read.
    /// @param Verify raises OutOfRangeException for an unknown one.
    virtual int64_t GetIntValue(bool Verify = false, bool IgnoreCache = false) = 0;

    /// The entry of that symbol, null if there is none.
    virtual IEnumEntry* GetEntryByName(const GenICam::gcstring& Symbolic) = 0;

    /// The entry of that integer, null if there is none.
    virtual IEnumEntry* GetEntry(const int64_t IntValue) = 0;

    /// The present entry, null if the device holds no known value.
    virtual IEnumEntry* GetCurrentEntry(bool Verify = false, bool IgnoreCache = false) = 0;
};

} // namespace GenApi
