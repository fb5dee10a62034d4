// SPDX-License-Identifier: Apache-2.0
// A setting of selectors, remembered by name.
#pragma once

#include <Base/GCString.h>
#include <Base/GCStringVector.h>
#include <GenApi/GenApiLinkage.h>
#include <GenApi/GenApiNamespace.h>

#include <cstddef>
#include <utility>
#include <vector>

namespace GenApi
{

struct INodeMap;
struct IValue;

/// Names of selectors with their values, and a position in this list. One thread at a time.
class GENAPI_DECL CSelectorState
{
public:
    CSelectorState();

    /// Goes to the first selector, or on to the next; false if there is none.
    bool SetFirst();
    bool SetNext();

    /// Adds a selector with its present value, or with the one given.
    void AddSelector(IValue& Selector);
    void AddSelector(GenICam::gcstring Name, GenICam::gcstring Value);

    /// Name and value of the selector at the position; OutOfRangeException if there is none.
    GenICam::gcstring GetNodeName() const;
    GenICam::gcstring GetNodeValue() const;

    /// Whether there are no selectors.
    bool IsEmpty() const;

    /// Writes all values; names that the map doesn't know are passed over.
    /// @param pErrorList gets a line for each value that is refused; may be null.
    /// @return false if there was any. InvalidArgumentException for no map.
    bool RestoreState(INodeMap* pNodeMap, GenICam::gcstring_vector* pErrorList = nullptr) const;

    /// "{Selector=Value TAB Selector=Value}", as saved features have it; empty without selectors.
    GenICam::gcstring ToBraces() const;

private:
    typedef std::pair<GenICam::gcstring, GenICam::gcstring> Setting;

    const Setting& Current() const;

    std::vector<Setting> m_selectors;
    size_t m_position;
};

} // namespace GenApi
