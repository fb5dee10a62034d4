// SPDX-License-Identifier: Apache-2.0
#include "runtime/FileContent.h"
#include "runtime/ModelCache.h"
#include "runtime/NodeMap.h"

#include <GenApi/NodeMapFactory.h>
#include <GenApi/NodeMapRef.h>

namespace GenApi
{
namespace
{

using GenICam::gcstring;
using KxGenApi::ContentType;

std::string_view ViewOf(const gcstring& text) { return {text.c_str(), text.size()}; }

INodeMap* Load(std::string_view content, ContentType type, const gcstring& deviceName)
{
    return new KxGenApi::NodeMap(KxGenApi::LoadModel(content, type, CacheUsage_Automatic), deviceName);
}

INodeMap* LoadInjected(std::string_view content, std::string_view injected, const gcstring& deviceName)
{
    auto model =
        std::make_shared<KxGenApi::Model>(KxGenApi::ReadDescription(content, injected, ContentType::Xml));
    return new KxGenApi::NodeMap(std::move(model), deviceName);
}

} // namespace

CNodeMapRef::CNodeMapRef(const gcstring& DeviceName)
    : m_deviceName(DeviceName)
{}

CNodeMapRef::CNodeMapRef(INodeMap* pNodeMap, const gcstring& DeviceName)
    : m_deviceName(DeviceName)
{
    Take(pNodeMap);
}

CNodeMapRef::~CNodeMapRef() = default;

CNodeMapRef& CNodeMapRef::operator=(INodeMap* pNodeMap)
{
    Take(pNodeMap);
    return *this;
}

INodeMap* CNodeMapRef::_Ptr() const { return m_map.get(); }

void CNodeMapRef::_Attach(INodeMap* pNodeMap, const gcstring& DeviceName)
{
    Take(pNodeMap);
    m_deviceName = DeviceName;
}

void CNodeMapRef::Take(INodeMap* pNodeMap)
{
    if (pNodeMap == m_map.get())
        return;
    m_map.reset(pNodeMap, [](INodeMap* map) {
        if (map != nullptr)
            map->Destroy();
    });
}

void CNodeMapRef::RequireEmpty() const
{
    if (m_map)
        throw RUNTIME_EXCEPTION("Node map already created");
}

INodeMap& CNodeMapRef::Map() const
{
    if (!m_map)
        throw ACCESS_EXCEPTION("Feature not present (reference not valid)");
    return *m_map;
}

IDeviceInfo& CNodeMapRef::Info() const
{
    IDeviceInfo* const info = dynamic_cast<IDeviceInfo*>(&Map());
    if (info == nullptr)
        throw ACCESS_EXCEPTION("Feature not present (reference not valid)");
    return *info;
}

// -------------------------------------------------------------------------------------------------- loading

void CNodeMapRef::_LoadXMLFromFile(const gcstring& FileName)
{
    RequireEmpty();
    const std::string content = KxGenApi::ReadFile(FileName);
    KxGenApi::NameSource(FileName, [&] { Take(Load(content, ContentType::Xml, m_deviceName)); });
}

void CNodeMapRef::_LoadXMLFromZIPFile(const gcstring& ZipFileName)
{
    RequireEmpty();
    const std::string content = KxGenApi::ReadFile(ZipFileName);
    KxGenApi::NameSource(ZipFileName, [&] { Take(Load(content, ContentType::ZippedXml, m_deviceName)); });
}

void CNodeMapRef::_LoadXMLFromString(const gcstring& XMLData)
{
    RequireEmpty();
    if (XMLData.empty())
        throw INVALID_ARGUMENT_EXCEPTION("The description is empty");
    Take(Load(ViewOf(XMLData), ContentType::Xml, m_deviceName));
}

void CNodeMapRef::_LoadXMLFromZIPData(const void* zipData, size_t zipSize)
{
    RequireEmpty();
    if (zipData == nullptr || zipSize == 0)
        throw INVALID_ARGUMENT_EXCEPTION("The zipped description is empty");
    Take(Load({static_cast<const char*>(zipData), zipSize}, ContentType::ZippedXml, m_deviceName));
}

void CNodeMapRef::_LoadXMLFromFileInject(const gcstring& TargetFileName, const gcstring& InjectFileName)
{
    RequireEmpty();
    const std::string target = KxGenApi::ReadFile(TargetFileName);
    const std::string injected = KxGenApi::ReadFile(InjectFileName);
    KxGenApi::NameSource(TargetFileName, [&] { Take(LoadInjected(target, injected, m_deviceName)); });
}

void CNodeMapRef::_LoadXMLFromStringInject(const gcstring& TargetXMLData, const gcstring& InjectXMLData)
{
    RequireEmpty();
    if (TargetXMLData.empty() || InjectXMLData.empty())
        throw INVALID_ARGUMENT_EXCEPTION("The description is empty");
    Take(LoadInjected(ViewOf(TargetXMLData), ViewOf(InjectXMLData), m_deviceName));
}

void CNodeMapRef::_GetSupportedSchemaVersions(GenICam::gcstring_vector& SchemaVersions) const
{
    CNodeMapFactory::GetSupportedSchemaVersions(SchemaVersions);
}

gcstring CNodeMapRef::_GetDeviceName() const { return Map().GetDeviceName(); }

void CNodeMapRef::_Destroy() { m_map.reset(); }

bool CNodeMapRef::_ClearXMLCache()
{
    CNodeMapFactory::ClearCache();
    return true;
}

// ------------------------------------------------------------------------------------------ the map's calls

void CNodeMapRef::_Poll(int64_t ElapsedTime) { Map().Poll(ElapsedTime); }

void CNodeMapRef::_GetNodes(NodeList_t& Nodes) const { Map().GetNodes(Nodes); }

INode* CNodeMapRef::_GetNode(const gcstring& Name) const { return Map().GetNode(Name); }

void CNodeMapRef::_InvalidateNodes() const { Map().InvalidateNodes(); }

bool CNodeMapRef::_Connect(IPort* pPort, const gcstring& PortName) const
{
    return Map().Connect(pPort, PortName);
}

bool CNodeMapRef::_Connect(IPort* pPort) const { return Map().Connect(pPort); }

CLock& CNodeMapRef::_GetLock() const { return Map().GetLock(); }

uint64_t CNodeMapRef::_GetNumNodes() const { return Map().GetNumNodes(); }

bool CNodeMapRef::_ParseSwissKnifes(GenICam::gcstring_vector* pErrors) const
{
    return Map().ParseSwissKnifes(pErrors);
}

CNodeWriteConcatenator* CNodeMapRef::_NewNodeWriteConcatenator() const
{
    return Map().NewNodeWriteConcatenator();
}

bool CNodeMapRef::_ConcatenatedWrite(CNodeWriteConcatenator& List, bool featureStreaming,
                                     GenICam::gcstring_vector* pErrorList)
{
    return Map().ConcatenatedWrite(List, featureStreaming, pErrorList);
}

gcstring CNodeMapRef::_GetModelName() const { return Info().GetModelName(); }

gcstring CNodeMapRef::_GetVendorName() const { return Info().GetVendorName(); }

gcstring CNodeMapRef::_GetToolTip() const { return Info().GetToolTip(); }

gcstring CNodeMapRef::_GetStandardNameSpace() const { return Info().GetStandardNameSpace(); }

void CNodeMapRef::_GetGenApiVersion(Version_t& Version, uint16_t& Build) const
{
    Info().GetGenApiVersion(Version, Build);
}

void CNodeMapRef::_GetSchemaVersion(Version_t& Version) const { Info().GetSchemaVersion(Version); }

void CNodeMapRef::_GetDeviceVersion(Version_t& Version) const { Info().GetDeviceVersion(Version); }

gcstring CNodeMapRef::_GetProductGuid() const { return Info().GetProductGuid(); }

gcstring CNodeMapRef::_GetVersionGuid() const { return Info().GetVersionGuid(); }

} // namespace GenApi
