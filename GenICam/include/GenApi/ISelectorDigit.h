// SPDX-License-Identifier: Apache-2.0
// One selector, or several taken together, as a digit of a counter.
#pragma once

#include <Base/GCString.h>
#include <GenApi/Container.h>
#include <GenApi/GenApiLinkage.h>

namespace GenApi
{

class CSelectorState;

/// A digit. The writing calls write to the device and raise what that raises. One thread at a time; hold the
/// lock of the node map to keep others from moving the selectors.
class GENAPI_DECL ISelectorDigit
{
public:
    /// Writes the first possible setting; false if there is none.
    virtual bool SetFirst() = 0;
    /// Writes the next possible setting; false, and nothing written, after the last one.
    /// @param Tick false writes the present setting once more.
    virtual bool SetNext(bool Tick = true) = 0;
    /// Writes the setting at the time of construction.
    virtual void Restore() = 0;
    /// The present setting as "Selector=Value".
    virtual GenICam::gcstring ToString() = 0;
    /// Adds the present setting to a state.
    virtual void GetState(CSelectorState& state) = 0;
    /// The selectors, outer ones first; replaces the list, or appends to it if Incremental.
    virtual void GetSelectorList(FeatureList_t& SelectorList, bool Incremental = false) = 0;

    virtual ~ISelectorDigit() = 0;
};

inline ISelectorDigit::~ISelectorDigit() {}

} // namespace GenApi
