// SPDX-License-Identifier: Apache-2.0
// Owner of a node map, with the map's calls at hand.
#pragma once

#include <Base/GCException.h>
#include <Base/GCString.h>
#include <Base/GCStringVector.h>
#include <GenApi/GenApiLinkage.h>
#include <GenApi/IDestroy.h>
#include <GenApi/IDeviceInfo.h>
#include <GenApi/INodeMap.h>
#include <GenApi/NodeMapFactory.h>
#include <GenApi/Synch.h>

#include <memory>

namespace GenApi
{

/// The face by which a map is deleted; null for null.
inline IDestroy* CastToIDestroy(INodeMap* pNodeMap) { return dynamic_cast<IDestroy*>(pNodeMap); }

/// Making the maps that references own; see CNodeMapRefT.
struct GENAPI_DECL CNodeMapLoader
{
    static INodeMap* FromFile(const GenICam::gcstring& FileName, EContentType_t Type,
                              const GenICam::gcstring& DeviceName);
    static INodeMap* FromFileInject(const GenICam::gcstring& TargetFileName,
                                    const GenICam::gcstring& InjectFileName,
                                    const GenICam::gcstring& DeviceName);
    static INodeMap* FromString(const GenICam::gcstring& XMLData, const GenICam::gcstring& DeviceName);
    static INodeMap* FromStringInject(const GenICam::gcstring& TargetXMLData,
                                      const GenICam::gcstring& InjectXMLData,
                                      const GenICam::gcstring& DeviceName);
    static INodeMap* FromZIPData(const void* zipData, size_t zipSize, const GenICam::gcstring& DeviceName);
};

/// Loads a description and owns the node map made from it. All calls but the loading ones raise
/// AccessException "Feature not present (reference not valid)" while it holds no map; loading while it holds
/// one raises RuntimeException "Node map already created". Loading raises RuntimeException for a missing,
/// malformed or inconsistent description (with line, column and node), InvalidArgumentException for an empty
/// one. Loading and destroying: one thread. All else: any thread.
///
/// TCameraParams holds the references of generated code; its _Initialize is called for each map that the
/// object gets. CNodeMapRef has none.
template <class TCameraParams>
class CNodeMapRefT : public TCameraParams
{
public:
    /// An empty reference; the map that is loaded will have that device name.
    CNodeMapRefT(const GenICam::gcstring& DeviceName = "Device")
        : _Ptr(nullptr)
        , m_deviceName(DeviceName)
    {}
    /// Takes over an existing map.
    CNodeMapRefT(INodeMap* pNodeMap, const GenICam::gcstring& DeviceName = "Device")
        : _Ptr(nullptr)
        , m_deviceName(DeviceName)
    {
        Take(pNodeMap);
    }
    /// Copies share the map; the last one destroys it.
    CNodeMapRefT(const CNodeMapRefT& other)
        : TCameraParams()
        , _Ptr(nullptr)
        , m_deviceName(other.m_deviceName)
    {
        Share(other);
    }
    CNodeMapRefT& operator=(const CNodeMapRefT& other)
    {
        if (this != &other) {
            m_deviceName = other.m_deviceName;
            Share(other);
        }
        return *this;
    }
    /// Gives up the own map and takes over another; null empties the reference.
    CNodeMapRefT& operator=(INodeMap* pNodeMap)
    {
        Take(pNodeMap);
        return *this;
    }
    ~CNodeMapRefT() override {}

    /// The map; null while there is none. Not to be changed by programs.
    INodeMap* _Ptr;

    /// Takes over a map and the name of its device.
    void _Attach(INodeMap* pNodeMap, const GenICam::gcstring& DeviceName)
    {
        Take(pNodeMap);
        m_deviceName = DeviceName;
    }

    /// Loads an XML file; environment variables as $(NAME) in the name are replaced.
    void _LoadXMLFromFile(const GenICam::gcstring& FileName)
    {
        RequireEmpty();
        Take(CNodeMapLoader::FromFile(FileName, ContentType_Xml, m_deviceName));
    }
    /// Loads a zipped file.
    void _LoadXMLFromZIPFile(const GenICam::gcstring& ZipFileName)
    {
        RequireEmpty();
        Take(CNodeMapLoader::FromFile(ZipFileName, ContentType_ZippedXml, m_deviceName));
    }
    /// Loads an XML text.
    void _LoadXMLFromString(const GenICam::gcstring& XMLData)
    {
        RequireEmpty();
        Take(CNodeMapLoader::FromString(XMLData, m_deviceName));
    }
    /// Loads a zipped file that is in memory.
    void _LoadXMLFromZIPData(const void* zipData, size_t zipSize)
    {
        RequireEmpty();
        Take(CNodeMapLoader::FromZIPData(zipData, zipSize, m_deviceName));
    }
    /// Loads a file and injects the nodes of a second one.
    void _LoadXMLFromFileInject(const GenICam::gcstring& TargetFileName,
                                const GenICam::gcstring& InjectFileName)
    {
        RequireEmpty();
        Take(CNodeMapLoader::FromFileInject(TargetFileName, InjectFileName, m_deviceName));
    }
    /// Loads a text and injects the nodes of a second one.
    void _LoadXMLFromStringInject(const GenICam::gcstring& TargetXMLData,
                                  const GenICam::gcstring& InjectXMLData)
    {
        RequireEmpty();
        Take(CNodeMapLoader::FromStringInject(TargetXMLData, InjectXMLData, m_deviceName));
    }

    /// Destroys the map unless a copy shares it; the reference is empty afterwards. Harmless while it is.
    void _Destroy() { Take(nullptr); }
    /// Forgets all shared descriptions that nobody uses; false if there were none.
    static bool _ClearXMLCache() { return CNodeMapFactory::ClearCache(); }

