// SPDX-License-Identifier: Apache-2.0
// Going through all settings of the selectors of a feature.
#pragma once

#include <Base/GCString.h>
#include <GenApi/Container.h>
#include <GenApi/GenApiLinkage.h>
#include <GenApi/IBase.h>

#include <memory>
#include <vector>

namespace GenApi
{

/// One selector, or several taken together, as a digit of a counter.
class GENAPI_DECL ISelectorDigit
{
public:
    virtual ~ISelectorDigit() = default;

    /// Writes the first possible setting; false if there is none.
    virtual bool SetFirst() = 0;
    /// Writes the next possible setting; false, and nothing written, after the last one.
    /// @param Tick false writes the present setting once more.
    virtual bool SetNext(bool Tick = true) = 0;
    /// Writes the setting at the time of construction.
    virtual void Restore() = 0;
    /// The present setting as "Selector=Value"; a set puts them in braces, separated by commas.
    virtual GenICam::gcstring ToString() = 0;
    /// The selectors, outer ones first; replaces the list, or appends to it if Incremental.
    virtual void GetSelectorList(FeatureList_t& SelectorList, bool Incremental = false) = 0;
};

/// All selectors of a feature, direct and indirect ones. The last one counts fastest. Entries of an
/// enumeration that are not available are passed over, integers go from minimum to maximum in steps of their
/// increment, and a selector that can't be written stays as it is. All calls but IsEmpty and GetSelectorList
/// write to the device and raise what that raises. One thread at a time; hold the lock of the node map to
/// keep others from moving the selectors.
class GENAPI_DECL CSelectorSet : public ISelectorDigit
{
public:
    /// @param pBase a node of a node map that outlives the set; InvalidArgumentException if it is none,
    /// RuntimeException for a feature with more than 64 selectors.
    explicit CSelectorSet(IBase* pBase);
    CSelectorSet(const CSelectorSet&) = delete;
    CSelectorSet& operator=(const CSelectorSet&) = delete;
    ~CSelectorSet() override;

    /// Whether the feature has no selectors.
    bool IsEmpty() const;

    bool SetFirst() override;
    bool SetNext(bool Tick = true) override;
    void Restore() override;
    /// "{Outer=Value,Inner=Value}"; empty if there is no selector that can be set.
    GenICam::gcstring ToString() override;
    void GetSelectorList(FeatureList_t& SelectorList, bool Incremental = false) override;

private:
    bool SetFirstFrom(size_t digit);
    bool SetNextFrom(size_t digit);

    FeatureList_t m_selectors;
    std::vector<std::unique_ptr<ISelectorDigit>> m_digits; // of those selectors that can be set
};

} // namespace GenApi
