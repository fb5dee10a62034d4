// SPDX-License-Identifier: Apache-2.0
// Owner of a node map, with the map's calls at hand.
#pragma once

#include <Base/GCException.h>
#include <Base/GCString.h>
#include <Base/GCStringVector.h>
#include <GenApi/GenApiLinkage.h>
#include <GenApi/IDeviceInfo.h>
#include <GenApi/INodeMap.h>
#include <GenApi/Synch.h>

#include <memory>

namespace GenApi
{

struct INode;
struct IPort;

/// Loads a description and owns the node map made from it. All calls but the loading ones raise
/// AccessException "Feature not present (reference not valid)" while it holds no map; loading while it holds
/// one raises RuntimeException "Node map already created". Loading raises RuntimeException for a missing,
/// malformed or inconsistent description (with line, column and node), InvalidArgumentException for an empty
/// one. Loading and destroying: one thread. All else: any thread.
class GENAPI_DECL CNodeMapRef
{
public:
    /// An empty reference; the map that is loaded will have that device name.
    explicit CNodeMapRef(const GenICam::gcstring& DeviceName = "Device");

    /// Takes over an existing map.
    explicit CNodeMapRef(INodeMap* pNodeMap, const GenICam::gcstring& DeviceName = "Device");

    /// Copies share the map; the last one destroys it.
    CNodeMapRef(const CNodeMapRef&) = default;
    CNodeMapRef& operator=(const CNodeMapRef&) = default;

    /// Gives up the own map and takes over another; null empties the reference.
    CNodeMapRef& operator=(INodeMap* pNodeMap);

    virtual ~CNodeMapRef();

    /// The map; null while there is none.
    INodeMap* _Ptr() const;

    /// Takes over a map and the name of its device.
    void _Attach(INodeMap* pNodeMap, const GenICam::gcstring& DeviceName);

    /// Loads an XML file; environment variables as $(NAME) in the name are replaced.
    void _LoadXMLFromFile(const GenICam::gcstring& FileName);
    /// Loads a zipped file.
    void _LoadXMLFromZIPFile(const GenICam::gcstring& ZipFileName);
    /// Loads an XML text.
    void _LoadXMLFromString(const GenICam::gcstring& XMLData);
    /// Loads a zipped file that is in memory.
    void _LoadXMLFromZIPData(const void* zipData, size_t zipSize);
    /// Loads a file and injects the nodes of a second one.
    void _LoadXMLFromFileInject(const GenICam::gcstring& TargetFileName,
                                const GenICam::gcstring& InjectFileName);
    /// Loads a text and injects the nodes of a second one.
    void _LoadXMLFromStringInject(const GenICam::gcstring& TargetXMLData,
                                  const GenICam::gcstring& InjectXMLData);

    /// Appends the schema versions that can be read, such as "1.1".
    void _GetSupportedSchemaVersions(GenICam::gcstring_vector& SchemaVersions) const;

    /// Name of the device.
    GenICam::gcstring _GetDeviceName() const;
    /// See INodeMap::Poll.
    void _Poll(int64_t ElapsedTime);
    /// Destroys the map; the reference is empty afterwards. Harmless while it is empty.
    void _Destroy();
    /// Forgets all shared descriptions that nobody uses.
    static bool _ClearXMLCache();

    /// See INodeMap.
    void _GetNodes(NodeList_t& Nodes) const;
    INode* _GetNode(const GenICam::gcstring& Name) const;
    void _InvalidateNodes() const;
    bool _Connect(IPort* pPort, const GenICam::gcstring& PortName) const;
    bool _Connect(IPort* pPort) const;
    CLock& _GetLock() const;
    uint64_t _GetNumNodes() const;
    bool _ParseSwissKnifes(GenICam::gcstring_vector* pErrors = nullptr) const;
    CNodeWriteConcatenator* _NewNodeWriteConcatenator() const;
    bool _ConcatenatedWrite(CNodeWriteConcatenator& List, bool featureStreaming = true,
                            GenICam::gcstring_vector* pErrorList = nullptr);

    /// See IDeviceInfo.
    GenICam::gcstring _GetModelName() const;
    GenICam::gcstring _GetVendorName() const;
    GenICam::gcstring _GetToolTip() const;
    GenICam::gcstring _GetStandardNameSpace() const;
    void _GetGenApiVersion(Version_t& Version, uint16_t& Build) const;
    void _GetSchemaVersion(Version_t& Version) const;
    void _GetDeviceVersion(Version_t& Version) const;
    GenICam::gcstring _GetProductGuid() const;
    GenICam::gcstring _GetVersionGuid() const;

private:
    INodeMap& Map() const;
    IDeviceInfo& Info() const;
    void Take(INodeMap* pNodeMap);
    void RequireEmpty() const;

    GenICam::gcstring m_deviceName;
    std::shared_ptr<INodeMap> m_map;
};

} // namespace GenApi
