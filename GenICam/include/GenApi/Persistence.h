// SPDX-License-Identifier: Apache-2.0
// Saving the features of a device and bringing them back.
#pragma once

#include <Base/GCString.h>
#include <Base/GCStringVector.h>
#include <GenApi/GenApiLinkage.h>
#include <GenApi/GenApiNamespace.h>

#include <cstdint>
#include <iosfwd>
#include <vector>

namespace GenApi
{

struct INodeMap;
struct IValue;

/// Takes features to be saved.
struct GENAPI_DECL_ABSTRACT IPersistScript
{
    /// A text that tells a reader where the features come from.
    virtual void SetInfo(GenICam::gcstring& Info) = 0;
    /// Adds a feature with its present value.
    virtual void PersistFeature(IValue& item) = 0;
    virtual ~IPersistScript() = default;
};

/// The features of a node map with their values, as text. A bag is used by one thread at a time; StoreToBag
/// and LoadFromBag hold the lock of the node map.
class GENAPI_DECL CFeatureBag : public IPersistScript
{
public:
    /// A feature: its name, the selectors as "{Selector=Value,...}" (empty if none), and its value.
    struct CEntry
    {
        GenICam::gcstring Name;
        GenICam::gcstring Selectors;
        GenICam::gcstring Value;

        bool operator==(const CEntry& other) const
        {
            return Name == other.Name && Selectors == other.Selectors && Value == other.Value;
        }
    };
    using const_iterator = std::vector<CEntry>::const_iterator;

    void SetInfo(GenICam::gcstring& Info) override;
    void PersistFeature(IValue& item) override;

    /// Replaces the content by the streamable features below "Root" that can be read and written: in the
    /// order of the categories, a selected feature once for each setting of its selectors and before these.
    /// The selectors are as before in the end.
    /// @param MaxNumPersistScriptEntries stops after that many entries; negative is no limit.
    /// @param pErrorList gets a line for each feature that can't be read. If it is null, the first such
    /// exception leaves the call. RuntimeException for more than 1,000,000 settings of one feature's
    /// selectors.
    /// @return number of entries.
    int64_t StoreToBag(INodeMap* pNodeMap, int MaxNumPersistScriptEntries = -1,
                       GenICam::gcstring_vector* pErrorList = nullptr);

    /// Writes all entries in their order, without checking limits, which may depend on features that come
    /// later.
    /// @param Verify then reads each one back and compares it with the bag.
    /// @param pErrorList gets a line for each entry that is unknown, can't be written, or differs; may be
    /// null.
    /// @return false if there was any.
    bool LoadFromBag(INodeMap* pNodeMap, bool Verify = true, GenICam::gcstring_vector* pErrorList = nullptr);

    /// The entries.
    const_iterator begin() const { return m_entries.begin(); }
    const_iterator end() const { return m_entries.end(); }
    size_t size() const { return m_entries.size(); }
    bool empty() const { return m_entries.empty(); }

    /// Whether the entries are the same; the info doesn't count.
    virtual bool operator==(const CFeatureBag& FeatureBag) const;
    bool operator!=(const CFeatureBag& FeatureBag) const { return !(*this == FeatureBag); }

    /// What operator<< writes.
    virtual GenICam::gcstring ToString() const;
    /// A copy, to be given back by its Destroy.
    virtual CFeatureBag* Clone() const;
    /// Deletes a bag that Clone made.
    virtual void Destroy();

    /// Writes a line that marks the format, two comments if there is an info, and "Name TAB Value" or
    /// "Name TAB {Selectors} TAB Value" for each entry. Raises RuntimeException for a value with a line
    /// break, which the format can't hold.
    friend GENAPI_DECL std::ostream& operator<<(std::ostream& os, const CFeatureBag& FeatureBag);
    /// Replaces the content by what such a text says, line ends of either kind; further comments are passed
    /// over. Raises RuntimeException, and leaves the bag alone, if the mark or a value is missing.
    friend GENAPI_DECL std::istream& operator>>(std::istream& is, CFeatureBag& FeatureBag);

private:
    GenICam::gcstring m_info;
    std::vector<CEntry> m_entries;
};

GENAPI_DECL std::ostream& operator<<(std::ostream& os, const CFeatureBag& FeatureBag);
GENAPI_DECL std::istream& operator>>(std::istream& is, CFeatureBag& FeatureBag);

} // namespace GenApi
