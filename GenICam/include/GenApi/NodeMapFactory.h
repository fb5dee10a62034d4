// SPDX-License-Identifier: Apache-2.0
// Making node maps from descriptions.
#pragma once

#include <Base/GCString.h>
#include <Base/GCStringVector.h>
#include <GenApi/GenApiLinkage.h>
#include <GenApi/INodeMap.h>
#include <GenApi/Synch.h>

#include <cstddef>
#include <cstdint>
#include <memory>

namespace GenApi
{

/// Form of a description.
typedef enum _EContentType_t
{
    ContentType_Xml = 0,      ///< XML text
    ContentType_ZippedXml = 1 ///< a zip archive that holds the XML text
} EContentType_t;

/// Whether a parsed description may be shared with others who use the same file. Sharing happens within the
/// process and lasts as long as somebody uses the description; nothing is written to a disk.
typedef enum _ECacheUsage_t
{
    CacheUsage_Automatic =
        0, ///< shared if the same content is in use already, else parsed and offered for sharing
    CacheUsage_ForceWrite = 1, ///< parsed in any case, and offered for sharing
    CacheUsage_ForceRead = 2,  ///< only what is in use already: RuntimeException otherwise
    CacheUsage_Ignore = 3      ///< parsed in any case, and not shared
} ECacheUsage_t;

/// Reads a description once, when it is first needed, and makes any number of node maps from it. Copies share
/// the description. Any thread, one call at a time for one object and its copies. All calls that need a
/// description raise LogicalErrorException on an empty factory, and RuntimeException (with line, column and
/// node) for a missing or broken one.
class GENAPI_DECL CNodeMapFactory
{
public:
    /// Sizes of a description.
    struct NodeStatistics_t
    {
        uint32_t NumNodes; ///< the description itself counts as one
        uint32_t NumProperties;
        uint32_t NumLinks;
        uint32_t NumStrings;
    };

    /// An empty factory.
    CNodeMapFactory();

    /// From a file; InvalidArgumentException for an empty name.
    CNodeMapFactory(EContentType_t ContentType, const GenICam::gcstring& FileName,
                    ECacheUsage_t CacheUsage = CacheUsage_Automatic, bool SuppressStringsOnLoad = false);

    /// From bytes in memory, of which a copy is kept; InvalidArgumentException if there are none.
    CNodeMapFactory(EContentType_t ContentType, const void* pData, size_t DataSize,
                    ECacheUsage_t CacheUsage = CacheUsage_Automatic, bool SuppressStringsOnLoad = false);

    /// From XML text; InvalidArgumentException for none.
    CNodeMapFactory(const GenICam::gcstring& XmlData, ECacheUsage_t CacheUsage = CacheUsage_Automatic,
                    bool SuppressStringsOnLoad = false);

    CNodeMapFactory(const CNodeMapFactory&);
    CNodeMapFactory& operator=(const CNodeMapFactory&);
    virtual ~CNodeMapFactory();

    /// Whether it holds no description.
    bool IsEmpty() const;

    /// Adds the nodes of a second description; where both define a node, MergePriority decides. An empty
    /// factory is ignored, one that is preprocessed is refused with RuntimeException. Maps made before do not
    /// change.
    void AddInjectionData(CNodeMapFactory& InjectionData);
    /// The same from XML text.
    void AddInjectionData(const GenICam::gcstring& XmlText);

    /// Reads the description and what is to be injected; whether that was done.
    void LoadAndInject();
    bool IsLoaded() const;

    /// Reads and checks the description; whether that was done.
    void Preprocess();
    bool IsPreprocessed() const;

    /// A factory for the part of the description that a node needs: the node and all that it refers to.
    /// @param doRenameToRoot calls the node "Root", which must be a category.
    /// Raises InvalidArgumentException for an unknown node.
    CNodeMapFactory ExtractSubtree(const GenICam::gcstring& SubTreeRootNodeName, bool doRenameToRoot = false);

    /// Makes a node map; the caller gives it back by its IDestroy, or to a CNodeMapRef.
    /// @param DeviceName name that INodeMap::GetDeviceName will give.
    /// @param ReleaseCameraDescriptionFileData lets the original text go, after which AddInjectionData is
    /// refused; node maps can still be made.
    INodeMap* CreateNodeMap(const GenICam::gcstring& DeviceName = "Device",
                            bool ReleaseCameraDescriptionFileData = true);
    /// The same with the program's own lock, which must outlive the map.
    INodeMap* CreateNodeMap(CLock& UserProvidedLock, const GenICam::gcstring& DeviceName = "Device",
                            bool ReleaseCameraDescriptionFileData = true);

    /// A node map without nodes, to be given back as any other.
    static INodeMap* CreateEmptyNodeMap();

    /// Lets the original text go; node maps can still be made.
    void ReleaseCameraDescriptionFileData();
    /// Whether the original text has been let go, or never was.
    bool IsCameraDescriptionFileDataReleased() const;

    /// Replaces the list by the schema versions that can be read, such as "1.1".
    void GetSupportedSchemaVersions(GenICam::gcstring_vector& SchemaVersions) const;

    /// Forgets all descriptions that are offered for sharing; those in use live on. False if there were none.
    static bool ClearCache();

    /// The description as XML text, and as a list of nodes with their elements; LogicalErrorException unless
    /// it is preprocessed.
    GenICam::gcstring ToXml() const;
    GenICam::gcstring ToString() const;

    /// Sizes of the description.
    void GetNodeStatistics(NodeStatistics_t& Statistics);

    /// Raises RuntimeException: style sheets are not supported.
    const GenICam::gcstring ApplyStyleSheet(const GenICam::gcstring& StyleSheetFileName);

private:
    struct State;
    State& Loaded();
    const State& Preprocessed() const;
    INodeMap* Create(CLock* pLock, const GenICam::gcstring& DeviceName, bool release);

    std::shared_ptr<State> m_state;
};

} // namespace GenApi
