// SPDX-License-Identifier: Apache-2.0
#include "runtime/FileContent.h"
#include "runtime/ModelCache.h"
#include "runtime/NodeMap.h"

#include <Base/GCException.h>
#include <GenApi/NodeMapFactory.h>
#include <GenApi/NodeMapRef.h>

namespace GenApi
{
namespace
{

using KxGenApi::ContentType;

ContentType TypeOf(EContentType_t type)
{
    return type == ContentType_ZippedXml ? ContentType::ZippedXml : ContentType::Xml;
}

std::string_view ViewOf(const GenICam::gcstring& text) { return {text.c_str(), text.size()}; }

} // namespace

struct CNodeMapFactory::State
{
    std::shared_ptr<KxGenApi::Model> model;
    std::string content; // what injection starts from; empty once it has been let go
    ContentType type = ContentType::Xml;
};

CNodeMapFactory::CNodeMapFactory() = default;
CNodeMapFactory::CNodeMapFactory(const CNodeMapFactory&) = default;
CNodeMapFactory& CNodeMapFactory::operator=(const CNodeMapFactory&) = default;
CNodeMapFactory::~CNodeMapFactory() = default;

CNodeMapFactory::CNodeMapFactory(EContentType_t ContentType, const GenICam::gcstring& FileName,
                                 ECacheUsage_t CacheUsage, bool)
    : m_state(std::make_shared<State>())
{
    m_state->content = KxGenApi::ReadFile(FileName);
    m_state->type = TypeOf(ContentType);
    KxGenApi::NameSource(
        FileName, [&] { m_state->model = KxGenApi::LoadModel(m_state->content, m_state->type, CacheUsage); });
}

CNodeMapFactory::CNodeMapFactory(EContentType_t ContentType, const void* pData, size_t DataSize,
                                 ECacheUsage_t CacheUsage, bool)
    : m_state(std::make_shared<State>())
{
    if (pData == nullptr || DataSize == 0)
        throw INVALID_ARGUMENT_EXCEPTION("The description is empty");
    m_state->content.assign(static_cast<const char*>(pData), DataSize);
    m_state->type = TypeOf(ContentType);
    m_state->model = KxGenApi::LoadModel(m_state->content, m_state->type, CacheUsage);
}

bool CNodeMapFactory::IsEmpty() const { return m_state == nullptr; }

void CNodeMapFactory::AddInjectionData(const GenICam::gcstring& XmlText)
{
    if (IsEmpty() || m_state->content.empty())
        throw RUNTIME_EXCEPTION("There is no description text into which nodes can be injected");
    auto injected = std::make_shared<State>(*m_state); // copies of the factory keep what they have
    auto description = KxGenApi::ReadDescription(m_state->content, ViewOf(XmlText), m_state->type);
    injected->content = KxGenApi::WriteXml(*description);
    injected->type = ContentType::Xml;
    injected->model = std::make_shared<KxGenApi::Model>(std::move(description));
    m_state = std::move(injected);
}

INodeMap* CNodeMapFactory::CreateNodeMap(const GenICam::gcstring& DeviceName,
                                         bool ReleaseCameraDescriptionFileData) const
{
    if (IsEmpty())
        throw RUNTIME_EXCEPTION("The factory for '%s' holds no description", DeviceName.c_str());
    if (ReleaseCameraDescriptionFileData)
        std::string().swap(m_state->content);
    return new KxGenApi::NodeMap(m_state->model, DeviceName);
}

CNodeMapFactory CNodeMapFactory::ExtractSubtree(const GenICam::gcstring& SubTreeRootNodeName,
                                                bool ReleaseCameraDescriptionFileData) const
{
    if (IsEmpty())
        throw RUNTIME_EXCEPTION("The factory holds no description to extract '%s' from",
                                SubTreeRootNodeName.c_str());
    const KxGenApi::Description& description = *m_state->model->description;
    const KxGenApi::NodeIndex root = description.FindNode(ViewOf(SubTreeRootNodeName));
    if (root == KxGenApi::kNoNode)
        throw INVALID_ARGUMENT_EXCEPTION("There is no node '%s' to extract", SubTreeRootNodeName.c_str());
    CNodeMapFactory subtree;
    subtree.m_state = std::make_shared<State>();
    subtree.m_state->model = std::make_shared<KxGenApi::Model>(KxGenApi::ExtractSubtree(description, root));
    if (!ReleaseCameraDescriptionFileData)
        subtree.m_state->content = KxGenApi::WriteXml(*subtree.m_state->model->description);
    return subtree;
}

GenICam::gcstring CNodeMapFactory::ToXml() const
{
    if (IsEmpty())
        throw RUNTIME_EXCEPTION("The factory holds no description");
    const std::string xml = KxGenApi::WriteXml(*m_state->model->description);
    return GenICam::gcstring(xml.data(), xml.size());
}

void CNodeMapFactory::ReleaseCameraDescriptionFileData()
{
    if (!IsEmpty())
        std::string().swap(m_state->content);
}

bool CNodeMapFactory::IsCameraDescriptionFileDataReleased() const
{
    return IsEmpty() || m_state->content.empty();
}

void CNodeMapFactory::GetSupportedSchemaVersions(GenICam::gcstring_vector& SchemaVersions)
{
    SchemaVersions.push_back("1.0");
    SchemaVersions.push_back("1.1");
}

void CNodeMapFactory::ClearCache() { KxGenApi::ClearModelCache(); }

} // namespace GenApi
