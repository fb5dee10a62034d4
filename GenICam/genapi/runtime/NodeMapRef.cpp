// SPDX-License-Identifier: Apache-2.0
#include "runtime/FileContent.h"
#include "runtime/ModelCache.h"
#include "runtime/NodeMap.h"

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

INodeMap* CNodeMapLoader::FromFile(const gcstring& FileName, EContentType_t Type, const gcstring& DeviceName)
{
    const std::string content = KxGenApi::ReadFile(FileName);
    INodeMap* map = nullptr;
    const ContentType type = Type == ContentType_Xml ? ContentType::Xml : ContentType::ZippedXml;
    KxGenApi::NameSource(FileName, [&] { map = Load(content, type, DeviceName); });
    return map;
}

INodeMap* CNodeMapLoader::FromFileInject(const gcstring& TargetFileName, const gcstring& InjectFileName,
                                         const gcstring& DeviceName)
{
    const std::string target = KxGenApi::ReadFile(TargetFileName);
    const std::string injected = KxGenApi::ReadFile(InjectFileName);
    INodeMap* map = nullptr;
    KxGenApi::NameSource(TargetFileName, [&] { map = LoadInjected(target, injected, DeviceName); });
    return map;
}

INodeMap* CNodeMapLoader::FromString(const gcstring& XMLData, const gcstring& DeviceName)
{
    if (XMLData.empty())
        throw INVALID_ARGUMENT_EXCEPTION("The description is empty");
    return Load(ViewOf(XMLData), ContentType::Xml, DeviceName);
}

INodeMap* CNodeMapLoader::FromStringInject(const gcstring& TargetXMLData, const gcstring& InjectXMLData,
                                           const gcstring& DeviceName)
{
    if (TargetXMLData.empty() || InjectXMLData.empty())
        throw INVALID_ARGUMENT_EXCEPTION("The description is empty");
    return LoadInjected(ViewOf(TargetXMLData), ViewOf(InjectXMLData), DeviceName);
}

INodeMap* CNodeMapLoader::FromZIPData(const void* zipData, size_t zipSize, const gcstring& DeviceName)
{
    if (zipData == nullptr || zipSize == 0)
        throw INVALID_ARGUMENT_EXCEPTION("The zipped description is empty");
    return Load({static_cast<const char*>(zipData), zipSize}, ContentType::ZippedXml, DeviceName);
}

} // namespace GenApi
