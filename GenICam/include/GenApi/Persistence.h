// SPDX-License-Identifier: Apache-2.0
// Saving the features of a device and bringing them back.
#pragma once

#include <Base/GCString.h>
#include <Base/GCStringVector.h>
#include <GenApi/GenApiLinkage.h>
#include <GenApi/GenApiNamespace.h>

#include <cstdint>
#include <cstring>
#include <istream>
#include <limits>
#include <locale>
#include <ostream>
#include <string>
#include <vector>

/// Marks in the first line of a file of features, and of a file of several bags.
#define GENAPI_PERSISTENCE_MAGIC "{05D8C294-F295-4dfb-9D01-096BD04049F4}"
#define GENAPI_PERSISTENCE_MAGIC_FEATUREBAGGER "{4709CB3C-7322-4460-84C3-DA11DDA09939}"

namespace GenApi
{

struct INodeMap;
struct IValue;
class CSelectorSet;

/// Takes features to be saved.
struct GENAPI_DECL_ABSTRACT IPersistScript
{
    /// A text that tells a reader where the features come from.
    virtual void SetInfo(const GenICam::gcstring& Info) = 0;
    /// Adds a feature with its present value, and with the present setting of its selectors where they are
    /// given.
    virtual void PersistFeature(IValue& item, CSelectorSet* selectorSet = nullptr) = 0;
    virtual ~IPersistScript() {}
};

/// The features of a node map with their values, as text. A bag is used by one thread at a time; StoreToBag
/// and LoadFromBag hold the lock of the node map.
class GENAPI_DECL CFeatureBag : public IPersistScript
{
public:
    /// A feature: its name, the selectors as "{Selector=Value TAB ...}" (empty if none), and its value.
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
    typedef std::vector<CEntry>::const_iterator const_iterator;

    void SetInfo(const GenICam::gcstring& Info) override;
    void PersistFeature(IValue& item, CSelectorSet* selectorSet = nullptr) override;

    /// Appends the streamable features below "Root" that can be read and written, in the order of the
    /// categories: a selected feature once for each setting of its selectors, then the selectors as they
    /// were. A selector has no other line. Sets the info to what the description says of the device. Runs
    /// the commands DeviceFeaturePersistenceStart and ...End of the Standard name space.
    /// @param MaxNumPersistScriptEntries stops after that many entries, 0 counting as 1; negative is no
    /// limit.
    /// @param pFeatureFilter names of the features to store; null stands for all.
    /// @param pErrorList gets a line for each feature that can't be read. If it is null, the first such
    /// exception leaves the call, with nothing added. RuntimeException for more than 1,000,000 settings of
    /// one feature's selectors, InvalidArgumentException for no map.
    /// @return number of entries added.
    int64_t StoreToBag(INodeMap* pNodeMap, const int MaxNumPersistScriptEntries = -1,
                       GenICam::gcstring_vector* pFeatureFilter = nullptr,
                       GenICam::gcstring_vector* pErrorList = nullptr);

    /// Writes all entries in their order, without checking limits, which may depend on features that come
    /// later. An entry whose selectors refuse their values is passed over. Runs the commands
    /// DeviceRegistersStreamingStart and ...End of the Standard name space.
    /// @param Verify then reads each one back and compares it with the bag.
    /// @param pErrorList is replaced by a line for each entry that is unknown, can't be written, or differs,
    /// and for each selector that refuses; may be null.
    /// @return false if there was any, selectors not counted.
    bool LoadFromBag(INodeMap* pNodeMap, bool Verify = true, GenICam::gcstring_vector* pErrorList = nullptr);

    /// The entries.
    const_iterator begin() const { return m_entries.begin(); }
    const_iterator end() const { return m_entries.end(); }
    size_t size() const { return m_entries.size(); }
    bool empty() const { return m_entries.empty(); }

    /// Whether the entries are the same; info and name don't count.
    virtual bool operator==(const CFeatureBag& FeatureBag) const;
    bool operator!=(const CFeatureBag& FeatureBag) const { return !(*this == FeatureBag); }

    /// The text that a file has.
    virtual GenICam::gcstring ToString() const;
    /// A copy, to be given back by its Destroy.
    virtual CFeatureBag* Clone() const;
    /// Deletes a bag that was made by new.
    virtual void Destroy();

    /// Name of the bag among several.
    virtual const GenICam::gcstring& GetBagName() const;
    virtual void SetBagName(const GenICam::gcstring& Name);

