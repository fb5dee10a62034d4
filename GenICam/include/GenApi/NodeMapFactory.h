// SPDX-License-Identifier: Apache-2.0
// Making node maps from descriptions.
#pragma once

#include <Base/GCString.h>
#include <Base/GCStringVector.h>
#include <GenApi/GenApiLinkage.h>
#include <GenApi/INodeMap.h>

#include <memory>

namespace KxGenApi
{
class Description;
}

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

/// Reads a description once and makes any number of node maps from it. Copies share the description.
/// Any thread, one call at a time for one object.
class GENAPI_DECL CNodeMapFactory
{
public:
    /// An empty factory.
    CNodeMapFactory();

    /// From a file. Raises RuntimeException for a missing or broken file, InvalidArgumentException for an
    /// empty name.
    CNodeMapFactory(EContentType_t ContentType, const GenICam::gcstring& FileName,
                    ECacheUsage_t CacheUsage = CacheUsage_Automatic,
                    bool SuppressStringsForRegularNodes = false);

    /// From bytes in memory, which need not outlive the call. Raises as above.
    CNodeMapFactory(EContentType_t ContentType, const void* pData, size_t DataSize,
                    ECacheUsage_t CacheUsage = CacheUsage_Automatic,
                    bool SuppressStringsForRegularNodes = false);

    CNodeMapFactory(const CNodeMapFactory&);
    CNodeMapFactory& operator=(const CNodeMapFactory&);
    ~CNodeMapFactory();

    /// Whether it holds no description.
    bool IsEmpty() const;

    /// Whether the description has been parsed and checked; always true unless it is empty.
    bool IsPreprocessed() const { return !IsEmpty(); }

    /// Adds the nodes of a second description, given as XML text; where both define a node, MergePriority
    /// decides. Maps made before do not change.
    void AddInjectionData(const GenICam::gcstring& XmlText);

    /// Makes a node map; the caller gives it back by INodeMap::Destroy.
    /// @param DeviceName name that INodeMap::GetDeviceName will give.
    /// @param ReleaseCameraDescriptionFileData lets the original text go, after which AddInjectionData is
    /// refused. Raises RuntimeException for an empty factory.
    INodeMap* CreateNodeMap(const GenICam::gcstring& DeviceName = "Device",
                            bool ReleaseCameraDescriptionFileData = true) const;

    /// A factory for the part of the description that a node needs: the node and all that it refers to. A
    /// category "Root" that lists the node is added unless it is part of it.
    /// @param ReleaseCameraDescriptionFileData as for CreateNodeMap.
    /// Raises InvalidArgumentException for an unknown node, RuntimeException for an empty factory.
    CNodeMapFactory ExtractSubtree(const GenICam::gcstring& SubTreeRootNodeName,
                                   bool ReleaseCameraDescriptionFileData = false) const;

    /// The description as XML text; RuntimeException for an empty factory.
    GenICam::gcstring ToXml() const;

    /// Lets the original text go; node maps can still be made.
    void ReleaseCameraDescriptionFileData();

    /// Whether the original text has been let go.
    bool IsCameraDescriptionFileDataReleased() const;

    /// Appends the schema versions that can be read, such as "1.1".
    static void GetSupportedSchemaVersions(GenICam::gcstring_vector& SchemaVersions);

    /// Forgets all descriptions that are offered for sharing; those in use live on.
    static void ClearCache();

private:
    struct State;
    std::shared_ptr<State> m_state;
};

} // namespace GenApi
