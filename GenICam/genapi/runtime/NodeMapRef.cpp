// SPDX-License-Identifier: Apache-2.0
#include "runtime/FileContent.h"
#include "runtime/ModelCache.h"
#include "runtime/NodeMap.h"

#include <GenApi/NodeMapRef.h>

#include <string>
#include <string_view>
#include <utility>

namespace GenApi
{
namespace
{

using GenICam::gcstring;
using KxGenApi::ContentType;

std::string TextOf(const gcstring& text) { return {text.c_str(), text.size()}; }

template <typename Content>
INodeMap* Load(Content&& content, ContentType type, const gcstring& deviceName)
{
    return new KxGenApi::NodeMap(
        KxGenApi::LoadModel(std::forward<Content>(content), type, CacheUsage_Automatic), deviceName);
}

INodeMap* LoadInjected(std::string content, std::string injected, const gcstring& deviceName)
{
    auto model = std::make_shared<KxGenApi::Model>(
        KxGenApi::ReadDescription(std::move(content), std::move(injected), ContentType::Xml));
    return new KxGenApi::NodeMap(std::move(model), deviceName);
}

} // namespace

INodeMap* CNodeMapLoader::FromFile(const gcstring& FileName, EContentType_t Type, const gcstring& DeviceName)
{
    std::string content = KxGenApi::ReadFile(FileName);
    INodeMap* map = nullptr;
    const ContentType type = Type == ContentType_Xml ? ContentType::Xml : ContentType::ZippedXml;
    KxGenApi::NameSource(FileName, [&] { map = Load(std::move(content), type, DeviceName); });
    return map;
}

INodeMap* CNodeMapLoader::FromFileInject(const gcstring& TargetFileName, const gcstring& InjectFileName,
                                         const gcstring& DeviceName)
{
    std::string target = KxGenApi::ReadFile(TargetFileName);
    std::string injected = KxGenApi::ReadFile(InjectFileName);
    INodeMap* map = nullptr;
    KxGenApi::NameSource(TargetFileName,
                         [&] { map = LoadInjected(std::move(target), std::move(injected), DeviceName); });
    return map;
}

INodeMap* CNodeMapLoader::FromString(const gcstring& XMLData, const gcstring& DeviceName)
{
    if (XMLData.empty())
        throw INVALID_ARGUMENT_EXCEPTION("The description is empty");
    return Load(std::string_view(XMLData.c_str(), XMLData.size()), ContentType::Xml, DeviceName);
}

INodeMap* CNodeMapLoader::FromStringInject(const gcstring& TargetXMLData, const gcstring& InjectXMLData,
                                           const gcstring& DeviceName)
{
    if (TargetXMLData.empty() || InjectXMLData.empty())
        throw INVALID_ARGUMENT_EXCEPTION("The description is empty");
    return LoadInjected(TextOf(TargetXMLData), TextOf(InjectXMLData), DeviceName);
}

INodeMap* CNodeMapLoader::FromZIPData(const void* zipData, size_t zipSize, const gcstring& DeviceName)
{
    if (zipData == nullptr || zipSize == 0)
        throw INVALID_ARGUMENT_EXCEPTION("The zipped description is empty");
    return Load(std::string_view(static_cast<const char*>(zipData), zipSize), ContentType::ZippedXml,
                DeviceName);
}

} // namespace GenApi
