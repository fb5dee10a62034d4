// SPDX-License-Identifier: Apache-2.0
// Going through all settings of the selectors of a feature.
#pragma once

#include <GenApi/IBase.h>
#include <GenApi/ISelectorDigit.h>
#include <GenApi/SelectorState.h>

#include <memory>
#include <vector>

namespace GenApi
{

/// All selectors of a feature, direct and indirect ones. The last one counts fastest. Entries of an
/// enumeration that are not available are passed over, integers go from minimum to maximum in steps of their
/// increment, and a selector that can't be written stays as it is. One thread at a time; hold the lock of the
/// node map to keep others from moving the selectors.
class GENAPI_DECL CSelectorSet : public ISelectorDigit
{
public:
    /// @param pBase a node of a node map that outlives the set; InvalidArgumentException if it is none,
    /// RuntimeException for a feature with more than 64 selectors.
    CSelectorSet(IBase* pBase);
    CSelectorSet(const CSelectorSet&) = delete;
    CSelectorSet& operator=(const CSelectorSet&) = delete;
    ~CSelectorSet() override;

    /// Whether the feature has no selectors.
    bool IsEmpty() const;

    bool SetFirst() override;
    bool SetNext(bool Tick = true) override;
    void Restore() override;
    /// "[Outer=Value, Inner=Value]"; "[]" if there is no selector that can be set.
    GenICam::gcstring ToString() override;
    void GetState(CSelectorState& state) override;
    void GetSelectorList(FeatureList_t& SelectorList, bool Incremental = false) override;

private:
    bool SetFirstFrom(size_t digit);
    bool SetNextFrom(size_t digit);

    FeatureList_t m_selectors;
    std::vector<std::unique_ptr<ISelectorDigit>> m_digits; // of those selectors that can be set
};

} // namespace GenApi