    /// Writes a line that marks the format, two comments if there is an info, and "Name TAB Value" or
    /// "Name TAB {Selectors} TAB Value" for each entry. RuntimeException for a value with a line break, which
    /// the format can't hold.
    void Write(std::ostream& os) const;
    /// Replaces the content by what such a text says, line ends of either kind; further comments are passed
    /// over. RuntimeException if the mark or a value is missing; the entries before that stay.
    void Read(std::istream& is);

private:
    friend class CFeatureBagger;

    void WriteEntries(std::ostream& os) const;

    GenICam::gcstring m_info;
    GenICam::gcstring m_name;
    std::vector<CEntry> m_entries;
};

/// Several bags: the features as they are ("All"), those of each user set ("UserSet.Default", ...) and of
/// each sequencer set ("SequencerSet.0", ...). One thread at a time; the calls hold the map's lock.
class GENAPI_DECL CFeatureBagger
{
public:
    typedef std::vector<CFeatureBag>::const_iterator const_iterator;

    explicit CFeatureBagger();
    CFeatureBagger(const CFeatureBagger&) = delete;
    CFeatureBagger& operator=(const CFeatureBagger&) = delete;
    virtual ~CFeatureBagger();

    /// Replaces the bags. For each set it is loaded in the device and the features that belong to it are
    /// stored; afterwards the features are as before. Sets of which a map lacks the features of the Standard
    /// name space give no bags.
    /// @param MaxNumPersistScriptEntries for each bag, as for CFeatureBag::StoreToBag.
    /// @return number of bags. InvalidArgumentException for no map.
    size_t Bag(INodeMap* pNodeMap, bool handleDefaultNodeMap = true, bool handleUserSets = false,
               bool handleSequencerSets = false, const int MaxNumPersistScriptEntries = -1);

    /// Loads the bags of the user sets and saves each set but "Default" in the device, then loads those of
    /// the sequencer sets, at last "All". Arguments and result as for CFeatureBag::LoadFromBag.
    bool UnBag(INodeMap* pNodeMap, bool Verify = true, GenICam::gcstring_vector* pErrorList = nullptr);

    /// A text that tells a reader where the features come from.
    virtual void SetInfo(const GenICam::gcstring& Info);

    /// The bags; `at` raises std::out_of_range.
    const_iterator begin() const { return m_bags.begin(); }
    const_iterator end() const { return m_bags.end(); }
    const CFeatureBag& at(size_t index) const { return m_bags.at(index); }
    size_t size() const { return m_bags.size(); }

    /// As CFeatureBag, with a line "[Name]" ahead of each bag. A file of one bag is read as "All".
    void Write(std::ostream& os) const;
    void Read(std::istream& is);

private:
    GenICam::gcstring m_info;
    std::vector<CFeatureBag> m_bags;
};

/// Skips lines that begin with '#'.
inline std::istream& EatComments(std::istream& is)
{
    while (is.good() && is.peek() == '#')
        is.ignore((std::numeric_limits<std::streamsize>::max)(), '\n');
    return is;
}

#ifndef GENAPI_DONT_USE_DEFAULT_PERSISTENCE_FILE_FORMAT

/// Cuts white space off both ends, as the stream's locale knows it.
inline GenICam::gcstring& TrimSpace(GenICam::gcstring& text, std::istream& is)
{
    const std::locale locale = is.getloc();
    const std::string whole(text.c_str(), text.size());
    size_t first = 0, end = whole.size();
    while (first < end && std::isspace(whole[first], locale))
        ++first;
    while (end > first && std::isspace(whole[end - 1], locale))
        --end;
    text = GenICam::gcstring(whole.data() + first, end - first);
    return text;
}
inline char* TrimSpace(char* text, std::istream& is)
{
    GenICam::gcstring trimmed(text);
    TrimSpace(trimmed, is);
    std::memcpy(text, trimmed.c_str(), trimmed.size() + 1);
    return text;
}

inline std::ostream& operator<<(std::ostream& os, const CFeatureBag& FeatureBag)
{
    FeatureBag.Write(os);
    return os;
}
inline std::istream& operator>>(std::istream& is, CFeatureBag& FeatureBag)
{
    FeatureBag.Read(is);
    return is;
}
inline std::ostream& operator<<(std::ostream& os, const CFeatureBagger& FeatureBagger)
{
    FeatureBagger.Write(os);
    return os;
}
inline std::istream& operator>>(std::istream& is, CFeatureBagger& FeatureBagger)
{
    FeatureBagger.Read(is);
    return is;
}

#endif

} // namespace GenApi