    /// Replaces the list by the schema versions that can be read, such as "1.1".
    virtual void _GetSupportedSchemaVersions(GenICam::gcstring_vector& SchemaVersions) const
    {
        CNodeMapFactory().GetSupportedSchemaVersions(SchemaVersions);
    }
    /// See INodeMap.
    virtual GenICam::gcstring _GetDeviceName() const { return Map().GetDeviceName(); }
    virtual void _Poll(int64_t ElapsedTime) { Map().Poll(ElapsedTime); }
    virtual void _GetNodes(NodeList_t& Nodes) const { Map().GetNodes(Nodes); }
    virtual INode* _GetNode(const GenICam::gcstring& Name) const { return Map().GetNode(Name); }
    virtual void _SetSuppressCallbackMode(ECallbackSuppressMode mode) const
    {
        Map().SetSuppressCallbackMode(mode);
    }
    virtual CNodeWriteConcatenator* _NewNodeWriteConcatenator() const
    {
        return Map().NewNodeWriteConcatenator();
    }
    virtual bool _ConcatenatedWrite(CNodeWriteConcatenator* pList, bool featureStreaming = true,
                                    GenICam::gcstring_vector* pErrorList = nullptr)
    {
        return Map().ConcatenatedWrite(pList, featureStreaming, pErrorList);
    }
    virtual void _InvalidateNodes() const { Map().InvalidateNodes(); }
    virtual bool _Connect(IPort* pPort, const GenICam::gcstring& PortName) const
    {
        return Map().Connect(pPort, PortName);
    }
    virtual bool _Connect(IPort* pPort) const { return Map().Connect(pPort); }
    virtual bool _Connect(IPortStacked* pPort, const GenICam::gcstring& PortName) const
    {
        return Map().Connect(pPort, PortName);
    }
    virtual bool _Connect(IPortStacked* pPort) const { return Map().Connect(pPort); }
    virtual bool _ParseSwissKnifes(GenICam::gcstring_vector* pErrors = nullptr) const
    {
        return Map().ParseSwissKnifes(pErrors);
    }
    CLock& _GetLock() const { return Map().GetLock(); }
    uint64_t _GetNumNodes() const { return Map().GetNumNodes(); }

    /// See IDeviceInfo.
    virtual GenICam::gcstring _GetModelName() const { return Info().GetModelName(); }
    virtual GenICam::gcstring _GetVendorName() const { return Info().GetVendorName(); }
    virtual GenICam::gcstring _GetToolTip() const { return Info().GetToolTip(); }
    virtual GenICam::gcstring _GetStandardNameSpace() const { return Info().GetStandardNameSpace(); }
    virtual void _GetGenApiVersion(Version_t& Version, uint16_t& Build) const
    {
        Info().GetGenApiVersion(Version, Build);
    }
    virtual void _GetSchemaVersion(Version_t& Version) const { Info().GetSchemaVersion(Version); }
    virtual void _GetDeviceVersion(Version_t& Version) const { Info().GetDeviceVersion(Version); }
    virtual GenICam::gcstring _GetProductGuid() const { return Info().GetProductGuid(); }
    virtual GenICam::gcstring _GetVersionGuid() const { return Info().GetVersionGuid(); }

private:
    static void DestroyMap(INodeMap* pNodeMap)
    {
        if (IDestroy* const pDestroy = CastToIDestroy(pNodeMap))
            pDestroy->Destroy();
    }
    INodeMap& Map() const
    {
        if (_Ptr == nullptr)
            throw ACCESS_EXCEPTION("Feature not present (reference not valid)");
        return *_Ptr;
    }
    IDeviceInfo& Info() const
    {
        IDeviceInfo* const pInfo = dynamic_cast<IDeviceInfo*>(&Map());
        if (pInfo == nullptr)
            throw ACCESS_EXCEPTION("Feature not present (reference not valid)");
        return *pInfo;
    }
    void RequireEmpty() const
    {
        if (_Ptr != nullptr)
            throw RUNTIME_EXCEPTION("Node map already created");
    }
    void Take(INodeMap* pNodeMap)
    {
        if (pNodeMap == _Ptr)
            return;
        _Ptr = nullptr;
        m_map.reset();
        if (pNodeMap == nullptr)
            return;
        m_map.reset(pNodeMap, &CNodeMapRefT::DestroyMap);
        _Ptr = pNodeMap;
        this->_Initialize(pNodeMap);
    }
    void Share(const CNodeMapRefT& other)
    {
        m_map = other.m_map;
        _Ptr = other._Ptr;
        if (_Ptr != nullptr)
            this->_Initialize(_Ptr);
    }

    GenICam::gcstring m_deviceName;
    std::shared_ptr<INodeMap> m_map;
};

/// No references.
class CGeneric_XMLLoaderParams
{
protected:
    virtual void _Initialize(INodeMap*) {}
    virtual ~CGeneric_XMLLoaderParams() {}
};

/// A reference to a node map whose features are found by name.
class CNodeMapRef : public CNodeMapRefT<CGeneric_XMLLoaderParams>
{
public:
    CNodeMapRef(const GenICam::gcstring& DeviceName = "Device")
        : CNodeMapRefT<CGeneric_XMLLoaderParams>(DeviceName)
    {}
    CNodeMapRef(INodeMap* pNodeMap, const GenICam::gcstring& DeviceName = "Device")
        : CNodeMapRefT<CGeneric_XMLLoaderParams>(pNodeMap, DeviceName)
    {}
    using CNodeMapRefT<CGeneric_XMLLoaderParams>::operator=;
};

} // namespace GenApi
